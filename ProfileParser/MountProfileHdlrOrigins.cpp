// Where the statement stands that is being read, for the observer.

#include "ProfileParser/GrammarSupport.h"
#include "ProfileParser/MountProfileHdlr.h"

namespace Corvid {

Origin MountProfileHdlr::tokenOrigin() const {
    mountProfileParser_Ctx_struct* parser = parserCtx_.running();
    if ( !parser )
        return {};
    return { mountingConfiguredPaths_ ? Origin::Kind::configuredPath : Origin::Kind::line,
             parserCtx_.parsingIncludeFile ? parserCtx_.includeFileName : parserCtx_.agentFileName,
             lastTokenLine( parser ), parserCtx_.parsingIncludeFile };
}

Origin MountProfileHdlr::statementOrigin() const {
    Origin origin = tokenOrigin();
    if ( origin.kind != Origin::Kind::implicit )
        origin.line = statementLine( parserCtx_.running() );
    return origin;
}

} // namespace Corvid
