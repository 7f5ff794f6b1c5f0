#pragma once

// The machine that the program is built for: the one place that chooses.

#ifdef _WIN32
#include "windows/WindowsPlatform.h"
namespace tarvik {
using Machine = WindowsPlatform;
}
#else
#include "linux/LinuxPlatform.h"
namespace tarvik {
using Machine = LinuxPlatform;
}
#endif
