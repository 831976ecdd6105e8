#pragma once

#include "Kiv/String8.h"
#include "ProfileStore/Export.h"

#include <cstdint>
#include <utility>

namespace Corvid {

/// The error that made a mount profile invalid. A value; all fields are empty or 0 when constructed.
class CORVID_API RecognitionError {
  public:
    /// `line` of an error that has no place in a file.
    static constexpr std::uint32_t noLine = 0xFFFFFFFF;

    /// Path of the agent file being processed.
    [[nodiscard]] const Kiv::String8& fileName() const noexcept { return fileName_; }
    void fileNameIs( Kiv::String8 fileName ) noexcept { fileName_ = std::move( fileName ); }
    /// Path of the include file when the error lies in one, else empty.
    [[nodiscard]] const Kiv::String8& includeFileName() const noexcept { return includeFileName_; }
    void includeFileNameIs( Kiv::String8 fileName ) noexcept { includeFileName_ = std::move( fileName ); }
    /// Line of the error, the first is 1; `noLine` when not applicable.
    [[nodiscard]] std::uint32_t line() const noexcept { return line_; }
    void lineIs( std::uint32_t line ) noexcept { line_ = line; }
    /// Position within the line as the parser library counts it: from 0, but from −1 on the first line of a
    /// file, because its input streams start there. −1 with `noLine` when not applicable.
    [[nodiscard]] std::int32_t charPositionInLine() const noexcept { return charPositionInLine_; }
    void charPositionInLineIs( std::int32_t position ) noexcept { charPositionInLine_ = position; }
    /// The parser library's number for the kind of error.
    [[nodiscard]] std::uint32_t exceptionType() const noexcept { return exceptionType_; }
    void exceptionTypeIs( std::uint32_t type ) noexcept { exceptionType_ = type; }
    /// Who found it: "lexer", "parser" or "post-parsing".
    [[nodiscard]] const Kiv::String8& recognizer() const noexcept { return recognizer_; }
    void recognizerIs( Kiv::String8 recognizer ) noexcept { recognizer_ = std::move( recognizer ); }
    /// What is wrong, for people.
    [[nodiscard]] const Kiv::String8& description() const noexcept { return description_; }
    void descriptionIs( Kiv::String8 description ) noexcept { description_ = std::move( description ); }
    /// For errors of the lexer: a tab and the source text around the error; else empty.
    [[nodiscard]] const Kiv::String8& sourceLine() const noexcept { return sourceLine_; }
    void sourceLineIs( Kiv::String8 sourceLine ) noexcept { sourceLine_ = std::move( sourceLine ); }

    /// Whether the error has a line and a position.
    [[nodiscard]] bool hasPlace() const noexcept { return line_ != noLine; }
    /// The file that the error lies in: the include file if there is one.
    [[nodiscard]] const Kiv::String8& placeFileName() const noexcept {
        return includeFileName_.empty() ? fileName_ : includeFileName_;
    }
    /// The column for people: from 1 on every line, the first one included.
    [[nodiscard]] std::uint32_t column() const noexcept {
        return static_cast<std::uint32_t>( charPositionInLine_ ) + ( line_ == 1 ? 2 : 1 );
    }

    /// The error as one line without a newline: `FILE:LINE:COLUMN: error: TEXT`, with ` (included from
    /// AGENTFILE)` behind it for an error in an include file and without `:LINE:COLUMN` when not applicable.
    /// TEXT is the description without blanks at its ends; a newline is written as `\n` and every other byte
    /// that is not printable ASCII as `\xNN`, in file names too: nothing in it can control a terminal.
    [[nodiscard]] Kiv::String8 composeErrorDescMessage() const;

    friend bool operator==( const RecognitionError&, const RecognitionError& ) noexcept = default;

  private:
    Kiv::String8 fileName_;
    Kiv::String8 includeFileName_;
    std::uint32_t line_ = 0;
    std::int32_t charPositionInLine_ = 0;
    std::uint32_t exceptionType_ = 0;
    Kiv::String8 recognizer_;
    Kiv::String8 description_;
    Kiv::String8 sourceLine_;
};

} // namespace Corvid
