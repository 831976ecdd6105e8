// Compiled for its precompiled headers only.
