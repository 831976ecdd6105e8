#include "model/Bytes.h"
#include "model/Case.h"

namespace Model {

namespace {

void environmentLine( std::string& out, const char* name, const std::optional<std::string>& value ) {
    if ( value )
        out += std::string( name ) + '=' + escaped( *value ) + '\n';
}

} // namespace

std::string caseText( const Case& input ) {
    std::string out = "agent " + escaped( input.agentText ) + '\n';
    for ( const auto& [name, text] : input.otherFiles )
        out += "file " + name + ' ' + escaped( text ) + '\n';
    for ( const auto& name : input.directories )
        out += "directory " + name + '\n';
    out += std::string( "bareName " ) + ( input.bareName ? "yes" : "no" ) + '\n';
    out += std::string( "addDefaults " ) + ( input.addDefaults ? "yes" : "no" ) + '\n';
    out += std::string( "plainTokens " ) + ( input.plainTokens ? "yes" : "no" ) + '\n';
    if ( input.system )
        out += "system " + escaped( *input.system ) + ( input.standalone ? " standalone" : "" ) + " modes " +
               std::to_string( input.configuredMode ) + ' ' + std::to_string( input.operationalMode ) + '\n';
    out += "cell " + std::to_string( input.cell ) + '\n';
    for ( const auto& [path, type, flags] : input.configRoot )
        out += "configured " + escaped( path ) + ' ' + escaped( type ) + ' ' + escaped( flags ) + '\n';
    environmentLine( out, "K7_CHROOT", input.chroot );
    environmentLine( out, "AGENT_WAIT_FOR_READY", input.waitForReady );
    environmentLine( out, "ACTIVE_CELLID", input.activeCell );
    return out;
}

} // namespace Model
