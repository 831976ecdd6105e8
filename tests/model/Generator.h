#pragma once

#include "model/Case.h"
#include "model/Random.h"

#include <string>
#include <vector>

namespace Model {

/// Writes files of the language: every construct, in lines that mostly hang together. How many slips it makes
/// (names that are not declared, flags that do not exist, statements in the wrong place) differs from case to
/// case.
class Generator {
  public:
    explicit Generator( Random& random ) : random_( random ) {}

    /// Whole files, with what they include.
    [[nodiscard]] Case generate();
    /// A file with little more than one construct, which is damaged by a token or two.
    [[nodiscard]] Case generateDamagedConstruct();
    /// Makes the agent file of a case long: many lines, or a line of many tokens.
    void lengthen( Case& out );

  private:
    using Tokens = std::vector<std::string>;

    // Files.
    void agentFile( Case& out );
    void includeFiles( Case& out );
    [[nodiscard]] std::string includeFileText();
    [[nodiscard]] std::string includeFileSlip();
    void stage( Case& out );
    void system( Case& out );

    [[nodiscard]] std::string construct( Case& out );

    // Lines.
    [[nodiscard]] std::string title();
    [[nodiscard]] std::string statement();
    [[nodiscard]] std::string mountFilter();
    [[nodiscard]] std::string attrSpec();
    [[nodiscard]] std::string alias();
    [[nodiscard]] std::string subAgent();
    [[nodiscard]] std::string rootFlags();
    [[nodiscard]] std::string property();
    [[nodiscard]] std::string include();
    [[nodiscard]] std::string mount();
    [[nodiscard]] std::string mountLines();
    [[nodiscard]] std::string mountGroup();
    [[nodiscard]] std::string condition();
    [[nodiscard]] std::string priority();

    // Parts of lines.
    void comparison( Tokens& out );
    void agentId( Tokens& out );
    void path( Tokens& out );
    void pathUnit( Tokens& out );
    void name( Tokens& out );
    void type( Tokens& out );
    void strings( Tokens& out );
    void templateKey( Tokens& out, bool declares = false );
    [[nodiscard]] std::string ident();
    [[nodiscard]] std::string number();
    [[nodiscard]] std::string flags();
    [[nodiscard]] std::string groupName();
    [[nodiscard]] std::string filterName( bool declares );
    [[nodiscard]] std::string spelled( std::string keyword );
    [[nodiscard]] std::string line( const Tokens& tokens );
    [[nodiscard]] std::string gap( bool needed );
    [[nodiscard]] std::string lineEnd();
    [[nodiscard]] bool slips() { return random_.chance( slipPercent_ ); }

    Random& random_;
    unsigned slipPercent_ = 0;
    unsigned oddityPercent_ = 0; ///< how often blanks and line ends are unusual ones
    std::vector<std::string> templateKeys_;
    std::vector<std::string> filters_;
};

} // namespace Model
