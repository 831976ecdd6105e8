#include "ProfileStore/PublishedProfiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <optional>
#include <sstream>
#include <string>

namespace {

/// What the replaced allocator does, for the one thread of these tests.
struct Allocator {
    std::optional<unsigned> failsAfter; ///< allocations that still succeed
    std::size_t count = 0;
    std::size_t bytes = 0;
} allocator;

void* allocate( std::size_t size ) {
    if ( allocator.failsAfter && ( *allocator.failsAfter )-- == 0 )
        throw std::bad_alloc();
    ++allocator.count;
    allocator.bytes += size;
    if ( void* memory = std::malloc( size ) )
        return memory;
    throw std::bad_alloc();
}

} // namespace

// Inlined, new and free() look like a mismatched pair to the compiler.
#define NOT_INLINE __attribute__( ( noinline ) )

NOT_INLINE void* operator new( std::size_t size ) {
    return allocate( size );
}
NOT_INLINE void* operator new[]( std::size_t size ) {
    return allocate( size );
}
NOT_INLINE void operator delete( void* memory ) noexcept {
    std::free( memory );
}
NOT_INLINE void operator delete[]( void* memory ) noexcept {
    std::free( memory );
}
NOT_INLINE void operator delete( void* memory, std::size_t ) noexcept {
    std::free( memory );
}
NOT_INLINE void operator delete[]( void* memory, std::size_t ) noexcept {
    std::free( memory );
}

namespace {

using Corvid::AttrFilter;
using Corvid::Mount;
using Corvid::MountFilter;
using Corvid::PassiveAgentProfile;
using Corvid::PassiveAgentProfileDir;
using Corvid::PassiveMountGroup;
using Corvid::PublishedProfiles;
using Corvid::RecognitionError;
using Kiv::Name;
using Kiv::Ptr;
using Kiv::String8;

void dump( std::ostream& out, const MountFilter& filter ) {
    out << +filter.enabled() << "{";
    const std::map<String8, AttrFilter> sorted( filter.attrFilter().begin(), filter.attrFilter().end() );
    for ( const auto& [name, attribute] : sorted )
        out << name << ":" << attribute.attrName() << "=" << attribute.filterKey() << ",";
    out << "}";
}

void dump( std::ostream& out, const PassiveMountGroup& group ) {
    out << group.name() << " " << group.priority() << " " << group.blockingConditional() << " "
        << group.entireCondition() << "\n";
    for ( const Mount& mount : group.mountProfile() ) {
        out << "  " << mount.path() << " " << mount.type() << " " << mount.flags() << " ";
        dump( out, mount.mountFilter() );
        out << "\n";
    }
    for ( const auto& condition : group.conditionCol() )
        out << "  if " << condition << "\n";
    for ( const auto& [condition, value] : group.templateConditionCol() )
        out << "  template " << condition << " " << value << "\n";
}

std::string dumpOf( const PassiveAgentProfileDir& directory ) {
    std::ostringstream out;
    for ( const auto& [name, profile] : directory.agentProfile() ) {
        out << name << " " << profile->name() << " " << ( profile->parent() == &directory ) << " "
            << profile->rootFlags() << "\n";
        for ( const auto& [index, key] : profile->templateKey() )
            out << " key " << index << " " << key << "\n";
        for ( const auto& [key, targets] : profile->aliasKey() )
            out << " alias " << key << " " << targets << "\n";
        for ( const auto& [groupName, group] : profile->mountGroup() ) {
            out << " " << groupName << " " << ( group->parent() == profile.get() ) << " ";
            dump( out, *group );
        }
    }
    return out.str();
}

std::string dumpOf( const PublishedProfiles& published ) {
    std::ostringstream out;
    for ( const auto& [name, reading] : published.agents() )
        out << name << " " << reading->revision << " " << reading->valid << " " << reading->profile.get()
            << " " << reading->error.description() << "\n";
    return out.str();
}

/// A directory with one profile that has one of everything, and is published, and a filter that shares its
/// content with a mount.
struct Records {
    Ptr<PassiveAgentProfileDir> directory{ new PassiveAgentProfileDir };
    Ptr<PassiveAgentProfile> fan = directory->agentProfileIs( Name( "Fan" ) );
    Ptr<PassiveMountGroup> all = fan->mountGroupIs( Name( "all" ), 99 );
    Ptr<PassiveMountGroup> full = fan->mountGroupIs( Name( "full" ), 1 ); ///< mounts fill a block
    PublishedProfiles published;
    MountFilter fresh;
    MountFilter shared;
    MountFilter own;

