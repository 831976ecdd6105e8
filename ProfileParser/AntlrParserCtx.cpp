#include "ProfileParser/AntlrParserCtx.h"

#include "ProfileParser/HandlerSupport.h"

namespace Corvid {

mountProfileParser_Ctx_struct* AntlrParserCtx::getParserCtx() const {
    if ( parsingIncludeFile ) {
        HDLR_ASSERT( includeFileParserCtx, R"(includeFileParserCtx && "includeFileParserCtx is NULL")" );
        return includeFileParserCtx;
    }
    HDLR_ASSERT( agentFileParserCtx, R"(agentFileParserCtx && "agentFileParserCtx is NULL")" );
    return agentFileParserCtx;
}

void AntlrParserCtx::parserStarts( mountProfileParser_Ctx_struct* parser, const std::string& fileName,
                                   bool isInclude ) {
    parsingIncludeFile = isInclude;
    ( isInclude ? includeFileParserCtx : agentFileParserCtx ) = parser;
    ( isInclude ? includeFileName : agentFileName ) = fileName;
}

void AntlrParserCtx::parserEnds( bool isInclude ) {
    ( isInclude ? includeFileParserCtx : agentFileParserCtx ) = nullptr;
    parsingIncludeFile = false;
    ( isInclude ? includeFileName : agentFileName ).clear();
}

} // namespace Corvid
