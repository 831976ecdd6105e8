#pragma once

#include "ProfileStore/Export.h"

#include <string>

struct mountProfileParser_Ctx_struct; // the generated parser's context

namespace Corvid {

/// Which parsers are running, for which files, and the last handler exception. One per handler.
struct CORVID_API AntlrParserCtx {
    mountProfileParser_Ctx_struct* agentFileParserCtx = nullptr;   ///< the agent file's parser while it runs
    mountProfileParser_Ctx_struct* includeFileParserCtx = nullptr; ///< an include file's parser while it runs
    std::string agentFileName;        ///< path of the agent file while it is parsed
    std::string includeFileName;      ///< path of the include file while it is parsed
    std::string hdlrExceptionMsg;     ///< message of the last handler exception
    bool hdlrExceptionRaised = false; ///< cleared by the error description that uses the message
    bool parsingIncludeFile = false;  ///< whether the file that is parsed right now is one

    /// The parser of the file that is parsed right now; null when none is.
    [[nodiscard]] mountProfileParser_Ctx_struct* running() const noexcept {
        return parsingIncludeFile ? includeFileParserCtx : agentFileParserCtx;
    }
    /// The parser of the file that is parsed right now. Asserts that there is one.
    [[nodiscard]] mountProfileParser_Ctx_struct* getParserCtx() const;

    /// Registers the parser of a file that begins.
    void parserStarts( mountProfileParser_Ctx_struct* parser, const std::string& fileName, bool isInclude );
    /// Forgets it, when that file has ended.
    void parserEnds( bool isInclude );
};

} // namespace Corvid
