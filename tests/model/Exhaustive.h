#pragma once

#include "model/Case.h"

#include <functional>

namespace Model {

/// A line of every construct, in a file where it belongs, with one token left out, doubled, exchanged for
/// every other kind of token, or with every kind of token put before it.
void forEveryChangeOfOneToken( const std::function<void( const Case& )>& use );

/// Every byte in each place where the lexer treats bytes in a way of its own.
void forEveryByte( const std::function<void( const Case& )>& use );

} // namespace Model
