#include "linux/services/SessionManagerGreeting.h"

#include "linux/services/LocalSocket.h"

#include <array>
#include <cstddef>
#include <optional>
#include <sstream>
#include <string_view>
#include <unistd.h>

namespace tarvik {

namespace {

/// The socket of an address "local/HOST:PATH" or "unix/HOST:PATH", where an '@' stands before a
/// path that is none of the file system; nothing for others.
std::optional<std::string> pathOf(const std::string& address) {
    const std::size_t colon = address.find(':');
    const bool own = address.starts_with("local/") || address.starts_with("unix/");
    if (!own || colon == std::string::npos || colon + 1 == address.size()) {
        return std::nullopt;
    }
    std::string path = address.substr(colon + 1);
    if (path.front() == '@') {
        path.front() = '\0';
    }
    return path;
}

/// Each side begins by saying in which order it sends the bytes of a number: a message of eight
/// bytes, of which one tells the protocol, one the message and one the order.
bool saysByteOrder(const FileDescriptor& file) {
    std::array<unsigned char, 8> message{};
    std::size_t got = 0;
    while (got < message.size()) {
        const ssize_t more = retried(
            [&] { return read(file.number(), message.data() + got, message.size() - got); });
        if (more <= 0) {
            return false;
        }
        got += static_cast<std::size_t>(more);
    }
    constexpr std::array<unsigned char, 2> byteOrder{0, 1};
    return message[0] == byteOrder[0] && message[1] == byteOrder[1] && message[2] <= 1;
}

} // namespace

bool sessionManagerGreets(const std::string& addresses) {
    std::istringstream list(addresses);
    for (std::string address; std::getline(list, address, ',');) {
        const std::optional<std::string> path = pathOf(address);
        if (!path) {
            continue;
        }
        if (const FileDescriptor file = connectTo(*path)) {
            return saysByteOrder(file);
        }
    }
    return true;
}

} // namespace tarvik
