#pragma once

#include "ProfileParser/ErrorDescription.h"
#include "ProfileParser/MountProfileHdlr.h"
#include "ProfileParser/ParseSession.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "ProfileParser/GeneratedParser.h" // the last one: it defines a macro for every token name

namespace CorvidTest {

/// A real lexer and parser over a text, wired to a handler, with no parse running: for what no file can
/// provoke.
class ParserScene {
  public:
    explicit ParserScene( std::string_view text, ANTLR3_INT32 section = Corvid::topLevel,
                          Corvid::TokenPath tokenPath = Corvid::TokenPath::plain )
        : hdlr_( "dir/Agent", new Corvid::PassiveAgentProfileDir, nullptr, false ),
          session_( hdlr_, "dir/Agent", inputFile( text ), tokenPath ) {
        parser()->section = section;
    }

    [[nodiscard]] Corvid::MountProfileHdlr& hdlr() { return hdlr_; }
    [[nodiscard]] Corvid::ParseSession& session() { return session_; }
    [[nodiscard]] mountProfileParser_Ctx_struct* parser() const { return session_.parser(); }
    [[nodiscard]] pANTLR3_BASE_RECOGNIZER recognizer() const { return parser()->pParser->rec; }
    [[nodiscard]] pANTLR3_TOKEN_STREAM tokens() const { return parser()->pParser->tstream; }
    /// Only with plain tokens.
    [[nodiscard]] pANTLR3_LEXER lexer() const {
        return static_cast<pANTLR3_LEXER>( tokens()->tokenSource->super );
    }

    [[nodiscard]] const Corvid::RecognitionError& error() const { return hdlr_.errorDesc(); }
    [[nodiscard]] std::string description() const { return error().description().str(); }

    /// Raises an exception of a kind at the current token, with no message, and describes it.
    std::string describe( ANTLR3_UINT32 kind, ANTLR3_UINT32 expectedType, ANTLR3_INT32 rule,
                          pANTLR3_UINT8* tokenNames ) {
        recognizer()->exConstruct( recognizer() );
        const pANTLR3_EXCEPTION exception = recognizer()->state->exception;
        exception->type = kind;
        exception->expecting = expectedType;
        exception->message = nullptr;
        Corvid::setParserErrorDesc( parser(), tokenNames, rule );
        return description();
    }
    std::string describe( ANTLR3_UINT32 kind, ANTLR3_UINT32 expectedType = 0, ANTLR3_INT32 rule = 1 ) {
        return describe( kind, expectedType, rule, recognizer()->state->tokenNames );
    }

  private:
    /// With the NUL behind the text that the readers rely on, and nothing more: a sanitizer sees what is read
    /// beyond.
    static Corvid::InputFile inputFile( std::string_view text ) {
        Corvid::InputFile file{ std::make_unique<char[]>( text.size() + 1 ), text.size() };
        std::ranges::copy( text, file.data.get() );
        return file;
    }

    Corvid::MountProfileHdlr hdlr_;
    Corvid::ParseSession session_;
};

} // namespace CorvidTest
