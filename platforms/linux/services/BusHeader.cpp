#include "linux/services/BusHeader.h"

#include <sdbus-c++/sdbus-c++.h>

#include <stdexcept>

namespace tarvik {

std::string headerOf(const sdbus::Message& message, std::string (sdbus::Message::*read)() const) {
    try {
        return (message.*read)();
    } catch (const std::logic_error&) {
        return {};
    }
}

} // namespace tarvik
