#pragma once

#include "EmbeddedPlatform.h"
#include "ProfileParser/MountProfileHdlr.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace CorvidTest {

/// Where a test calls a helper: std::source_location, which not every compiler that reads the tests has.
struct SourceLine {
    const char* file;
    int line;
    static SourceLine current( const char* file = __builtin_FILE(), int line = __builtin_LINE() ) {
        return { file, line };
    }
};

struct ParseOptions {
    bool addDefaults = false;
    Kiv::Ptr<const Corvid::EntityManager> entityManager = nullptr;
    /// Further files beside the agent file, by name.
    std::map<std::string, std::string> files = {};
    std::string agentFileName = "Agent";
    /// What `root` is; a directory of its own unless given.
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root = nullptr;
    /// Whether the tokens come from the generated lexer alone. `expectProfile` and `expectError` try both.
    bool plainTokens = false;
};

/// Sends what is written to std::cerr into a text, as long as it lives.
class CapturedStandardError {
  public:
    CapturedStandardError() : before_( std::cerr.rdbuf( text_.rdbuf() ) ) {}
    CapturedStandardError( const CapturedStandardError& ) = delete;
    CapturedStandardError& operator=( const CapturedStandardError& ) = delete;
    ~CapturedStandardError() { std::cerr.rdbuf( before_ ); }
    [[nodiscard]] std::string text() const { return text_.str(); }

  private:
    std::ostringstream text_;
    std::streambuf* before_;
};

/// Collects the handler's trace, all levels, as lines "LEVEL TEXT\n", as long as it lives.
class CapturedTrace {
  public:
    CapturedTrace() {
        Kiv::Embedded::traceLevelsAre( "MountProfileHdlr" );
        Kiv::Embedded::traceSinkIs(
            [this]( const Kiv::TraceHandle&, unsigned level, const char*, unsigned, std::string_view text ) {
                text_.append( std::to_string( level ) ).append( " " ).append( text ).append( "\n" );
            } );
    }
    CapturedTrace( const CapturedTrace& ) = delete;
    CapturedTrace& operator=( const CapturedTrace& ) = delete;
    ~CapturedTrace() {
        Kiv::Embedded::traceSinkIs( {} );
        Kiv::Embedded::traceLevelsAre( "" );
    }
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    std::string text_;
};

// Short texts for what is in the records, to compare with one literal.

/// "path type flags", then the filter in braces when the mount has one, " {attr=key other=}", attributes in
/// order.
inline std::string dumped( const Corvid::Mount& mount ) {
    std::string text = mount.path().str() + " " + mount.type().str() + " " + mount.flags().str();
    if ( mount.mountFilter().enabled() ) {
        std::map<std::string, std::string> attributes;
        for ( const auto& [name, filter] : mount.mountFilter().attrFilter() )
            attributes[name.str()] = filter.filterKey().str();
        text += " {";
        for ( const auto& [name, key] : attributes )
            text.append( text.back() == '{' ? "" : " " ).append( name ).append( "=" ).append( key );
        text += "}";
    }
    return text;
}

/// One line for each of: whole condition, single conditions in their order, template conditions, blocking.
inline std::string dumpedConditions( const Corvid::PassiveMountGroup& group ) {
    std::string text;
    if ( !group.entireCondition().empty() )
        text += "entire " + group.entireCondition().str() + "\n";
    for ( const auto& condition : group.conditionCol() )
        text += "condition " + condition.str() + "\n";
    for ( const auto& [condition, value] : group.templateConditionCol() )
        text += "template " + condition.str() + ( value ? "\n" : " (false)\n" );
    if ( group.blockingConditional() )
        text += "blocking\n";
    return text;
}

inline std::string dumpedMounts( const Corvid::PassiveMountGroup& group ) {
    std::string text;
    for ( const auto& mount : group.mountProfile() )
        text += dumped( mount ) + "\n";
    return text;
}

/// The whole profile, less what has its default: "agent NAME", keys, root flags, switches, aliases, then the
/// groups in the order of their names: "group NAME PRIORITY", conditions, mounts.
inline std::string dumped( const Corvid::PassiveAgentProfile& profile ) {
    std::string text = "agent " + profile.name().str() + "\n";
    for ( const auto& [index, key] : profile.templateKey() )
        text += "key " + std::to_string( index ) + " " + key.str() + "\n";
    if ( !profile.rootFlags().empty() )
        text += "rootFlags " + profile.rootFlags().str() + "\n";
    text += profile.hybridMount() ? "hybridMount\n" : "";
    text += profile.lowMountPrio() ? "lowMountPrio\n" : "";
    text += profile.noDefaultMountGroup() ? "noDefaultMountGroup\n" : "";
    for ( const auto& [key, targets] : profile.aliasKey() )
        text += "alias " + key.str() + " = " + targets.str() + "\n";
    for ( const auto& [name, group] : profile.mountGroup() )
        text += "group " + name.str() + " " + std::to_string( group->priority() ) + "\n" +
                dumpedConditions( *group ) + dumpedMounts( *group );
    return text;
}

/// A handler that has run over a text, written to an agent file in a directory of its own.
class ParsedProfile {
  public:
    explicit ParsedProfile( std::string_view text, const ParseOptions& options = {} )
        : root_( options.root ? options.root : new Corvid::PassiveAgentProfileDir ),
          agentFile_( dir_.file( options.agentFileName, text ) ),
          hdlr_( agentFile_, root_, options.entityManager, options.addDefaults ) {
        for ( const auto& [name, content] : options.files )
            dir_.file( name, content );
        hdlr_.plainTokensIs( options.plainTokens );
        const CapturedTrace trace;
        const CapturedStandardError standardError;
        hdlr_.run();
        trace_ = trace.text();
        standardError_ = standardError.text();
    }

