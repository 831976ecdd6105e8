#pragma once

#include "model/ModelParser.h"
#include "model/Outcome.h"

#include <optional>
#include <string>

namespace Model {

/// What a parser error is described with.
struct ErrorContext {
    Section section;
    std::string groupName;
    std::optional<std::string> failedCheck; ///< message of a failed check of the builder
};
[[nodiscard]] std::string parserErrorText( const Failure& failure, Rule rule, const ErrorContext& context );

/// The line that an error is printed as, with its newline.
[[nodiscard]] std::string errorLine( const ErrorRecord& error );

} // namespace Model
