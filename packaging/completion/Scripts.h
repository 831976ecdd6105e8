#pragma once

#include "packaging/completion/CommandTable.h"

#include <string>

namespace Corvid::Completion {

/// The completion scripts of mountprofile, whole, for the shells of Debian's stable release. That for bash
/// needs the functions of bash-completion.
[[nodiscard]] std::string bashScript( const CommandTable& table );
[[nodiscard]] std::string zshScript( const CommandTable& table );
[[nodiscard]] std::string fishScript( const CommandTable& table );

/// A text in single quotes, as these shells read it.
/// @param quote how a single quote is written inside of them.
[[nodiscard]] std::string quoted( const std::string& text, const std::string& quote = "'\\''" );
/// Words with a separator between them.
[[nodiscard]] std::string joined( const std::vector<std::string>& words, const std::string& separator = " " );

} // namespace Corvid::Completion
