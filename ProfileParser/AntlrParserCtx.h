#pragma once

#include "ProfileStore/Export.h"

#include <string>
#include <string_view>

struct mountProfileParser_Ctx_struct; // the generated parser's context

namespace Corvid {

/// Which parsers are running, for which files, and the last handler exception. One per handler.
struct CORVID_API AntlrParserCtx {
    mountProfileParser_Ctx_struct* agentFileParserCtx = nullptr;   ///< the agent file's parser while it runs
    mountProfileParser_Ctx_struct* includeFileParserCtx = nullptr; ///< an include file's parser while it runs
    std::string agentFileName;          ///< path of the agent file while it is parsed
    std::string includeFileName;        ///< path of the include file while it is parsed
    std::string hdlrExceptionMsg;       ///< message of the last handler exception
    bool hdlrExceptionRaised = false;   ///< cleared by the error description that uses the message
    std::string_view hdlrExceptionText; ///< what that exception is about, in the file's text; may be empty
    std::string_view agentFileText;     ///< the whole text of the agent file while it is parsed
    std::string_view includeFileText;   ///< the whole text of the include file while it is parsed
    bool parsingIncludeFile = false;    ///< whether the file that is parsed right now is one

    /// The parser of the file that is parsed right now; null when none is.
    [[nodiscard]] mountProfileParser_Ctx_struct* running() const noexcept {
        return parsingIncludeFile ? includeFileParserCtx : agentFileParserCtx;
    }
    /// The parser of the file that is parsed right now. Asserts that there is one.
    [[nodiscard]] mountProfileParser_Ctx_struct* getParserCtx() const;

    /// The text of the file that is parsed right now; empty when none is.
    [[nodiscard]] std::string_view runningText() const noexcept {
        return parsingIncludeFile ? includeFileText : agentFileText;
    }

    /// Registers the parser of a file that begins.
    /// @param text of the file, for the places of errors; outlives the parser.
    void parserStarts( mountProfileParser_Ctx_struct* parser, const std::string& fileName, bool isInclude,
                       std::string_view text = {} );
    /// Forgets it, when that file has ended.
    void parserEnds( bool isInclude );
};

} // namespace Corvid
