#include "model/LibraryRecords.h"

namespace Model {

namespace {

MountRecord plain( const Corvid::Mount& mount ) {
    MountRecord out{ mount.type().str(), mount.flags().str(), {} };
    out.filter.enabled = mount.mountFilter().enabled() != 0;
    for ( const auto& [attribute, filter] : mount.mountFilter().attrFilter() )
        out.filter.keys[attribute.str()] = filter.filterKey().str();
    return out;
}

GroupRecord plain( const Corvid::PassiveMountGroup& group ) {
    GroupRecord out;
    out.priority = group.priority();
    out.blocking = group.blockingConditional();
    out.entireCondition = group.entireCondition().str();
    for ( const auto& condition : group.conditionCol() )
        out.conditions.push_back( condition.str() );
    for ( const auto& [condition, value] : group.templateConditionCol() )
        out.templateConditions[condition.str()] = value;
    for ( const Corvid::Mount& mount : group.mountProfile() )
        out.mounts[mount.path().str()] = plain( mount );
    return out;
}

ProfileRecord plain( const Corvid::PassiveAgentProfile& profile ) {
    ProfileRecord out;
    out.valid = profile.validProfile();
    out.error = Model::plain( profile.errorDesc() );
    out.hybridMount = profile.hybridMount();
    out.lowMountPrio = profile.lowMountPrio();
    out.noDefaultMountGroup = profile.noDefaultMountGroup();
    out.rootFlags = profile.rootFlags().str();
    for ( const auto& [index, key] : profile.templateKey() )
        out.templateKeys[index] = key.str();
    for ( const auto& [alias, targets] : profile.aliasKey() )
        out.aliases[alias.str()] = targets.str();
    for ( const auto& [name, group] : profile.mountGroup() )
        out.groups[name.str()] = plain( *group );
    return out;
}

} // namespace

ErrorRecord plain( const Corvid::RecognitionError& error ) {
    return { error.fileName().str(),     error.includeFileName().str(), error.line(),
             error.charPositionInLine(), error.exceptionType(),         error.recognizer().str(),
             error.description().str(),  error.sourceLine().str() };
}

std::map<std::string, ProfileRecord> plain( const Corvid::PassiveAgentProfileDir& root ) {
    std::map<std::string, ProfileRecord> out;
    for ( const auto& [name, profile] : root.agentProfile() )
        out[name.str()] = plain( *profile );
    return out;
}

} // namespace Model
