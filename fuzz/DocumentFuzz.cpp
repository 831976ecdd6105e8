// The result document: valid JSON in ASCII that holds every byte of the record. The record comes from an
// agent file, or, behind a zero byte, straight from the input's parts: texts that no file can bring into it.

#include "InputDirectory.h"
#include "Laws.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace CorvidFuzz {

namespace {

using Corvid::HandlerRun;
using nlohmann::json;

/// The bytes of a text in the document: a character each.
std::string bytesOf( const json& text ) {
    std::string bytes;
    const auto& utf8 = text.get_ref<const std::string&>();
    for ( std::size_t i = 0; i < utf8.size(); ++i ) {
        const auto byte = static_cast<unsigned char>( utf8[i] );
        if ( byte < 0x80 ) {
            bytes += utf8[i];
            continue;
        }
        require( byte <= 0xC3, "a text's characters are bytes", utf8 );
        bytes +=
            static_cast<char>( ( byte & 3U ) << 6U | ( static_cast<unsigned char>( utf8[++i] ) & 0x3FU ) );
    }
    return bytes;
}

void requireText( const json& found, std::string_view expected ) {
    require( bytesOf( found ) == expected, "a text reads back to the same bytes", expected );
}

template <class Number>
void requireNumber( const json& found, Number expected ) {
    require( found.get<std::int64_t>() == static_cast<std::int64_t>( expected ), "a number reads back",
             found.dump() );
}

void requireSize( const json& found, std::size_t expected ) {
    require( found.size() == expected, "nothing is lost and nothing is added", found.dump() );
}

void checkError( const json& found, const Corvid::RecognitionError& error ) {
    requireText( found.at( "fileName" ), error.fileName() );
    requireText( found.at( "includeFileName" ), error.includeFileName() );
    requireNumber( found.at( "line" ), error.line() );
    requireNumber( found.at( "charPositionInLine" ), error.charPositionInLine() );
    requireNumber( found.at( "exceptionType" ), error.exceptionType() );
    requireText( found.at( "recognizer" ), error.recognizer() );
    requireText( found.at( "description" ), error.description() );
    requireText( found.at( "sourceLine" ), error.sourceLine() );
    requireSize( found, 8 );
}

/// The document's key for a text: its bytes as characters.
std::string keyOf( std::string_view text ) {
    std::string key;
    for ( const char c : text ) {
        const auto byte = static_cast<unsigned char>( c );
        if ( byte >= 0x80 )
            key += static_cast<char>( 0xC0U | byte >> 6U );
        key += static_cast<char>( byte >= 0x80 ? 0x80U | ( byte & 0x3FU ) : byte );
    }
    return key;
}

void checkMount( const json& found, const Corvid::Mount& mount ) {
    requireText( found.at( "path" ), mount.path() );
    requireText( found.at( "type" ), mount.type() );
    requireText( found.at( "flags" ), mount.flags() );
    const json& filter = found.at( "mountFilter" );
    require( filter.at( "enabled" ) == ( mount.mountFilter().enabled() != 0 ), "a switch reads back",
             filter.dump() );
    const json& attributes = filter.at( "attrFilter" );
    for ( const auto& [name, attribute] : mount.mountFilter().attrFilter() )
        requireText( attributes.at( keyOf( name ) ), attribute.filterKey() );
    requireSize( attributes, mount.mountFilter().attrFilter().size() );
}

void checkGroup( const json& found, const Corvid::PassiveMountGroup& group ) {
    requireNumber( found.at( "priority" ), group.priority() );
    require( found.at( "blockingConditional" ) == group.blockingConditional(), "a switch reads back", "" );
    requireText( found.at( "entireCondition" ), group.entireCondition() );
    const json& conditions = found.at( "conditionCol" );
    requireSize( conditions, group.conditionCol().size() );
    std::size_t next = 0;
    for ( const auto& condition : group.conditionCol() )
        requireText( conditions.at( next++ ), condition );
    const json& templates = found.at( "templateConditionCol" );
    for ( const auto& [condition, value] : group.templateConditionCol() )
        require( templates.at( keyOf( condition ) ) == value, "a switch reads back", condition );
    requireSize( templates, group.templateConditionCol().size() );
    const json& mounts = found.at( "mountProfile" );
    requireSize( mounts, group.mountProfile().size() );
    next = 0;
    for ( const auto& mount : group.mountProfile() )
        checkMount( mounts.at( next++ ), mount );
}

void checkProfile( const json& found, const Corvid::PassiveAgentProfile& profile ) {
    requireText( found.at( "name" ), profile.name() );
    checkError( found.at( "errorDesc" ), profile.errorDesc() );
    requireText( found.at( "rootFlags" ), profile.rootFlags() );
    require( found.at( "validProfile" ) == profile.validProfile() &&
                 found.at( "hybridMount" ) == profile.hybridMount() &&
                 found.at( "lowMountPrio" ) == profile.lowMountPrio() &&
                 found.at( "noDefaultMountGroup" ) == profile.noDefaultMountGroup(),
             "a switch reads back", "" );
    std::size_t next = 0;
    for ( const auto& [number, key] : profile.templateKey() )
        requireText( found.at( "templateKey" ).at( next++ ), key );
    requireSize( found.at( "templateKey" ), profile.templateKey().size() );
    for ( const auto& [key, targets] : profile.aliasKey() )
        requireText( found.at( "aliasKey" ).at( keyOf( key ) ), targets );
    requireSize( found.at( "aliasKey" ), profile.aliasKey().size() );
    for ( const auto& [name, group] : profile.mountGroup() )
        checkGroup( found.at( "mountGroup" ).at( keyOf( name ) ), *group );
    requireSize( found.at( "mountGroup" ), profile.mountGroup().size() );
}

void checkDocument( const HandlerRun& run ) {
    const std::string document = documentOf( run );
    require( std::ranges::all_of( document, []( char c ) { return c == '\n' || ( c >= ' ' && c <= '~' ); } ),
             "a document is printable ASCII", document );
    const json found = json::parse( document, nullptr, false );
    require( !found.is_discarded(), "a document is JSON", document );
    requireText( found.at( "agentFile" ), run.agentFile );
    require( found.at( "outcome" ) == Corvid::nameOf( run.outcome ), "the outcome reads back", document );
    if ( run.outcome == Corvid::Outcome::unreadable ) {
        requireText( found.at( "exception" ), run.exception );
        return;
    }
    checkError( found.at( "errorDesc" ), run.handler->errorDesc() );
    const auto* profile = run.handler->agentProfile().get();
    require( found.at( "profile" ).is_null() == !profile, "there is a profile or there is none", document );
    if ( profile )
        checkProfile( found.at( "profile" ), *profile );
    std::size_t next = 0;
    for ( const std::string& name : run.handler->subAgents() )
        requireText( found.at( "subAgents" ).at( next++ ), name );
    requireSize( found.at( "subAgents" ), run.handler->subAgents().size() );
}

/// A record that is filled with the texts of the input, one after the other.
HandlerRun recordOf( const std::vector<std::string_view>& texts ) {
    std::size_t at = 0;
    const auto next = [&] { return std::string( texts[at++ % texts.size()] ); };
    HandlerRun run;
    run.agentFile = next();
    run.outcome = Corvid::Outcome::invalid;
    run.handler = std::make_unique<Corvid::MountProfileHdlr>(
        run.agentFile, new Corvid::PassiveAgentProfileDir, nullptr, false );
    run.handler->agentProfileIs( next() );
    run.handler->addTemplateKeys( { next(), next() } );
    run.handler->addAlias( next(), next() );
    run.handler->addSubAgent( next() );
    run.handler->registerMountFilterDecl( "f" );
    const std::string type = next(); // one for all: two of one path would be an error
    run.handler->addMountGroup( next() );
    do {
        run.handler->addAttrFilter( next(), next() );
        run.handler->addCondition( next() );
        run.handler->addTemplateCondition( next() );
        run.handler->setEntireCondition( next() );
        run.handler->addMountGroup( next(), 1 + static_cast<unsigned>( at ) % 99 );
        run.handler->addMount( next(), type, "rw", at % 2 ? "f" : "" );
    } while ( at < texts.size() );
    Corvid::RecognitionError error;
    error.descriptionIs( next() );
    error.sourceLineIs( next() );
    error.fileNameIs( next() );
    error.lineIs( Corvid::RecognitionError::noLine );
    error.charPositionInLineIs( -1 );
    run.handler->agentProfile()->errorDescIs( error );
    return run;
}

HandlerRun runFile( InputDirectory& directory, std::string_view text ) {
    const std::string agentFile = directory.write( "agent", text );
    return checkedRun( agentFile, { { agentFile, text } } );
}

} // namespace

} // namespace CorvidFuzz

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t* data, std::size_t size ) {
    using namespace CorvidFuzz;
    static InputDirectory directory;
    if ( size > 0 && data[0] == 0 )
        checkDocument( recordOf( partsOf( data + 1, size - 1 ) ) );
    else
        checkDocument( runFile( directory, textOf( data, size ) ) );
    return 0;
}
