#pragma once

#include "ProfileStore/RecognitionError.h"

#include <string>
#include <string_view>

namespace CorvidFuzz {

/// What is wrong with an error's description: it is composed of the texts that head the sections of
/// docs/errors.md, quotes the token at its place and names the group that is open.
/// @param groupName the handler's. @param rest of the file, from the error's place on.
/// @param atAppendedPlace whether it may lie at the appended line end or the end of input.
/// @return empty when nothing is
[[nodiscard]] std::string descriptionProblem( const Corvid::RecognitionError& error,
                                              const std::string& groupName, std::string_view rest,
                                              bool atAppendedPlace );

} // namespace CorvidFuzz
