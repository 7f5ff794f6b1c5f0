#include "linux/services/Environment.h"

#include <cstdlib>

namespace tarvik {

std::string fromEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace tarvik
