#pragma once

#include "model/ModelGrammar.h"
#include "model/ModelTokens.h"

#include <string>
#include <vector>

namespace Model {

class Builder;

/// Why the parser stopped, at which token.
struct Failure {
    std::uint32_t kind = 0;
    Token token;
    Type expected = END;
    std::string message; ///< of a failure that a rule found by itself
};

enum class Section { topLevel, agentTitle, includeFile, mountGroup };

/// Reads one file's tokens, rule by rule, and hands what it reads to the builder. A failed check of the
/// builder does not stop the rule that asked: that rule goes on until its next token has been consumed, the
/// next decision fails or the rule ends.
class Parser {
  public:
    Parser( std::vector<Token> tokens, bool isIncludeFile, Builder& builder );

    /// The whole file. A failure is reported to the builder.
    void parse();
    /// For the builder: a check has failed, at the current token.
    void checkFailed();

  private:
    struct Frame { ///< one running rule, and the place in its caller's production that called it
        Rule rule;
        unsigned occurrence;
    };
    class Running;
    struct Stop { ///< thrown to leave all rules; the innermost one reports
        Rule rule;
    };

    [[nodiscard]] const Token& ahead( std::size_t distance = 1 ) const;
    [[nodiscard]] Type la( std::size_t distance = 1 ) const { return ahead( distance ).type; }
    [[nodiscard]] std::string textSince( std::size_t start ) const;

    std::string match( Type type, unsigned occurrence = 0 );
    void consume();
    void mismatch( Type expected, unsigned occurrence );
    [[nodiscard]] bool seemsMissing( Type expected, unsigned occurrence ) const;
    void raise( Failure failure );
    [[noreturn]] void noViableAlternative( std::size_t distance = 1 );
    [[noreturn]] void earlyExit();
    [[noreturn]] void fail( const char* message );
    void leaveIfFailed();
    [[noreturn]] void leave();
    void lineEnds();
    std::string quotedTexts();

    // Title and statements.
    void profile();
    void agentFile();
    void includeFile();
    void agent();
    std::string agentId();
    [[nodiscard]] bool agentIdGoesOn() const;
    std::vector<std::string> templateKeys();
    std::string templateKey( unsigned occurrence = 0 );
    std::string ident( unsigned occurrence = 0 );
    void keyword();
    void statements();
    bool topLevelStatement();
    [[nodiscard]] bool isKeywordLine();
    [[nodiscard]] bool isMountFilterHeader();
    void property();
    void subAgent();
    void alias();
    void rootFlags();
    void mountLines();
    void include();
    void mountGroup();
    void mountGroupBody();
    std::string joined( Rule rule, unsigned occurrence, bool ( *belongs )( Type ) );

    // Mounts and filters.
    void mountEntry();
    std::string path();
    void pathUnit( unsigned occurrence );
    std::string entityType();
    void typeIdent( unsigned occurrence );
    std::string attrIdent( unsigned occurrence = 0 );
    void mountFilter( unsigned occurrence );
    void mountFilterBody();
    [[nodiscard]] bool isAttrSpec() const;
    void mountFilterAttrSpec();

    // Conditions.
    void entireCondition();
    void conditions();
    std::string condition( unsigned occurrence );
    std::string lvalue();
    void str();
    void number();
    struct RightSide {
        std::string text;
        bool isTemplate;
    };
    RightSide rvalue();
    std::string functionCall();
    std::string pathAttribute( unsigned occurrence );
    std::string condPath( unsigned occurrence );

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    bool isIncludeFile_;
    Builder& builder_;
    Section section_ = Section::topLevel;
    std::vector<Frame> frames_;
    bool failed_ = false;
    Failure failure_;
};

class Parser::Running {
  public:
    Running( Parser& parser, Rule rule, unsigned occurrence = 0 ) : parser_( parser ) {
        parser_.frames_.push_back( { rule, occurrence } );
    }
    Running( const Running& ) = delete;
    Running& operator=( const Running& ) = delete;
    ~Running() { parser_.frames_.pop_back(); }

  private:
    Parser& parser_;
};

} // namespace Model
