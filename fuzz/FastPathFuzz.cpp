// The same tokens, result documents and error descriptions from both sources of tokens. Of an input in three
// parts the second one is repeated, until its line is longer than the window of tokens is.

#include "InputDirectory.h"
#include "Laws.h"

#include "ProfileParser/GeneratedLexer.h"
#include "ProfileParser/TokenWindow.h"

#include "ProfileParser/GeneratedParser.h"

namespace CorvidFuzz {

namespace {

/// The handler takes the lexer's errors; the text is followed by a NUL, as the reader of files leaves it.
struct BothLexers {
    explicit BothLexers( const std::string& text )
        : lexer( hdlrOfLexer, "agent", text ), window( hdlrOfWindow, "agent", text ) {}

    Corvid::MountProfileHdlr hdlrOfLexer{ "agent", nullptr, nullptr, false };
    Corvid::MountProfileHdlr hdlrOfWindow{ "agent", nullptr, nullptr, false };
    Corvid::GeneratedLexer lexer;
    Corvid::TokenWindow window;
};

/// Bytes of more tokens than the window keeps of a line, when a token has three.
constexpr std::size_t longLine = std::size_t{ 3 } * 8500;

std::string textOfInput( const std::uint8_t* data, std::size_t size ) {
    const auto parts = partsOf( data, size );
    if ( parts.size() != 3 || parts[1].empty() || !isOneOf( 8, textOf( data, size ) ) )
        return std::string( textOf( data, size ) );
    std::string text( parts[0] );
    while ( text.size() < longLine )
        text += parts[1];
    return text.append( parts[2] );
}

bool areSame( const ANTLR3_COMMON_TOKEN& first, const ANTLR3_COMMON_TOKEN& second ) {
    return first.type == second.type && first.line == second.line &&
           first.charPosition == second.charPosition;
}

/// @param forgetting whether lines are forgotten as the parser does.
void checkTokens( const std::string& text, bool forgetting ) {
    BothLexers both( text );
    both.window.begin();
    for ( ;; ) {
        const pANTLR3_COMMON_TOKEN expected = both.lexer.nextToken();
        const pANTLR3_COMMON_TOKEN token = both.window.current();
        require( areSame( *expected, *token ), "both lexers read the same tokens", text );
        if ( token->type == ANTLR3_TOKEN_EOF )
            break;
        require( Corvid::tokenText( expected ) == Corvid::tokenText( token ),
                 "both lexers read the same texts", text );
        both.window.step( forgetting && token->type == NEWLN );
        both.lexer.forgetTokens();
    }
    require( both.hdlrOfLexer.errorDesc() == both.hdlrOfWindow.errorDesc(),
             "both lexers find the same first error", both.hdlrOfLexer.errorDesc().description().str() );
}

} // namespace

} // namespace CorvidFuzz

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    using namespace CorvidFuzz;
    static InputDirectory directory;
    const std::string text = textOfInput( data, size );
    if ( isOneOf( 4, text ) )
        checkTokens( text, size % 2 == 0 );
    const std::string agentFile = directory.write( "agent", text );
    RunOptions options;
    options.addDefaults = false; // no tokens lead to them
    const auto fast = checkedRun( agentFile, { { agentFile, text } }, options );
    options.plainTokens = true;
    const auto slow = run( agentFile, options );
    require( fast.outcome == slow.outcome && fast.printed == slow.printed,
             "both sources of tokens have the same outcome", slow.printed );
    require( fast.handler->errorDesc() == slow.handler->errorDesc(),
             "both sources of tokens describe the same error", slow.printed );
    if ( !isOneOf( 16, text ) )
        return 0;
    const std::string document = documentOf( slow );
    require( documentOf( fast ) == document, "both sources of tokens give the same document", document );
    return 0;
}
