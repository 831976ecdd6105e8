#include "ProfileParser/ErrorDetails.h"

#include <algorithm>
#include <array>

namespace Corvid {

namespace {

// Numbers are never used again. Between the groups, which are those of docs/errors.md, there is room.
constexpr std::array<ErrorCode, 46> codeTable{ {
    { "MP001", "Unrecongnized character" }, // sic
    { "MP003", "Incorrect number" },
    { "MP004", "EOL or EOF while scanning string literal" },
    { "MP005", "unexpected character after line continuation character" },
    { "MP010", "Expected " },
    { "MP010", "Unexpected characters..." },
    { "MP002", "Unexpected character" },
    { "MP011", "Extraneous input" },
    { "MP012", "Missing " },
    { "MP013", "Syntax error." },
    { "MP020", "Unsupported agent id." },
    { "MP021", "Expecting end of agent title line." },
    { "MP022", "$ allowed with only last template key" },
    { "MP023", "Expecting identifier." },
    { "MP024", "Reference to undeclared template key " },
    { "MP025", "Expecting minimum one template key." },
    { "MP030", "Failed to associate this line to mount filter or mount group." },
    { "MP031", "Invalid keyword before ':'" },
    { "MP032", "Expecting end of line." },
    { "MP040", "Expecting combination of: [number, identifier, '-', template key" },
    { "MP041", "Invalid kiv type." },
    { "MP042", "illegal flag " },
    { "MP043", "Path " },
    { "MP044", "No mount filter with name " },
    { "MP050", "Mount filter " },
    { "MP051", "Invalid mount filter id." },
    { "MP052", "Expecting mount filter key." },
    { "MP060", "Invalid mount group id." },
    { "MP061", "Expecting end of line" },
    { "MP062", "Cannot use reserved mount group name" },
    { "MP063", "mount group priority should be in the range" },
    { "MP070", "Invalid lvalue of a condition." },
    { "MP071", "Expecting a number." },
    { "MP072", "Condition path should start with one of these" },
    { "MP073", "condition path should be full path from root" },
    { "MP074", "Invalid attribute name" },
    { "MP075", "Only supported function is " },
    { "MP076", "Condition for this mount group is already set" },
    { "MP080", "No include file found matching " },
    { "MP081", "Expecting combination of: [number, identifier, '-', '.', '*']" },
    { "MP082", "Expecting end of include here." },
    { "MP083", "Include file should contain only mounts." },
    { "MP084", "Found ':', include file should only contain mounts" },
    { "MP085", "Expecting minimum one mount entry." },
    { "MP086", "Mount profile is invalid due to error in include file" },
    { "MP087", "While adding default profiles, " },
} };

} // namespace

std::span<const ErrorCode> errorCodes() {
    return codeTable;
}

std::string_view errorCodeOf( std::string_view message ) {
    message.remove_prefix( std::min( message.find_first_not_of( ' ' ), message.size() ) );
    const auto* found = std::ranges::find_if(
        codeTable, [message]( const ErrorCode& row ) { return message.starts_with( row.beginning ); } );
    return found == codeTable.end() ? unknownErrorCode : found->code;
}

} // namespace Corvid
