#pragma once

// The machine that the program is built for: the one place that chooses. What `with` hands out is
// in Machine.cpp, the same for all.

#ifdef _WIN32
#include "windows/WindowsPlatform.h"
#include "windows/services/WindowsConnections.h"
namespace tarvik {
using Machine = WindowsPlatform;
using RemoteAccess = WindowsConnections;
} // namespace tarvik
#else
#include "linux/LinuxPlatform.h"
#include "linux/network/NetworkConnections.h"
namespace tarvik {
using Machine = LinuxPlatform;
using RemoteAccess = NetworkConnections;
} // namespace tarvik
#endif
