#pragma once

/// Marks what the platform offers to programs outside the shared library that carries it.
#define KIV_API __attribute__( ( visibility( "default" ) ) )
