#pragma once

#include "Cli/SourceText.h"
#include "ProfileParser/MountProfileHdlr.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace Corvid::Cli {

/// What a line of a file is meant to be, to go by its first word.
enum class Statement {
    title,
    subAgent,
    alias,
    rootFlags,
    toggle, ///< one of the three words that stand alone
    mountFilter,
    filterAttribute,
    include,
    mountGroup,
    condition,
    mountLine
};

/// Whether below such a line a filter may go on.
[[nodiscard]] bool belongsToFilter( Statement statement );

[[nodiscard]] const std::vector<std::string>& keywords();
/// The keyword as it is usually spelled; empty for other words.
[[nodiscard]] std::string keyword( std::string_view word );

[[nodiscard]] bool isOneOf( std::string_view text, std::initializer_list<std::string_view> texts );
[[nodiscard]] std::string quoted( std::string_view text ); ///< printable
[[nodiscard]] std::string_view withoutBlanks( std::string_view text );
[[nodiscard]] std::string_view wordAt( std::string_view text );      ///< letters, digits, underscores
[[nodiscard]] std::string_view wordAtEndOf( std::string_view text ); ///< the same
/// Whether nothing but blanks stands up to the line's end.
[[nodiscard]] bool isAtLineEnd( std::string_view text );
/// Those outside of quoted texts.
[[nodiscard]] std::size_t commasIn( std::string_view text );

/// An error, and what the source looks like around it.
struct ErrorScene {
    /// @param text of the file that the error is in; outlives the scene.
    ErrorScene( const MountProfileHdlr& hdlr, std::string_view text );
    ErrorScene( const ErrorScene& ) = delete;
    ErrorScene& operator=( const ErrorScene& ) = delete;

    std::string_view code;
    std::string_view content;
    std::string_view rest;  ///< of the content, from the place on
    std::string_view wrong; ///< what is wrong
    SourcePlace place;
    const MountProfileHdlr& handler;
    bool isInIncludeFile;

    // The statement that what is wrong belongs to, however many lines it spans, without comments.
    Statement statement = Statement::mountLine;
    std::string text;
    std::size_t wrongAt = 0;       ///< where that begins in the text which is wrong
    std::size_t commas = 0;        ///< in the text, outside of quoted texts
    std::size_t commasBefore = 0;  ///< those in front of what is wrong
    std::string_view word;         ///< that the text begins with; may be empty
    std::string_view afterWord;    ///< the rest of the text, without blanks around
    std::size_t lineOfComment = 0; ///< the last line before the place whose end a comment takes; or 0
    Statement previous = Statement::toggle; ///< the statement above; a toggle when there is none

    [[nodiscard]] std::string_view before() const { return std::string_view( text ).substr( 0, wrongAt ); }
    /// Whether the error's text ends in the name of that sign.
    [[nodiscard]] bool isExpected( std::string_view sign ) const;
    /// In a path that would do in double quotes.
    [[nodiscard]] bool isInMountPath() const;
    [[nodiscard]] bool isInFilterKey() const;

  private:
    void readStatement( std::size_t begin );
    void recogniseStatement();
};

} // namespace Corvid::Cli
