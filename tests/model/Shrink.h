#pragma once

#include "model/Case.h"

#include <functional>

namespace Model {

/// A case as small as can be that still does what `shows` asks for, by leaving out pieces of it.
/// @param input does what `shows` asks for.
[[nodiscard]] Case shrunk( Case input, const std::function<bool( const Case& )>& shows );

} // namespace Model