    [[nodiscard]] const Corvid::MountProfileHdlr& hdlr() const { return hdlr_; }
    [[nodiscard]] const Corvid::PassiveAgentProfileDir& root() const { return *root_; }
    /// May be null.
    [[nodiscard]] const Corvid::PassiveAgentProfile* profile() const { return hdlr_.agentProfile().get(); }
    [[nodiscard]] const Corvid::RecognitionError& error() const { return hdlr_.errorDesc(); }
    [[nodiscard]] std::string description() const { return error().description().str(); }
    [[nodiscard]] const std::string& agentFile() const { return agentFile_; }
    /// The path of a file beside the agent file.
    [[nodiscard]] std::string fileBeside( const std::string& name ) const { return dir_.path() + "/" + name; }
    /// Everything that the handler traced, as lines "LEVEL TEXT\n".
    [[nodiscard]] const std::string& trace() const { return trace_; }
    [[nodiscard]] const std::string& standardError() const { return standardError_; }

    /// "valid", "invalid" or "notAgentFile"; together with what must go along with it in handler and profile,
    /// so that no half-way outcome is taken for one of them.
    [[nodiscard]] std::string outcome() const {
        const bool described = !error().description().empty() && !standardError_.empty();
        if ( !hdlr_.validProfileFile() )
            return described && ( !profile() || !profile()->validProfile() ) ? "invalid"
                                                                             : "invalid, inconsistent";
        if ( hdlr_.maybeIncludeFile() )
            return described || profile() ? "notAgentFile, inconsistent" : "notAgentFile";
        return !described && profile() && profile()->validProfile() ? "valid" : "valid, inconsistent";
    }

    /// The whole profile, then the sub-agents that the handler has noted: "subAgent NAME".
    [[nodiscard]] std::string dump() const {
        std::string text = profile() ? dumped( *profile() ) : "no profile\n";
        for ( const auto& name : hdlr_.subAgents() )
            text += "subAgent " + name + "\n";
        return text;
    }
    [[nodiscard]] std::string mountsOf( const std::string& group ) const {
        const auto* found = mountGroup( group );
        return found ? dumpedMounts( *found ) : "no group\n";
    }
    [[nodiscard]] std::string conditionsOf( const std::string& group ) const {
        const auto* found = mountGroup( group );
        return found ? dumpedConditions( *found ) : "no group\n";
    }
    /// Null when there is none.
    [[nodiscard]] const Corvid::PassiveMountGroup* mountGroup( const std::string& name ) const {
        if ( !profile() )
            return nullptr;
        const auto found = profile()->mountGroup().find( Kiv::Name( name ) );
        return found == profile()->mountGroup().end() ? nullptr : found->second.get();
    }

  private:
    TempDir dir_;
    Kiv::Ptr<Corvid::PassiveAgentProfileDir> root_;
    std::string agentFile_;
    Corvid::MountProfileHdlr hdlr_;
    std::string trace_;
    std::string standardError_;
};

/// The options, and the same with the other source of tokens; but a given `root` serves only one parse.
inline std::vector<ParseOptions> withBothTokenSources( ParseOptions options ) {
    std::vector<ParseOptions> both{ options };
    options.plainTokens = !options.plainTokens;
    if ( !options.root )
        both.push_back( options );
    return both;
}

/// Parses a text and expects it valid, with this dump.
inline void expectProfile( std::string_view text, const std::string& dump, const ParseOptions& options = {},
                           const SourceLine& where = SourceLine::current() ) {
    const testing::ScopedTrace scope( where.file, where.line, "profile:\n" + std::string( text ) );
    for ( const ParseOptions& each : withBothTokenSources( options ) ) {
        const ParsedProfile parsed( text, each );
        EXPECT_EQ( parsed.outcome(), "valid" ) << parsed.description();
        EXPECT_EQ( parsed.dump(), dump );
    }
}

/// Expects exactly this error.
/// @param description the whole of it. @param line, position as the record keeps them: from 1; from 0, but
/// from −1 on
///     the first line of a file. @param kind the exception's number.
inline void expectErrorOf( const ParsedProfile& parsed, const std::string& description, std::uint32_t line,
                           std::int32_t position, std::uint32_t kind ) {
    EXPECT_EQ( parsed.outcome(), "invalid" );
    EXPECT_EQ( parsed.description(), description );
    EXPECT_EQ( parsed.error().line(), line );
    EXPECT_EQ( parsed.error().charPositionInLine(), position );
    EXPECT_EQ( parsed.error().exceptionType(), kind );
    EXPECT_EQ( parsed.error().fileName().str(), parsed.agentFile() );
    if ( parsed.profile() ) {
        EXPECT_EQ( parsed.profile()->errorDesc(), parsed.error() );
    }
}

/// Parses a text and expects it invalid, with exactly this error.
inline void expectError( std::string_view text, const std::string& description, std::uint32_t line,
                         std::int32_t position, std::uint32_t kind, const ParseOptions& options = {},
                         const SourceLine& where = SourceLine::current() ) {
    const testing::ScopedTrace scope( where.file, where.line, "profile:\n" + std::string( text ) );
    for ( const ParseOptions& each : withBothTokenSources( options ) )
        expectErrorOf( ParsedProfile( text, each ), description, line, position, kind );
}

} // namespace CorvidTest
