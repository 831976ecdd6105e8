#include "model/Generator.h"

namespace Model {

std::string Generator::include() {
    const std::string pattern =
        random_.chance( 70 )
            ? random_.pick( { "inc*", "*.inc", "inc1", "inc-a.inc", "ConfigMountProfile", "m1.x", "*1*" } )
            : random_.pick( { "*", "Config*", "none*", ".hid", ".*", "..", "1.2", "b.in", "inc1 x", "in c1",
                              "inc1:", "inc1 \"x\"", "**", "inc-*.*", "/inc1", "configmountprofile", "incdir",
                              "*dir" } );
    return line( { spelled( "include" ), ":", pattern } );
}

void Generator::includeFiles( Case& out ) {
    if ( out.agentText.find( '*' ) == std::string::npos && out.agentText.find( "nc" ) == std::string::npos &&
         out.agentText.find( "onfig" ) == std::string::npos )
        return;
    for ( const char* name : { "inc1", "inc2", "inc-a.inc", "b.inc", "m1.x" } )
        if ( random_.chance( 60 ) )
            out.otherFiles[name] = includeFileText();
    for ( const char* name : { ".hid", "Config2", "ConfigMountProfile" } )
        if ( random_.chance( 15 ) )
            out.otherFiles[name] = includeFileText();
    if ( random_.chance( 4 ) )
        out.directories.emplace_back( "incdir" );
}

std::string Generator::includeFileText() {
    std::string text = random_.chance( 10 ) ? lineEnd() : "";
    do
        text += slips() ? includeFileSlip() : mount();
    while ( random_.chance( 50 ) );
    if ( random_.chance( 10 ) && !text.empty() )
        text.pop_back();
    return text;
}

std::string Generator::includeFileSlip() {
    switch ( random_.below( 6 ) ) {
    case 0:
        return title();
    case 1:
        return statement();
    case 2:
        return property();
    case 3:
        return include();
    case 4:
        return mountGroup();
    default:
        return "";
    }
}

void Generator::stage( Case& out ) {
    out.bareName = random_.chance( 15 );
    out.addDefaults = random_.chance( 70 );
    out.plainTokens = random_.chance( 25 );
    out.cell = random_.chance( 60 ) ? 1 : static_cast<std::uint32_t>( random_.below( 3 ) );
    if ( random_.chance( 50 ) )
        system( out );
    if ( random_.chance( 20 ) )
        out.waitForReady = random_.pick( { "", "1" } );
    if ( random_.chance( 25 ) )
        out.activeCell = random_.pick( { "1", "2", "7", "0", "-1", "abc", " 5", "4294967298", "2x", "" } );
}

void Generator::system( Case& out ) {
    out.system = random_.pick( { "sys", "Sys-2", "a b" } );
    out.standalone = random_.chance( 15 );
    if ( random_.chance( 25 ) )
        out.configuredMode = static_cast<std::uint32_t>( random_.below( 4 ) );
    if ( random_.chance( 25 ) )
        out.operationalMode = static_cast<std::uint32_t>( random_.below( 4 ) );
    if ( random_.chance( 40 ) )
        out.chroot = random_.pick( { "", "/root", "0" } );
    while ( random_.chance( 60 ) )
        out.configRoot.push_back( { random_.pick( { "a", "a/b", "/a/b/", "agent/status", "c", "/", "b" } ),
                                    random_.pick( { "Entity", "Kiv::Entity", "Kiv::Entity", "Status", "" } ),
                                    random_.pick( { "", "i", "w", "rwi", "xyz" } ) } );
}

} // namespace Model
