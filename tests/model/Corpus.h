#pragma once

#include "model/Case.h"

#include <filesystem>

namespace Model {

/// The folders of all conformance cases, in order.
[[nodiscard]] std::vector<std::filesystem::path> corpusFolders();

/// A conformance case with its files, arguments and environment.
/// @throws std::runtime_error for an argument that is not known here.
[[nodiscard]] Case corpusCase( const std::filesystem::path& folder );

} // namespace Model
