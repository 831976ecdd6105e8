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
                                   bool isInclude, std::string_view text ) {
    ( isInclude ? includeFileName : agentFileName ) =
        fileName; // first: no parser stays registered when it throws
    ( isInclude ? includeFileParserCtx : agentFileParserCtx ) = parser;
    ( isInclude ? includeFileText : agentFileText ) = text;
    parsingIncludeFile = isInclude;
}

void AntlrParserCtx::parserEnds( bool isInclude ) {
    ( isInclude ? includeFileParserCtx : agentFileParserCtx ) = nullptr;
    ( isInclude ? includeFileText : agentFileText ) = {};
    parsingIncludeFile = false;
    ( isInclude ? includeFileName : agentFileName ).clear();
}

} // namespace Corvid
