#include "ports/Platform.h"

namespace tarvik {

Platform& platform() {
    return PlatformScope::get("no platform is in place");
}

} // namespace tarvik
