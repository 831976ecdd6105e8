#include "model/Exhaustive.h"

#include <sstream>

namespace Model {

namespace {

using Tokens = std::vector<std::string>;

/// One or two texts of each kind of token; N stands for a line's end, B for a backslash and a line's end.
constexpr const char* tokenTexts = "agentName alias and * ) : , condition conditionBlocker $ . :: = 2.5 0x1F "
                                   "hybridMount - include 7 a lowMountPrio "
                                   "mountFilter mountGroup N noDefaultMountGroup == ( % ? rootFlags / \"s\" "
                                   "subAgent Foo { 0x \"open B %slot %none all";

struct Line {
    const char* before; ///< what makes the line valid
    const char* tokens; ///< with a blank between any two
    const char* after;
    bool inIncludeFile = false;
};

constexpr Line lines[] = {
    { "", "agentName : a - 1 - % k - % l $ N", "/a/%k, T, r\n" },
    { "", "N agentName : Foo N", "" },
    { "agentName: A-%slot\n", "mountFilter : f - 1 N name , a - 1 N slot N include , \"x\" \"y\" N",
      "/a, T, r, f-1\n" },
    { "agentName: A-%slot\n", "mountFilter : f N name , Foo - N Foo :: Bar , T , r , f N", "" },
    { "agentName: A-%slot\n", "hybridMount N lowMountPrio N", "/a, T, r\n" },
    { "agentName: A-%slot\n", "subAgent : b - 2 - % slot N", "" },
    { "agentName: A-%slot\n", "alias : % x = % slot , % sysname N", "/%x, T, r\n" },
    { "agentName: A-%slot\n", "rootFlags : rw N", "" },
    { "agentName: A-%slot\n", "/ a - 1 / % slot :: b / ? , :: Kiv :: T , rw N", "" },
    { "agentName: A-%slot\n", "\"/a\" \"b\" , Kiv :: include , r N", "" },
    { "agentName: A-%slot\n", "include : i - 1 . * N", "" },
    { "agentName: A-%slot\n/a, T, r\n", "mountGroup : g - 1 , 5 N / b , T , r N", "/c, T, r\n" },
    { "agentName: A-%slot\n", "mountGroup : all N", "" },
    { "agentName: A-%slot\nmountGroup: g\n", "condition : a - 1 % slot == / a / % slot . count N",
      "/c, T, r\n" },
    { "agentName: A-%slot\nmountGroup: g\n",
      "conditionBlocker : - 1 in len ( / a / b . c ) and % slot != % cellId N", "" },
    { "agentName: A-%slot\nmountGroup: g\ncondition: 1 == /a.b\nmountGroup: g\n",
      "condition : 2.5 < / a . b N", "" },
    { "agentName: A-%slot\nmountGroup: g\n", "/ a , T , r N mountFilter : f N mountGroup : h N",
      "/a, T, r\n" },
    { "N", "/ a / % slot , T , r N b , T , r N", "", true },
    { "", "agentName / a , T , r N", "/b, T, r\n", true },
};

Tokens split( const std::string& text ) {
    std::istringstream words( text );
    Tokens out;
    for ( std::string word; words >> word; )
        out.push_back( word == "N" ? "\n" : word == "B" ? "\\\n" : word );
    return out;
}

Case caseOf( const Line& line, const Tokens& tokens ) {
    std::string text = line.before == std::string( "N" ) ? "\n" : line.before;
    for ( const auto& token : tokens )
        text += token + ' ';
    text += line.after;
    Case out;
    out.agentText = line.inIncludeFile ? "agentName: A-%slot\ninclude: inc\n/z, T, r\n" : text;
    if ( line.inIncludeFile )
        out.otherFiles["inc"] = text;
    return out;
}

void forEveryChange( const Line& line, const std::function<void( const Case& )>& use ) {
    static const Tokens texts = split( tokenTexts );
    const Tokens tokens = split( line.tokens );
    use( caseOf( line, tokens ) );
    for ( std::size_t place = 0; place < tokens.size(); ++place ) {
        const auto at = static_cast<std::ptrdiff_t>( place );
        Tokens shorter = tokens;
        shorter.erase( shorter.begin() + at );
        use( caseOf( line, shorter ) );
        for ( const auto& text : texts ) {
            Tokens changed = tokens;
            changed[place] = text;
            use( caseOf( line, changed ) );
            changed.insert( changed.begin() + at + 1, tokens[place] );
            use( caseOf( line, changed ) );
        }
    }
}

} // namespace

void forEveryChangeOfOneToken( const std::function<void( const Case& )>& use ) {
    for ( const Line& line : lines )
        forEveryChange( line, use );
}

void forEveryByte( const std::function<void( const Case& )>& use ) {
    constexpr const char* before[] = { "",   "x",     "\n", "a\n", "#",  "#a\r", "\\", "\\\n",
                                       "\"", "\"a\n", "!",  "0",   "0x", "1",    "1.", "1.5",
                                       ":",  "=",     "<",  "i",   "in", "an",   "\r", "/" };
    constexpr const char* after[] = { "=b\n\nc", "\n", "x1\"2345678901" };
    for ( int byte = 0; byte < 256; ++byte )
        for ( const std::string start : before )
            for ( const std::string end : after ) {
                Case input;
                input.agentText = start + static_cast<char>( byte ) + end;
                if ( byte % 2 != 0 )
                    input.agentText.insert( 0, "agentName:a\n" );
                input.plainTokens = byte % 4 < 2;
                use( input );
                if ( byte > 0x7F ) // these are all alike
                    break;
            }
}

} // namespace Model
