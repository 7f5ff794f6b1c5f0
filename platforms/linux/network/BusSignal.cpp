#include "linux/network/BusSignal.h"

#include "linux/services/BusHeader.h"

#include <sdbus-c++/sdbus-c++.h>

namespace tarvik {

namespace {

constexpr std::size_t mostValues = 3;

template <class Value>
Value next(sdbus::Message& message) {
    Value value;
    message >> value;
    return value;
}

/// Whether there was one more.
bool readValue(sdbus::Message& message, std::vector<BusSignal::Value>& values) {
    std::string type;
    std::string contents;
    message.peekType(type, contents);
    if (type == "s") {
        values.emplace_back(next<std::string>(message));
    } else if (type == "o") {
        values.emplace_back(std::string(next<sdbus::ObjectPath>(message)));
    } else if (type == "u") {
        values.emplace_back(next<std::uint32_t>(message));
    } else {
        return false;
    }
    return true;
}

} // namespace

BusSignal readSignal(sdbus::Message& message) {
    BusSignal signal{.sender = headerOf(message, &sdbus::Message::getSender),
                     .path = headerOf(message, &sdbus::Message::getPath),
                     .interface = headerOf(message, &sdbus::Message::getInterfaceName),
                     .member = headerOf(message, &sdbus::Message::getMemberName),
                     .values = {}};
    try {
        while (signal.values.size() < mostValues && readValue(message, signal.values)) {
        }
    } catch (const sdbus::Error&) {
        // What is missing then makes the signal one that is not understood.
    }
    return signal;
}

} // namespace tarvik
