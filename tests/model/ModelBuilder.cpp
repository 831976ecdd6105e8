#include "model/ModelBuilder.h"

namespace Model {

Builder::Builder( const Case& input, std::string directory )
    : input_( input ), directory_( std::move( directory ) ), agentFile_( directory_ + agentFileName ) {}

/// A failed check becomes an error at the parser's current token. The message of the last one counts.
void Builder::check( bool holds, const std::string& message ) {
    if ( holds )
        return;
    trace( "1 Constucting handler exception, occured while parsing agent file" );
    parser_->checkFailed();
    failedCheck_ = message;
}

void Builder::agentProfileIs( const std::string& name ) {
    profile_ = &out_.profiles[name];
    profileName_ = name;
}

void Builder::addTemplateKeys( const std::vector<std::string>& keys ) {
    for ( unsigned index = 0; index < keys.size(); ++index )
        profile_->templateKeys[index] = keys[index];
}

void Builder::validateTemplateKey( const std::string& key ) {
    static const std::set<std::string> predefined{ "%cellId",       "%cellPath", "%peerCellId",
                                                   "%peerCellPath", "%sysname",  "%agentString" };
    check( predefined.contains( key ) || templateKeys_.contains( key ),
           "Reference to undeclared template key " + key );
}

void Builder::setProperty( Type type ) {
    if ( type == HYBRIDMOUNT )
        profile_->hybridMount = true;
    else if ( type == LOWMOUNTPRIO )
        profile_->lowMountPrio = true;
    else
        profile_->noDefaultMountGroup = true;
}

void Builder::addAlias( const std::string& key, const std::string& targets ) {
    profile_->aliases[key] = targets;
}

bool Builder::validateFlags( const std::string& flags ) {
    for ( const char flag : flags )
        if ( std::string( "rwicfCDSBNO" ).find( flag ) == std::string::npos ) {
            check( false, std::string( "illegal flag '" ) + flag + "'" );
            return false;
        }
    return true;
}

void Builder::setRootFlags( const std::string& flags ) {
    if ( !validateFlags( flags ) )
        return;
    for ( const char flag : flags )
        if ( profile_->rootFlags.find( flag ) == std::string::npos )
            profile_->rootFlags += flag;
}

void Builder::validateMountGroupName( const std::string& name ) {
    check( name != "all" && name != "default", "Cannot use reserved mount group name" );
}

void Builder::addMountGroup( const std::string& name, std::uint32_t priority ) {
    if ( priority < 1 || priority > 99 ) {
        check( false, "mount group priority should be in the range [1,99]" );
        return;
    }
    const auto [place, isNew] = profile_->groups.try_emplace( name );
    if ( isNew )
        place->second.priority = priority;
    group_ = &place->second;
    groupName_ = name;
}

std::uint32_t Builder::priority( const std::string& digits ) {
    constexpr std::uint64_t largest = 0x7FFFFFFFFFFFFFFF;
    std::uint64_t value = 0;
    for ( const char digit : digits ) {
        const auto units = static_cast<std::uint64_t>( digit - '0' );
        value = value > ( largest - units ) / 10 ? largest : value * 10 + units;
    }
    return static_cast<std::uint32_t>( value );
}

void Builder::validateConditionNotSet() {
    check( group_->entireCondition.empty(),
           "Condition for this mount group is already set to: " + group_->entireCondition +
               ". Multiple conditions not allowed." );
}

void Builder::validateFunction( const std::string& name ) {
    check( name == "len", "Only supported function is 'len'" );
}

} // namespace Model
