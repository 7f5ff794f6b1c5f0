#pragma once

#include <string>

namespace tarvik {

/// Makes the single-instance object and keeps its handle in `InstanceMutex`. True when no other
/// instance holds it, also when it could not be made at all. An empty key is the program's own.
bool RegisterApp(const std::string& AppKey = {});

/// Lets the single-instance object go, if one is held.
void ReleaseApp();

} // namespace tarvik
