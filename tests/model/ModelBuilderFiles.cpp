#include "model/ModelBuilder.h"
#include "model/ModelLexer.h"
#include "model/ModelWording.h"

#include <algorithm>
#include <utility>

namespace Model {

namespace {

const std::string parseFileSignature = "void Corvid::MountProfileHdlr::parseFile(const string&, bool)";

bool matches( std::string_view name, std::string_view pattern ) {
    if ( pattern.empty() )
        return name.empty();
    if ( pattern.front() != '*' )
        return !name.empty() && name.front() == pattern.front() &&
               matches( name.substr( 1 ), pattern.substr( 1 ) );
    return matches( name, pattern.substr( 1 ) ) || ( !name.empty() && matches( name.substr( 1 ), pattern ) );
}

bool matchesFileName( std::string_view name, std::string_view pattern ) {
    return ( name.front() != '.' || pattern.front() == '.' ) && matches( name, pattern );
}

} // namespace

Outcome Builder::run() {
    try {
        parseFile( agentFile_, input_.agentText, false );
        finish();
        out_.kind = !valid_ ? "invalid" : maybeIncludeFile_ ? "notAgentFile" : "valid";
    } catch ( const Unreadable& ) {
        out_.kind = "unreadable";
        out_.exception = parseFileSignature + ": runtime error while parsing " + agentFile_;
    }
    return out_;
}

void Builder::finish() {
    if ( !valid_ ) {
        out_.printed = errorLine( out_.error );
        if ( !profile_ ) {
            trace( "0 Invalidating agent profile: NA" );
            return;
        }
        trace( "0 Invalidating agent profile: '" + profileName_ + "'" );
        profile_->valid = false;
        profile_->error = out_.error;
    } else if ( maybeIncludeFile_ ) {
        trace( "0 agent name for " + agentFile_ + " not provided" );
    } else if ( input_.addDefaults && !profile_->noDefaultMountGroup ) {
        addDefaults();
    }
}

void Builder::parseFile( const std::string& path, const std::string& text, bool isInclude ) {
    includeFile_ = isInclude ? path : "";
    const Lexed lexed = lex( text );
    if ( lexed.firstError && valid_ ) {
        ErrorRecord& error =
            firstError( lexed.firstError->kind, lexed.firstError->line, lexed.firstError->position );
        error.recognizer = "lexer";
        error.description = lexed.firstError->description;
        error.sourceLine = lexed.firstError->sourceLine;
    }
    Parser parser( lexed.tokens, isInclude, *this );
    Parser* const outer = std::exchange( parser_, &parser );
    parser.parse();
    parser_ = outer;
    includeFile_.clear();
}

ErrorRecord& Builder::firstError( std::uint32_t kind, std::uint32_t line, std::int32_t position ) {
    trace( "1 Invalid profile file " + agentFile_ );
    valid_ = false;
    out_.error.fileName = agentFile_;
    out_.error.includeFileName = includeFile_;
    out_.error.kind = kind;
    out_.error.line = line;
    out_.error.position = position;
    return out_.error;
}

void Builder::parserFailed( const Failure& failure, Rule rule, Section section ) {
    if ( !valid_ )
        return;
    ErrorRecord& error = firstError( failure.kind, failure.token.line, failure.token.position );
    error.recognizer = "parser";
    error.description = parserErrorText( failure, rule, { section, groupName_, failedCheck_ } );
    failedCheck_.reset();
}

std::vector<std::string> Builder::matchingNames( const std::string& pattern ) const {
    std::vector<std::string> names{ ".", "..", agentFileName };
    for ( const auto& [name, text] : input_.otherFiles )
        names.push_back( name );
    names.insert( names.end(), input_.directories.begin(), input_.directories.end() );
    std::erase_if( names, [&]( const std::string& name ) { return !matchesFileName( name, pattern ); } );
    std::ranges::sort( names );
    return names;
}

void Builder::parseIncludes( const std::string& pattern ) {
    const std::vector<std::string> names = matchingNames( pattern );
    if ( names.empty() ) {
        if ( pattern == "ConfigMountProfile" && input_.chroot )
            addConfiguredMounts();
        else
            check( false, "No include file found matching " + directory_ + pattern );
        return;
    }
    trace( "1 Parsing include files matching pattern " + directory_ + pattern );
    for ( const std::string& name : names ) {
        const bool wasValid = valid_;
        parseIncludeFile( name );
        if ( wasValid && !valid_ ) {
            trace( "1 Include file parser found error. Constructing handler exception to inform this to "
                   "agent file "
                   "parser" );
            check( false, "Mount profile is invalid due to error in include file: " + directory_ + name );
            return;
        }
    }
}

void Builder::parseIncludeFile( const std::string& name ) {
    if ( name == agentFileName )
        parseFile( directory_ + name, input_.agentText, true );
    else if ( const auto file = input_.otherFiles.find( name ); file != input_.otherFiles.end() )
        parseFile( directory_ + name, file->second, true );
    else
        throw Unreadable( name );
}

} // namespace Model
