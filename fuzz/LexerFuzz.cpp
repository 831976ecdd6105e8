// The tokens of any bytes: in order, inside the file, and those of the model, which reads the language a
// second time.

#include "InputDirectory.h"
#include "Laws.h"

#include "ProfileParser/TokenListing.h"
#include "model/ModelLexer.h"

namespace CorvidFuzz {

namespace {

/// Walks over the places of a text.
class Places {
  public:
    explicit Places( std::string_view text ) : text_( text ) {}

    /// Whether a token stands at its place in the text, behind all tokens before it.
    bool isNext( const Corvid::ListedToken& token ) {
        while ( line_ < token.line ) {
            const auto lineEnd = text_.find( '\n', lineStart_ );
            if ( lineEnd == std::string_view::npos )
                return false;
            lineStart_ = lineEnd + 1;
            ++line_;
        }
        const auto column = token.charPositionInLine + ( token.line == 1 ? 1 : 0 );
        const std::size_t start = lineStart_ + static_cast<std::size_t>( column );
        if ( line_ != token.line || column < 0 || start < end_ ||
             text_.substr( std::min( start, text_.size() ), token.text.size() ) != token.text )
            return false;
        end_ = start + token.text.size();
        return true;
    }

  private:
    std::string_view text_;
    std::uint32_t line_ = 1;
    std::size_t lineStart_ = 0;
    std::size_t end_ = 0; ///< of the last token
};

void checkTokens( const std::vector<Model::Token>& expected, const std::string& file, std::string_view text,
                  Corvid::RecognitionError& error ) {
    Places places( text );
    std::size_t count = 0;
    error = Corvid::listTokens( file, [&]( const Corvid::ListedToken& token ) {
        require( count < expected.size(), "the model reads as many tokens", text );
        const Model::Token& other = expected[count++];
        require( token.type == other.type && token.text == other.text && token.line == other.line &&
                     token.charPositionInLine == other.position &&
                     std::string_view( token.name ) == Model::typeName( other.type ),
                 "the model reads the same token", std::string( token.name ) + " " + other.text );
        const bool isAppended = count == expected.size();
        require( isAppended ? token.text == "\n" : places.isNext( token ),
                 "tokens are in order and inside the file", token.text );
    } );
    require( count == expected.size(), "the model reads no more tokens", text );
}

void checkError( const Corvid::RecognitionError& error, const std::optional<Model::LexError>& expected ) {
    require( error.description().empty() != expected.has_value(), "the model finds an error, too",
             error.description() );
    if ( expected )
        require( error.exceptionType() == expected->kind && error.line() == expected->line &&
                     error.charPositionInLine() == expected->position &&
                     error.description() == expected->description &&
                     error.sourceLine() == expected->sourceLine,
                 "the model finds the same error", error.description() );
}

} // namespace

} // namespace CorvidFuzz

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    using namespace CorvidFuzz;
    static InputDirectory directory;
    const std::string_view text = textOf( data, size );
    const Model::Lexed modelled = Model::lex( text );
    Corvid::RecognitionError error;
    checkTokens( modelled.tokens, directory.write( "agent", text ), text, error );
    checkError( error, modelled.firstError );
    return 0;
}
