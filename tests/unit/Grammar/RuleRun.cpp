#include "RuleRun.h"

#include "ProfileParser/ErrorDescription.h"

#include <algorithm>
#include <functional>
#include <set>

namespace CorvidTest {

namespace {

Corvid::InputFile fileOf( std::string_view text ) {
    Corvid::InputFile file{ std::make_unique<char[]>( text.size() + 1 ), text.size() };
    std::ranges::copy( text, file.data.get() );
    return file;
}

} // namespace

RuleRun* RuleRun::running = nullptr;

void RuleRun::record( Parser* parser, ANTLR3_INT32 rule ) {
    const ANTLR3_EXCEPTION& exception = *parser->pParser->rec->state->exception;
    ReportedError& error = running->error_;
    if ( error.rules.empty() ) {
        error.kind = exception.type;
        error.message = exception.message ? static_cast<const char*>( exception.message ) : "";
        error.token = tokenName( static_cast<pANTLR3_COMMON_TOKEN>( exception.token )->type );
        error.section = parser->section;
    }
    error.rules.push_back( rule );
    Corvid::reportParserError( parser, rule );
}

RuleRun::RuleRun( const std::function<void( Parser* )>& rule, std::string_view text,
                  Corvid::TokenPath tokenPath, Group group )
    : file_( fileOf( text ) ), text_( file_.data.get(), text.size() ),
      hdlr_( "Agent", new Corvid::PassiveAgentProfileDir, nullptr, false ),
      session_( hdlr_, "Agent", std::move( file_ ), tokenPath ) {
    hdlr_.agentProfileIs( "A" );
    if ( group == Group::isOpen )
        hdlr_.addMountGroup();
    hdlr_.registerMountFilterDecl( "declared" );
    for ( const TokenSample& sample : tokenSamples() )
        hdlr_.registerTemplateKeyDecl( std::string( "%" ) + sample.text );
    running = this;
    parser()->reportError = record;
    session_.begin();
    rule( parser() );
    running = nullptr;

    const pANTLR3_TOKEN_STREAM tokens = parser()->pParser->tstream;
    next_ = tokenName( tokens->_LT( tokens, 1 )->type );
    if ( const pANTLR3_COMMON_TOKEN last = tokens->_LT( tokens, -1 ) ) {
        const char* end = Corvid::tokenText( last ).data() + Corvid::tokenText( last ).size();
        const bool isInFile =
            !std::less<>()( end, text_.data() ) && !std::less<>()( text_.data() + text_.size(), end );
        consumed_ = isInFile ? std::string( text_.data(), end ) : "(all)";
    }
}

std::string RuleRun::reports() const {
    std::string list;
    for ( const std::int32_t rule : error_.rules )
        list.append( list.empty() ? "" : " " ).append( std::to_string( rule ) );
    return list;
}

const std::vector<TokenSample>& tokenSamples() {
    static const std::vector<TokenSample> samples{
        { AGENTNAME, "agentname" },
        { ALIAS, "alias" },
        { AND, "and" },
        { ASTERISK, "*" },
        { CLOSEPAREN, ")" },
        { COLON, ":" },
        { COMMA, "," },
        { CONDITION, "condition" },
        { CONDITIONBLOCKER, "conditionblocker" },
        { DOLLAR, "$" },
        { DOT, "." },
        { DOUBLECOLON, "::" },
        { EQUAL, "=" },
        { FLOAT, "1.5" },
        { HEX, "0x1" },
        { HYBRIDMOUNT, "hybridmount" },
        { HYPHEN, "-" },
        { INCLUDE, "include" },
        { INT, "7" },
        { LIDENT, "abc" },
        { LOWMOUNTPRIO, "lowmountprio" },
        { MOUNTFILTER, "mountfilter" },
        { MOUNTGROUP, "mountgroup" },
        { NEWLN, "\n" },
        { NODEFAULTMOUNTGROUP, "nodefaultmountgroup" },
        { OP, "==" },
        { OPENPAREN, "(" },
        { PERCENTAGE, "%" },
        { QSNMARK, "?" },
        { ROOTFLAGS, "rootflags" },
        { SLASH, "/" },
        { STRING, "\"s\"" },
        { SUBAGENT, "subagent" },
        { UIDENT, "Abc" },
    };
    return samples;
}

std::string tokenName( std::uint32_t type ) {
    return type == ANTLR3_TOKEN_EOF ? "EOF"
                                    : reinterpret_cast<const char*>( mountProfileParserTokenNames[type] );
}

bool isKeyword( std::uint32_t type ) {
    static const std::set<std::uint32_t> keywords{ AGENTNAME,        ALIAS,     CONDITION,
                                                   CONDITIONBLOCKER, INCLUDE,   MOUNTFILTER,
                                                   MOUNTGROUP,       ROOTFLAGS, SUBAGENT };
    return keywords.contains( type );
}

bool isIdentifier( std::uint32_t type ) {
    return isKeyword( type ) || type == LIDENT || type == UIDENT;
}

bool isMountLineStarter( std::uint32_t type ) {
    static const std::set<std::uint32_t> others{ DOUBLECOLON, HYPHEN, INT, PERCENTAGE, SLASH, STRING };
    return isIdentifier( type ) || others.contains( type );
}

bool isPathContinuer( std::uint32_t type ) {
    static const std::set<std::uint32_t> others{ COMMA,      DOUBLECOLON, HYPHEN, INT,
                                                 PERCENTAGE, QSNMARK,     SLASH };
    return isIdentifier( type ) || others.contains( type );
}

bool isProperty( std::uint32_t type ) {
    return type == HYBRIDMOUNT || type == LOWMOUNTPRIO || type == NODEFAULTMOUNTGROUP;
}

} // namespace CorvidTest