    Records() {
        fan->templateKeyIs( 0, "%slot" );
        fan->aliasKeyIs( "%peer", "%slot" );
        shared.newAttrFilter( AttrFilter( "a", "1" ) );
        own.newAttrFilter( AttrFilter( "a", "1" ) );
        Mount mount( "b", "T", "r" );
        mount.mountFilterIs( shared );
        all->mountProfileIs( mount );
        for ( char path = 'A'; path < 'A' + 32; ++path )
            full->mountProfileIs( Mount( std::string( 1, path ), "T", "r" ) );
        all->conditionColEnq( "condition" );
        all->templateConditionColIs( "template", true );
        published.publish( directory );
    }
    [[nodiscard]] std::string dumped() const {
        std::ostringstream out;
        for ( const auto& filter : { fresh, shared, own } )
            dump( out, filter );
        return out.str() + dumpOf( *directory ) + dumpOf( published );
    }
};

struct Operation {
    const char* name;
    std::function<void( Records& )> run;
    bool allocates;
};

/// Every operation that could fail, with its arguments made beforehand.
const std::vector<Operation>& operations() {
    static const Name newName( "name that is new" );
    static const String8 text( "text" );
    static const Mount newMount( "a", "T", "r" );
    static const Mount otherMount( "b", "U", "w" );
    static const Mount midMount( "H/", "T", "r" );
    static const Mount lastMount( "z", "T", "r" );
    static const AttrFilter newFilter( "z", "2" );
    static const AttrFilter otherFilter( "a", "2" );
    static const RecognitionError error = [] {
        RecognitionError described;
        described.descriptionIs( text );
        return described;
    }();
    static const std::vector<Operation> all{
        { "agentProfileIs", []( Records& r ) { r.directory->agentProfileIs( newName ); }, true },
        { "mountGroupIs", []( Records& r ) { r.fan->mountGroupIs( newName, 1 ); }, true },
        { "mountGroupDel", []( Records& r ) { r.fan->mountGroupDel( r.all->name() ); }, false },
        { "rootFlagsIs", []( Records& r ) { r.fan->rootFlagsIs( text ); }, false },
        { "templateKeyIs", []( Records& r ) { r.fan->templateKeyIs( 1, text ); }, true },
        { "templateKeyIs again", []( Records& r ) { r.fan->templateKeyIs( 0, text ); }, false },
        { "aliasKeyIs", []( Records& r ) { r.fan->aliasKeyIs( text, text ); }, true },
        { "mountProfileIs", []( Records& r ) { r.all->mountProfileIs( newMount ); }, true },
        { "mountProfileIs again", []( Records& r ) { r.all->mountProfileIs( otherMount ); }, false },
        { "mountProfileIs behind a full block", []( Records& r ) { r.full->mountProfileIs( lastMount ); },
          true },
        { "mountProfileIs within a full block", []( Records& r ) { r.full->mountProfileIs( midMount ); },
          true },
        { "conditionColEnq", []( Records& r ) { r.all->conditionColEnq( text ); }, true },
        { "entireConditionIs", []( Records& r ) { r.all->entireConditionIs( text ); }, false },
        { "templateConditionColIs", []( Records& r ) { r.all->templateConditionColIs( text, true ); }, true },
        { "newAttrFilter of a fresh one", []( Records& r ) { r.fresh.newAttrFilter( newFilter ); }, true },
        { "newAttrFilter of a shared one", []( Records& r ) { r.shared.newAttrFilter( newFilter ); }, true },
        { "newAttrFilter of its own", []( Records& r ) { r.own.newAttrFilter( newFilter ); }, true },
        { "newAttrFilter again", []( Records& r ) { r.own.newAttrFilter( otherFilter ); }, false },
        { "enabledIs of a fresh one", []( Records& r ) { r.fresh.enabledIs( 1 ); }, true },
        { "enabledIs of a shared one", []( Records& r ) { r.shared.enabledIs( 1 ); }, true },
        { "publish", []( Records& r ) { r.published.publish( r.directory ); }, true },
        { "errorIs", []( Records& r ) { r.published.errorIs( r.fan->name(), error ); }, true },
        { "errorIs of a new agent", []( Records& r ) { r.published.errorIs( newName, error ); }, true },
        { "agentDel", []( Records& r ) { r.published.agentDel( r.fan->name() ); }, false },
    };
    return all;
}

/// Runs an operation with only so many allocations to be had. @return whether that was enough.
bool succeedsWith( const Operation& operation, Records& records, unsigned allocations ) {
    allocator.failsAfter = allocations;
    try {
        operation.run( records );
        allocator.failsAfter.reset();
        return true;
    } catch ( const std::bad_alloc& ) {
        allocator.failsAfter.reset();
        return false;
    }
}

TEST( ProfileStoreMemory, AnOperationThatRunsOutOfMemoryLeavesAllRecordsAsTheyWere ) {
    for ( const auto& operation : operations() ) {
        SCOPED_TRACE( operation.name );
        unsigned failures = 0;
        for ( ;; ++failures ) {
            Records records;
            const auto before = records.dumped();
            if ( succeedsWith( operation, records, failures ) ) {
                EXPECT_NE( records.dumped(), before ) << "it did nothing";
                break;
            }
            ASSERT_EQ( records.dumped(), before ) << "failed at allocation " << failures;
        }
        EXPECT_EQ( failures > 0, operation.allocates );
    }
}

TEST( ProfileStoreMemory, AMountTakesAPlaceAndOneTextAndCopiesOfItNothing ) {
    const String8 type( "Kiv::Entity" );
    const String8 flags( "riw" );
    const Ptr<PassiveMountGroup> group( new PassiveMountGroup( Name( "all" ), 99 ) );
    constexpr unsigned mounts = 10000;
    allocator.count = allocator.bytes = 0;
    for ( unsigned n = 0; n < mounts; ++n ) {
        const std::string number = std::to_string( 10000000 + n );
        char path[31] = "agent/status/interface";
        number.copy( path + 22, 8 );
        group->mountProfileIs( Mount( String8( path ), type, flags ) );
    }
    ASSERT_EQ( group->mountProfile().size(), mounts );
    ASSERT_EQ( group->mountProfile().begin()->path().size(), 30U );
    EXPECT_LE( allocator.count, mounts + mounts / 10 ); // blocks of many mounts, and a text for each
    EXPECT_LE( allocator.bytes / mounts, 80U );
    allocator.count = 0;
    const Mount copy( *group->mountProfile().begin() );
    EXPECT_EQ( allocator.count, 0U );
    EXPECT_EQ( copy, *group->mountProfile().begin() );
}

TEST( ProfileStoreMemory, AnAbsentFilterTakesOnePointer ) {
    EXPECT_EQ( sizeof( MountFilter ), sizeof( void* ) );
    EXPECT_EQ( sizeof( Mount ), 4 * sizeof( void* ) );
}

TEST( ProfileStoreMemory, MountsShareTheFilterOfOneDeclaration ) {
    MountFilter declaration;
    declaration.newAttrFilter( AttrFilter( "a", "1" ) );
    Mount mount( "a", "T", "r" );
    allocator.count = 0;
    mount.mountFilterIs( declaration );
    const Mount copy( mount );
    EXPECT_EQ( allocator.count, 0U );
    EXPECT_EQ( &copy.mountFilter().attrFilter(), &declaration.attrFilter() );
}

} // namespace
