#include "threads/InThreads.h"

#include <latch>
#include <thread>
#include <vector>

namespace CorvidTest {

void inThreads( std::size_t count, const std::function<void( std::size_t number )>& work ) {
    std::latch allAreThere( static_cast<std::ptrdiff_t>( count ) );
    std::vector<std::thread> threads;
    for ( std::size_t number = 0; number < count; ++number )
        threads.emplace_back( [&, number] {
            allAreThere.arrive_and_wait();
            work( number );
        } );
    for ( std::thread& thread : threads )
        thread.join();
}

std::string agentText( std::size_t number ) {
    std::string text = "agentName: Agent" + std::to_string( number ) +
                       "-%slot\nalias: %peer = %slot\nmountFilter: f\n  state, \"up\"\ninclude: *.inc\n";
    for ( std::size_t mount = 0; mount < number * 7 % 50; ++mount )
        text += "/m/" + std::to_string( mount ) + "/%peer, Some::Type, rw, f\n";
    text += "mountGroup: late, 5\ncondition: 1 == /a.b and %slot == %peer\n/late, Some::Type, r\n";
    text += number % 5 == 4 ? "/late, Another::Type, r\n" : "";
    return text + ( number % 5 == 2 ? "/late, Some::Type, \"open\n" : "" );
}

} // namespace CorvidTest
