#include "ProfileParser/MountProfileHdlr.h"

#include "ProfileParser/GrammarSupport.h"
#include "ProfileParser/HandlerSupport.h"
#include "ProfileParser/InputFile.h"
#include "ProfileParser/ParseSession.h"

#include <exception>
#include <iostream>
#include <stdexcept>
#include <utility>

namespace Corvid {

namespace {

/// Part of exception texts, so a literal: compilers write signatures differently.
constexpr char parseFileSignature[] = "void Corvid::MountProfileHdlr::parseFile(const string&, bool)";

/// Registers a parser for as long as it runs, also when an exception ends it.
class RunningParser {
  public:
    RunningParser( AntlrParserCtx& ctx, ParseSession& session, const std::string& fileName, bool isInclude,
                   std::string_view text )
        : ctx_( ctx ), isInclude_( isInclude ) {
        ctx_.parserStarts( session.parser(), fileName, isInclude, text );
    }
    RunningParser( const RunningParser& ) = delete;
    RunningParser& operator=( const RunningParser& ) = delete;
    ~RunningParser() { ctx_.parserEnds( isInclude_ ); }

  private:
    AntlrParserCtx& ctx_;
    bool isInclude_;
};

} // namespace

Kiv::TraceHandle& handlerTrace() {
    static Kiv::TraceHandle handle( "MountProfileHdlr" );
    return handle;
}

MountProfileHdlr::MountProfileHdlr( const std::string& agentFile, Kiv::Ptr<PassiveAgentProfileDir> root,
                                    Kiv::Ptr<const EntityManager> entityManager, bool addDefaults )
    : root_( std::move( root ) ), entityManager_( std::move( entityManager ) ), agentFile_( agentFile ),
      addDefaults_( addDefaults ) {}

MountProfileHdlr::~MountProfileHdlr() = default;

void MountProfileHdlr::run() {
    parseFile( agentFile_, false );
    if ( !validProfileFile_ ) {
        printError();
        if ( !agentProfile_ ) {
            HDLR_TRACE( 0, "Invalidating agent profile: NA" );
            return;
        }
        HDLR_TRACE( 0, "Invalidating agent profile: '" + agentProfile_->name().str() + "'" );
        invalidateAgentProfile();
        return;
    }
    if ( maybeIncludeFile_ ) {
        HDLR_TRACE( 0, "agent name for " + agentFile_ + " not provided" );
        return;
    }
    // GCOVR_EXCL_BR_START: the group that every file opens would have found that there is no profile
    HDLR_ASSERT( agentProfile_, R"(agentProfile && "Could not create agentProfile.")" );
    // GCOVR_EXCL_BR_STOP
    if ( addDefaults_ && !agentProfile_->noDefaultMountGroup() )
        addDefaultProfiles();
    if ( agentProfile_->noDefaultMountGroup() )
        agentProfile_->mountGroupDel( Kiv::Name( "default" ) );
    if ( !validProfileFile_ ) {
        printError();
        HDLR_TRACE( 0, "Invalidating agent profile, due to error in adding default mounts,: '" + // sic
                           agentProfile_->name().str() + "'" );
        invalidateAgentProfile();
    }
}

void MountProfileHdlr::invalidateAgentProfile() {
    agentProfile_->validProfileIs( false );
    agentProfile_->errorDescIs( errorDesc_ );
}

void MountProfileHdlr::parseFile( const std::string& fileName, bool isInclude ) {
    const bool isGiven = agentText_ && !isInclude;
    auto file = isGiven ? givenInput( *agentText_, maxFileSize_ ) : readInputFile( fileName, maxFileSize_ );
    if ( !file )
        throw std::runtime_error( std::string( parseFileSignature ) +
                                  ": Antlr failed to create file stream for " + fileName );
    if ( observer_ && !isGiven )
        observer_->fileRead( fileName, isInclude );
    const std::string_view text( file->data.get(), file->size ); // stays where it is
    try {
        ParseSession session( *this, fileName, std::move( *file ),
                              plainTokens_ ? TokenPath::plain : TokenPath::fast );
        const RunningParser running( parserCtx_, session, fileName, isInclude, text );
        session.parse( isInclude );
    } catch ( const std::runtime_error& ) {
        throw std::runtime_error( std::string( parseFileSignature ) + ": runtime error while parsing " +
                                  fileName );
    }
}

void MountProfileHdlr::finishLexing() {
    if ( auto* parser = parserCtx_.running() )
        Corvid::finishLexing( parser );
}

void pointExceptionAt( AntlrParserCtx& parserCtx, std::string_view text, std::string_view behind ) {
    if ( mountProfileParser_Ctx_struct* parser = parserCtx.running() )
        parserCtx.hdlrExceptionText = lastText( parser, text, behind );
}

void pointExceptionAtLastToken( AntlrParserCtx& parserCtx ) {
    if ( mountProfileParser_Ctx_struct* parser = parserCtx.running() )
        parserCtx.hdlrExceptionText = lastTokenText( parser );
}

void MountProfileHdlr::constructHdlrException( const std::string& msg, std::string_view about ) {
    constructHdlrException( msg );
    pointExceptionAt( parserCtx_, about, {} );
}

void MountProfileHdlr::constructHdlrException( const std::string& msg ) {
    finishLexing();
    HDLR_TRACE( 8, "void Corvid::MountProfileHdlr::constructHdlrException(const string&)" );
    if ( mountProfileParser_Ctx_struct* parser = parserCtx_.getParserCtx() ) {
        HDLR_TRACE( 1, "Constucting handler exception, occured while parsing agent file" ); // sic
        raiseHandlerException( parser );
        parserCtx_.hdlrExceptionRaised = true;
        parserCtx_.hdlrExceptionMsg = msg;
        parserCtx_.hdlrExceptionText = {};
        return;
    }
    HDLR_TRACE( 1, "Constucting handler exception, occured while adding profiles " // sic
                   "post-parsing the agent file" );
    if ( !validProfileFile_ ) // the first error stays
        return;
    validProfileFileIs( false );
    errorDesc_.recognizerIs( "post-parsing" );
    errorDesc_.fileNameIs( agentFile_ );
    errorDesc_.lineIs( RecognitionError::noLine );
    errorDesc_.charPositionInLineIs( -1 );
    errorDesc_.descriptionIs( "While adding default profiles, " + msg );
    errorDetails_.code = errorCodeOf( errorDesc_.description() );
}

void MountProfileHdlr::validProfileFileIs( bool valid ) {
    if ( !valid )
        HDLR_TRACE( 1, "Invalid profile file " + agentFile_ );
    validProfileFile_ = valid;
}

void MountProfileHdlr::printError() {
    if ( errorPrinted_ )
        displayError();
}

void MountProfileHdlr::displayError() {
    std::cerr << errorDesc_.composeErrorDescMessage() << '\n' << std::flush;
}

} // namespace Corvid
