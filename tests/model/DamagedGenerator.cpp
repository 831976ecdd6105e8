#include "model/Generator.h"
#include "model/Mutator.h"

namespace Model {

Case Generator::generateDamagedConstruct() {
    Case out;
    out.plainTokens = random_.chance( 25 );
    slipPercent_ = random_.chance( 80 ) ? 0 : 4;
    out.agentText = title();
    std::string text = construct( out );
    do
        changeTokens( text, random_ );
    while ( random_.chance( 30 ) );
    if ( random_.chance( 50 ) )
        text += mount();
    if ( out.otherFiles.empty() )
        out.agentText += text;
    else
        out.otherFiles.begin()->second = text;
    return out;
}

/// What is to be damaged; the lines that it needs before it, and the include file it goes to, are added to
/// the case.
std::string Generator::construct( Case& out ) {
    switch ( random_.below( 16 ) ) {
    case 0:
        return property();
    case 1:
        return subAgent();
    case 2:
        return alias();
    case 3:
        return rootFlags();
    case 4:
        return mountFilter();
    case 5:
        return include();
    case 6:
        return mount();
    case 7:
        out.agentText += mount();
        return mountFilter();
    case 8:
        return line( { spelled( "mountGroup" ), ":", groupName(), ",", priority() } ) + mount();
    case 9:
        return mountGroup();
    case 10:
    case 11:
        out.agentText += line( { "include", ":", "inc" } );
        out.otherFiles["inc"];
        return mount();
    default:
        out.agentText += line( { "mountGroup", ":", groupName() } );
        return condition();
    }
}

void Generator::lengthen( Case& out ) {
    std::string& text = out.agentText;
    const auto count = 20 + random_.below( random_.chance( 10 ) ? 3000 : 200 );
    switch ( random_.below( 4 ) ) {
    case 0:
        for ( std::size_t index = 0; index < count; ++index )
            text += "/p" + std::to_string( index % 100 ) + ( index % 2 ? "/%sysname" : "-x" ) +
                    ", Kiv::Entity, r\n";
        break;
    case 1:
        for ( std::size_t index = 0; index < count; ++index )
            text += "/a-" + std::to_string( index );
        text += ", T, r\n";
        break;
    case 2:
        text.insert( text.find( '\n' ) + 1, "mountFilter: f" );
        for ( std::size_t index = 0; index < count; ++index )
            text.insert( text.find( "mountFilter: f" ) + 14, " f-1" );
        break;
    default:
        text.insert( random_.below( text.size() + 1 ), count * 20, random_.chance( 50 ) ? 'x' : ' ' );
        break;
    }
    if ( random_.chance( 50 ) )
        text += mountGroup();
}

} // namespace Model
