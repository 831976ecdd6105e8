// What the contract leaves to be implemented, as little as it permits: there is no database, hence no
// entities, no trace, and a machine without cells.

#include "Cell/Cell.h"
#include "Corvid/ConfigRoot.h"
#include "Corvid/EntityManager.h"
#include "Kiv/Assert.h"
#include "Kiv/Format.h"
#include "Kiv/TraceHandle.h"
#include "Redundancy/RedundancyStatus.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace Kiv {

String8::Counted* String8::counted( std::string_view text ) {
    if ( text.size() > maxSize )
        throw std::length_error( "a text of " + std::to_string( text.size() ) + " bytes" );
    return new Counted{ RefCount( 1 ), std::string( text ) };
}

std::ostream& operator<<( std::ostream& out, const String8& text ) {
    return out << text.view();
}

String8 format( const char* pattern, ... ) {
    std::va_list arguments;
    va_start( arguments, pattern );
    char* made = nullptr;
    const int size = ::vasprintf( &made, pattern, arguments );
    va_end( arguments );
    if ( size < 0 )
        throw std::invalid_argument( pattern );
    const std::unique_ptr<char, decltype( &std::free )> owned( made, &std::free );
    return String8( std::string_view( made, static_cast<std::size_t>( size ) ) );
}

void assertionFailed( const char* source, const char* text, const char* file, unsigned line ) {
    std::cerr << source << ": assertion failed: " << text << " (" << file << ":" << line << ")\n";
    std::abort();
}

TraceHandle::TraceHandle( const char* name ) : name_( name ) {}
TraceHandle::~TraceHandle() = default;
void TraceHandle::trace( unsigned, const char*, unsigned, std::string_view ) const {}

Entity::Entity() noexcept = default;
Entity::~Entity() = default;

Name Entity::name() const {
    return {};
}

Entity* Entity::parent() const {
    return nullptr;
}

Ptr<Entity> Entity::entity( const String8& ) const {
    return nullptr;
}

Ptr<Entity> globalDir() {
    class Empty final : public Entity {};
    static const Ptr<Entity> directory( new Empty );
    return directory;
}

} // namespace Kiv

Brae::PathTrie::~PathTrie() = default;
Corvid::ConfigRoot::~ConfigRoot() = default;
Corvid::EntityManager::~EntityManager() = default;
Redundancy::RedundancyStatus::~RedundancyStatus() = default;

std::uint32_t Cell::cellId() {
    return 0;
}

Kiv::String8 Cell::path( const Kiv::String8& relativePath, std::uint32_t cellId ) {
    return cellId == 0 ? relativePath : Kiv::format( "cells/%u/%s", cellId, relativePath.data() );
}
