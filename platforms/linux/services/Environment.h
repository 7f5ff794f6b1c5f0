#pragma once

#include <string>

namespace tarvik {

/// The value of that environment variable; "" where there is none. To be asked while no other
/// thread changes the environment.
std::string fromEnvironment(const char* name);

} // namespace tarvik
