#include "Kiv/Ptr.h"
#include "Kiv/Entity.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <utility>
#include <vector>

namespace {

using Kiv::Ptr;

class Probe : public Kiv::Entity {
  public:
    explicit Probe( std::atomic<int>& alive ) : alive_( alive ) { ++alive_; }
    int number = 0;

  protected:
    ~Probe() override { --alive_; }

  private:
    std::atomic<int>& alive_;
};

class SpecialProbe final : public Probe {
  public:
    using Probe::Probe;
};

TEST( Ptr, FreesTheObjectWithItsLastPointerAndNotBefore ) {
    std::atomic<int> alive = 0;
    Ptr<Probe> first( new Probe( alive ) );
    {
        const Ptr<Probe> second = first;
        const Ptr<const Probe> third = second;
        first = nullptr;
        EXPECT_EQ( alive, 1 );
        EXPECT_EQ( third.get(), second.get() );
    }
    EXPECT_EQ( alive, 0 );
}

TEST( Ptr, IsNullUnlessMadeFromAnObject ) {
    const Ptr<Probe> none;
    const Ptr<Probe> null = nullptr;
    const Ptr<Probe> nullObject( static_cast<Probe*>( nullptr ) );
    for ( const auto& pointer : { none, null, nullObject } ) {
        EXPECT_FALSE( pointer );
        EXPECT_EQ( pointer, nullptr );
        EXPECT_EQ( pointer.get(), nullptr );
    }
    std::atomic<int> alive = 0;
    const Ptr<Probe> some( new Probe( alive ) );
    EXPECT_TRUE( some );
    EXPECT_NE( some, nullptr );
    EXPECT_NE( some, none );
}

TEST( Ptr, ReachesTheObjectByArrowAndStar ) {
    std::atomic<int> alive = 0;
    const Ptr<Probe> probe( new Probe( alive ) );
    probe->number = 3;
    ( *probe ).number += 4;
    EXPECT_EQ( probe.get()->number, 7 );
}

TEST( Ptr, MovesLeaveNullBehindAndTouchNoCount ) {
    std::atomic<int> alive = 0;
    Ptr<SpecialProbe> from( new SpecialProbe( alive ) );
    const auto* const object = from.get();
    Ptr<SpecialProbe> same( std::move( from ) );
    EXPECT_EQ( from, nullptr ); // NOLINT(bugprone-use-after-move): that it is null is promised
    const Ptr<const Probe> base( std::move( same ) );
    EXPECT_EQ( same, nullptr ); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ( base.get(), object );
    EXPECT_EQ( alive, 1 );
}

TEST( Ptr, AssignmentDropsTheOldObjectAndSurvivesAssignmentToItself ) {
    std::atomic<int> alive = 0;
    Ptr<Probe> a( new Probe( alive ) );
    Ptr<Probe> b( new Probe( alive ) );
    a = b;
    EXPECT_EQ( alive, 1 );
    Ptr<Probe>& alias = a;
    a = alias;
    a = std::move( alias );
    EXPECT_EQ( alive, 1 );
    EXPECT_EQ( a, b );
    b = nullptr;
    a = Ptr<SpecialProbe>( new SpecialProbe( alive ) );
    EXPECT_EQ( alive, 1 );
    a = nullptr;
    EXPECT_EQ( alive, 0 );
}

TEST( Ptr, AnObjectMayBeTakenUpAgainFromItsAddress ) {
    std::atomic<int> alive = 0;
    Ptr<Probe> owner( new Probe( alive ) );
    Probe* const address = owner.get();
    const Ptr<Probe> again( address );
    owner = nullptr;
    EXPECT_EQ( alive, 1 );
    EXPECT_EQ( again.get(), address );
}

TEST( Ptr, DynamicCastYieldsNullForAnObjectOfAnotherType ) {
    std::atomic<int> alive = 0;
    const Ptr<Kiv::Entity> plain( new Probe( alive ) );
    const Ptr<Kiv::Entity> special( new SpecialProbe( alive ) );
    EXPECT_EQ( Kiv::dynamicCast<SpecialProbe>( plain ), nullptr );
    EXPECT_EQ( Kiv::dynamicCast<Probe>( special ).get(), special.get() );
    EXPECT_EQ( Kiv::dynamicCast<const SpecialProbe>( special ).get(), special.get() );
    EXPECT_EQ( Kiv::dynamicCast<Probe>( Ptr<Kiv::Entity>() ), nullptr );
}

TEST( Ptr, TakesOnePointer ) {
    EXPECT_EQ( sizeof( Ptr<Probe> ), sizeof( void* ) );
}

#if KIV_THREAD_SAFE_POINTERS
TEST( Ptr, ThreadsMayCopyAndDropPointersToOneObjectAtOnce ) {
    std::atomic<int> alive = 0;
    Ptr<Probe> probe( new Probe( alive ) );
    {
        std::vector<std::jthread> threads;
        for ( int n = 0; n < 4; ++n )
            threads.emplace_back( [probe] {
                for ( int round = 0; round < 5000; ++round ) {
                    const Ptr<const Kiv::Entity> copy = probe;
                    const std::vector<Ptr<Probe>> more( 3, probe );
                    EXPECT_EQ( more.back().get(), copy.get() );
                }
            } );
        probe->number = 1;
        probe = nullptr;
    }
    EXPECT_EQ( alive, 0 );
}

TEST( Ptr, WhatOneThreadDidWithAnObjectIsDoneWhenAnotherFreesIt ) {
    for ( int round = 0; round < 200; ++round ) {
        std::atomic<int> alive = 0;
        Ptr<Probe> first( new Probe( alive ) );
        Ptr<Probe> second( first );
        std::jthread other( [mine = std::move( second )]() mutable {
            mine->number = 1;
            mine = nullptr;
        } );
        first = nullptr;
        other.join();
        ASSERT_EQ( alive, 0 );
    }
}
#endif

} // namespace
