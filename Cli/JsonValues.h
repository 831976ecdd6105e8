#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace Corvid::Cli {

/// Keeps the order in which keys are given.
using Json = nlohmann::ordered_json;

/// A text for a document: bytes that are not well-formed UTF-8 become `\xNN`, as people are shown them.
[[nodiscard]] std::string jsonText( std::string_view bytes );

/// A value on one line, in ASCII: nothing in it can control a terminal.
[[nodiscard]] std::string asciiText( const Json& value );

/// The program and its version.
[[nodiscard]] Json toolValue();

} // namespace Corvid::Cli
