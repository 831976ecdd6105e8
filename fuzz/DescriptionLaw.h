#pragma once

#include "ProfileStore/RecognitionError.h"

#include <string>
#include <string_view>

namespace CorvidFuzz {

/// Whether an error's numbers are those of the line end that is appended to every file, or of the end of
/// input behind it. A place in the file may have the same.
[[nodiscard]] bool mayBeAppended( const Corvid::RecognitionError& error );

/// What is wrong with an error's description: it is composed of the texts that head the sections of
/// docs/errors.md, quotes the token at its place and names the group that is open.
/// @param groupName the handler's. @param rest of the file, from the error's place on; null when only an
/// appended place has its numbers.
/// @return empty when nothing is
[[nodiscard]] std::string descriptionProblem( const Corvid::RecognitionError& error,
                                              const std::string& groupName, std::string_view rest );

} // namespace CorvidFuzz
