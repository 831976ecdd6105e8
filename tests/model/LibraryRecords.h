#pragma once

#include "ProfileStore/PassiveAgentProfileDir.h"
#include "model/Outcome.h"

namespace Model {

/// The library's records as plain ones.
[[nodiscard]] ErrorRecord plain( const Corvid::RecognitionError& error );
[[nodiscard]] std::map<std::string, ProfileRecord> plain( const Corvid::PassiveAgentProfileDir& root );

} // namespace Model
