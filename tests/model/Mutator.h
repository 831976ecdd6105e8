#pragma once

#include "model/Case.h"
#include "model/Random.h"

namespace Model {

/// Damages one of the case's files, by whole tokens or by bytes, a few times.
void mutate( Case& input, Random& random );

/// Leaves a token out, doubles it, or puts another one in its place, before or behind it.
void changeTokens( std::string& text, Random& random );

/// A file of nothing but random tokens, mostly behind a title line.
[[nodiscard]] std::string tokenSoup( Random& random );

} // namespace Model
