#include "model/ModelWording.h"
#include "model/Bytes.h"

namespace Model {

namespace {

struct Hint {
    Rule rule;
    std::uint32_t kind;
    const char* text;
};

constexpr Hint hints[] = {
    { Rule::profile, 3, "Include file should contain only mounts." },
    { Rule::includeFile, 5, "Expecting minimum one mount entry." },
    { Rule::agent, 5, "Expecting end of agent title line." },
    { Rule::agentId, 3, "Unsupported agent id. Allowed character set: [a-z,A-Z,0-9,-,_]" },
    { Rule::templateKeys, 5, "Expecting minimum one template key." },
    { Rule::ident, 3,
      "Expecting identifier. It can be upper or lower alphanumeric like [ xyz, Xyz, x0, x_y]" },
    { Rule::attrIdent, 3, "Invalid attribute name" },
    { Rule::typeIdent, 3, "Invalid kiv type." },
    { Rule::mountFilter, 5, "Expecting end of line." },
    { Rule::property, 5, "Expecting end of line." },
    { Rule::subAgent, 5, "Expecting end of line." },
    { Rule::alias, 5, "Expecting end of line." },
    { Rule::rootFlags, 5, "Expecting end of line." },
    { Rule::mountEntry, 5, "Expecting end of line." },
    { Rule::entireCondition, 5, "Expecting end of line." },
    { Rule::mountFilterId, 5,
      "Invalid mount filter id. Expecting combination of: [number, identifier, '-'] " },
    { Rule::mountFilterAttrSpec, 3,
      "Expecting mount filter key. It can be a combination of: [number, identifier, '-'] or it can be string "
      "literal "
      "like \"key1\"" },
    { Rule::mountFilterAttrSpec, 5, "Expecting end of line." },
    { Rule::include, 5,
      "Expecting end of include here.Failed to associate subsequent characters with include pattern." },
    { Rule::includeFilePattern, 5, "Expecting combination of: [number, identifier, '-', '.', '*'] " },
    { Rule::pathUnit, 5, "Expecting combination of: [number, identifier, '-', template key, '::'] " },
    { Rule::mountGroup, 5, "Expecting end of line" },
    { Rule::mountGroupId, 5, "Invalid mount group id. Expecting combination of: [number, identifier, '-'] " },
    { Rule::lvalue, 3, "Invalid lvalue of a condition." },
    { Rule::number, 4, "Expecting a number. It can be integer, float or hex" },
    { Rule::rvalue, 3, "Condition path should start with one of these:['/', 'len', template key (%xx)]" },
};

std::string prefix( const ErrorContext& context ) {
    switch ( context.section ) {
    case Section::agentTitle:
        return " In agent title, ";
    case Section::includeFile:
        return " In include file, ";
    case Section::mountGroup:
        return " In mount group '" + context.groupName + "' , ";
    default:
        return {};
    }
}

std::string nearToken( const Token& token ) {
    if ( token.type == END )
        return " at <EOF>, ";
    return " near '" + ( token.text == "\n" ? "\\n" : token.text ) + "', ";
}

std::string kindText( const Failure& failure ) {
    switch ( failure.kind ) {
    case 1:
        return failure.message;
    case 2:
        return std::string( " Expected " ) + typeName( failure.expected );
    case 9:
        return std::string( " Extraneous input - expected " ) + typeName( failure.expected );
    case 10:
        return std::string( " Missing " ) + typeName( failure.expected );
    default:
        return {};
    }
}

std::string printable( std::string_view text ) {
    std::string out;
    for ( const char character : text )
        if ( character < ' ' || character > '~' )
            out += character == '\n' ? "\\n" : escapedByte( character );
        else
            out += character;
    return out;
}

} // namespace

std::string parserErrorText( const Failure& failure, Rule rule, const ErrorContext& context ) {
    const std::string place = prefix( context ) + nearToken( failure.token );
    if ( context.failedCheck )
        return place + *context.failedCheck;
    std::string text = kindText( failure );
    for ( const Hint& hint : hints )
        if ( hint.rule == rule && hint.kind == failure.kind )
            text += hint.text;
    return place + ( text.empty() ? "Syntax error." : text );
}

std::string errorLine( const ErrorRecord& error ) {
    const bool included = !error.includeFileName.empty();
    std::string_view text = error.description;
    while ( !text.empty() && ( text.back() == ' ' || text.back() == '\n' ) )
        text.remove_suffix( 1 );
    while ( !text.empty() && text.front() == ' ' )
        text.remove_prefix( 1 );
    // The parser library counts columns from 0, and on the first line of a file from -1.
    const auto column = error.position + ( error.line == 1 ? 2 : 1 );
    return printable( included ? error.includeFileName : error.fileName ) + ':' +
           std::to_string( error.line ) + ':' + std::to_string( column ) + ": error: " + printable( text ) +
           ( included ? " (included from " + printable( error.fileName ) + ")\n" : "\n" );
}

} // namespace Model
