#pragma once

#include "model/ModelTokens.h"

#include <bitset>
#include <cstdint>

namespace Model {

/// The rules by their numbers.
enum class Rule : std::int32_t {
    profile,
    agentFile,
    includeFile,
    agent,
    agentId,
    templateKeys,
    templateKey,
    ident,
    keyword,
    attrIdent,
    typeIdent,
    statements,
    mountFilter,
    mountFilterId,
    mountFilterBody,
    mountFilterAttrSpec,
    mountFilterKey,
    property,
    subAgent,
    alias,
    rootFlags,
    mountEntry,
    include,
    includeFilePattern,
    path,
    pathUnit,
    entityType,
    mountGroup,
    mountGroupId,
    mountGroupBody,
    entireCondition,
    conditions,
    condition,
    lvalue,
    str,
    number,
    condPath,
    rvalue
};

/// A set of token types. The end of input is never in one: the parser library's sets cannot hold it.
using TypeSet = std::bitset<typeCount>;
/// Stands in a set for "the rule may end here".
inline constexpr std::size_t endOfRule = 1;

/// What can follow, within the production of a rule, the n-th place (from 0) at which it names a token or a
/// rule.
[[nodiscard]] const TypeSet& follow( Rule rule, Type token, unsigned occurrence );
[[nodiscard]] const TypeSet& follow( Rule rule, Rule called, unsigned occurrence );

} // namespace Model
