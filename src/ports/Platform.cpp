#include "ports/Platform.h"

namespace tarvik {

namespace {
Platform* current = nullptr;
} // namespace

Platform& platform() {
    return *current;
}

PlatformScope::PlatformScope(Platform& platform) : previous_(current) {
    current = &platform;
}

PlatformScope::~PlatformScope() {
    current = previous_;
}

} // namespace tarvik
