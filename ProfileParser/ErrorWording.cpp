#include "ProfileParser/ErrorWording.h"

#include <algorithm>
#include <array>

namespace Corvid::ErrorWording {

namespace {

constexpr std::array<KindMessage, 3> kindMessageTable{ {
    { mismatchedToken, " Expected ", " Unexpected characters..." },
    { unwantedToken, " Extraneous input - expected ", " Extraneous input..." },
    { missingToken, " Missing ", " Missing characters..." },
} };

constexpr std::string_view expectingEndOfLine = "Expecting end of line.";

constexpr std::array<RuleHint, 26> ruleHintTable{ {
    { 0, noViableAlternative, "Include file should contain only mounts." },
    { 2, earlyExit, "Expecting minimum one mount entry." },
    { 3, earlyExit, "Expecting end of agent title line." },
    { 4, noViableAlternative, "Unsupported agent id. Allowed character set: [a-z,A-Z,0-9,-,_]" },
    { 5, earlyExit, "Expecting minimum one template key." },
    { 7, noViableAlternative,
      "Expecting identifier. It can be upper or lower alphanumeric like [ xyz, Xyz, x0, x_y]" },
    { 9, noViableAlternative, "Invalid attribute name" },
    { 10, noViableAlternative, "Invalid kiv type." },
    { 12, earlyExit, expectingEndOfLine },
    { 13, earlyExit, "Invalid mount filter id. Expecting combination of: [number, identifier, '-'] " },
    { 15, noViableAlternative,
      "Expecting mount filter key. It can be a combination of: [number, identifier, '-'] "
      "or it can be string literal like \"key1\"" },
    { 15, earlyExit, expectingEndOfLine },
    { 17, earlyExit, expectingEndOfLine },
    { 18, earlyExit, expectingEndOfLine },
    { 19, earlyExit, expectingEndOfLine },
    { 20, earlyExit, expectingEndOfLine },
    { 21, earlyExit, expectingEndOfLine },
    { 22, earlyExit,
      // sic
      "Expecting end of include here.Failed to associate subsequent characters with include pattern." },
    { 23, earlyExit, "Expecting combination of: [number, identifier, '-', '.', '*'] " },
    { 25, earlyExit, "Expecting combination of: [number, identifier, '-', template key, '::'] " },
    { 27, earlyExit, "Expecting end of line" }, // sic: the others end in a full stop
    { 28, earlyExit, "Invalid mount group id. Expecting combination of: [number, identifier, '-'] " },
    { 30, earlyExit, expectingEndOfLine },
    { 33, noViableAlternative, "Invalid lvalue of a condition." },
    { 35, mismatchedSet, "Expecting a number. It can be integer, float or hex" },
    { 37, noViableAlternative,
      "Condition path should start with one of these:['/', 'len', template key (%xx)]" },
} };

} // namespace

std::span<const KindMessage> kindMessages() {
    return kindMessageTable;
}

std::span<const RuleHint> ruleHints() {
    return ruleHintTable;
}

std::string_view ruleHint( std::int32_t rule, std::uint32_t kind ) {
    const auto* found = std::ranges::find_if(
        ruleHintTable, [=]( const RuleHint& hint ) { return hint.rule == rule && hint.kind == kind; } );
    return found == ruleHintTable.end() ? std::string_view() : found->text;
}

} // namespace Corvid::ErrorWording
