#include "Cli/JsonValues.h"

#include "Cli/PrintableText.h"

namespace Corvid::Cli {

std::string jsonText( std::string_view bytes ) {
    return wellFormed( bytes );
}

std::string asciiText( const Json& value ) {
    constexpr int onOneLine = -1;
    constexpr char noIndent = ' ';
    constexpr bool asciiOnly = true;
    return value.dump( onOneLine, noIndent, asciiOnly );
}

Json toolValue() {
    return { { "name", "mountprofile" }, { "version", MOUNTPROFILE_VERSION } };
}

} // namespace Corvid::Cli
