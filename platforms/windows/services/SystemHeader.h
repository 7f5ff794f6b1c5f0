#pragma once

// The system's own declarations, which must not be included in another way: what is left out here
// would take names that the program uses.

#include <windows.h>

#undef near
#undef far
#undef interface
#undef small
