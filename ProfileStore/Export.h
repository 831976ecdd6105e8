#pragma once

/// Marks what the library offers to the programs that link it.
#define CORVID_API __attribute__( ( visibility( "default" ) ) )
