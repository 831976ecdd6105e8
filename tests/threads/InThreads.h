#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace CorvidTest {

/// Runs the same in several threads, which begin together, and waits for them.
void inThreads( std::size_t count, const std::function<void( std::size_t number )>& work );

/// One of many agent files, which differ: of five in a row, one has an error that a rule finds, and another
/// one that the lexer does. They include `*.inc`.
[[nodiscard]] std::string agentText( std::size_t number );

} // namespace CorvidTest
