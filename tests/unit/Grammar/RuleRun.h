#pragma once

// Runs single rules of the parser. Include it last, as the generated headers.
#include "ProfileParser/ParseSession.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ProfileParser/GeneratedParser.h"

namespace CorvidTest {

using Parser = mountProfileParser_Ctx_struct;

/// What the fields of an error's place and kind were when the first rule reported it.
struct ReportedError {
    std::vector<std::int32_t> rules; ///< that reported, the innermost first
    std::uint32_t kind = 0;          ///< 0: there was no error
    std::string message = {};        ///< of the exception itself
    std::string token = {};          ///< name of the offending token
    std::int32_t section = 0;
};

/// One rule of the parser run over a text, wired as for a parse. The handler has an agent profile "A", the
/// group "all" unless told otherwise, a mount filter, and knows a template key for every identifier in
/// `tokenSamples()`. It is not told which parser runs, so a failed check of the handler would stop the
/// program: texts here have none.
class RuleRun {
  public:
    enum class Group { isOpen, isNotOpen };

    RuleRun( const std::function<void( Parser* )>& rule, std::string_view text, Corvid::TokenPath tokenPath,
             Group group = Group::isOpen );
    RuleRun( const RuleRun& ) = delete;
    RuleRun& operator=( const RuleRun& ) = delete;

    [[nodiscard]] const ReportedError& error() const { return error_; }
    /// "24 21 11" for the rules that reported, the innermost first; "" when none did.
    [[nodiscard]] std::string reports() const;
    /// The text up to the end of the last token that was consumed; "(all)" when that was the appended line
    /// end.
    [[nodiscard]] const std::string& consumed() const { return consumed_; }
    /// Name of the token at which the rule stopped, or "EOF".
    [[nodiscard]] const std::string& next() const { return next_; }
    [[nodiscard]] const Corvid::MountProfileHdlr& hdlr() const { return hdlr_; }
    [[nodiscard]] Corvid::MountProfileHdlr& hdlr() { return hdlr_; }
    [[nodiscard]] Parser* parser() const { return session_.parser(); }

  private:
    static void record( Parser* parser, ANTLR3_INT32 rule );

    static RuleRun* running;
    Corvid::InputFile file_;
    std::string_view text_; ///< where the session reads it
    Corvid::MountProfileHdlr hdlr_;
    Corvid::ParseSession session_;
    ReportedError error_;
    std::string consumed_;
    std::string next_;
};

/// A text for every type of token that the parser ever sees.
struct TokenSample {
    std::uint32_t type;
    const char* text;
};
const std::vector<TokenSample>& tokenSamples();
std::string tokenName( std::uint32_t type );

// The sets of tokens that the language's rules speak of.
bool isKeyword( std::uint32_t type );    ///< that may also serve as a name
bool isIdentifier( std::uint32_t type ); ///< keyword, lower- or upper-case identifier
bool isMountLineStarter( std::uint32_t type );
bool isPathContinuer( std::uint32_t type ); ///< the second token of a mount line
bool isProperty( std::uint32_t type );

} // namespace CorvidTest
