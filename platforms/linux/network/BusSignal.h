#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace sdbus {
class Message;
} // namespace sdbus

namespace tarvik {

/// A signal as it came: who sent it, what about, and the texts and numbers that it begins with.
struct BusSignal {
    using Value = std::variant<std::string, std::uint32_t>;

    std::string sender; ///< the unique name, which the bus itself puts in
    std::string path;
    std::string interface;
    std::string member;
    std::vector<Value> values; ///< up to the first one of another type, and no more than three
};

BusSignal readSignal(sdbus::Message& message);

} // namespace tarvik
