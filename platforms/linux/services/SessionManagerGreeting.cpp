#include "linux/services/SessionManagerGreeting.h"

#include "linux/services/LocalSocket.h"

#include <algorithm>
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

/// The beginning of each message: the protocol, the message, two bytes of its own, and the length.
using Message = std::array<unsigned char, 8>;

constexpr unsigned char setUpProtocol = 0;

/// Each side begins by saying in which order it sends the bytes of a number: here the lower ones
/// first. Then this one offers its version of the protocol, and one way to prove itself.
constexpr std::string_view setUp("\0\1\0\0\0\0\0\0"
                                 "\0\2\1\1\6\0\0\0\0\0\0\0\0\0\0\0"
                                 "\3\0MIT\0\0\0"
                                 "\3\0001.0\0\0\0"
                                 "\22\0MIT-MAGIC-COOKIE-1"
                                 "\1\0\0\0",
                                 64);

std::optional<Message> nextMessage(const FileDescriptor& file) {
    Message message{};
    std::size_t got = 0;
    while (got < message.size()) {
        const ssize_t more = retried(
            [&] { return read(file.number(), message.data() + got, message.size() - got); });
        if (more <= 0) {
            return std::nullopt;
        }
        got += static_cast<std::size_t>(more);
    }
    return message;
}

/// It says its order of bytes, and then whether it takes the connection, wants a proof, or refuses.
/// What would come next makes this program one of its clients, and is left to the toolkit.
bool greets(const FileDescriptor& file) {
    constexpr unsigned char order = 1;
    constexpr std::array<unsigned char, 3> answers{0, 3, 6};
    if (!sendTo(file, setUp)) {
        return false;
    }
    const std::optional<Message> first = nextMessage(file);
    if (!first || (*first)[0] != setUpProtocol || (*first)[1] != order || (*first)[2] > 1) {
        return false;
    }
    const std::optional<Message> answer = nextMessage(file);
    return answer && (*answer)[0] == setUpProtocol &&
           std::count(answers.begin(), answers.end(), (*answer)[1]) != 0;
}

/// As `sessionManagerGreets`, once.
bool greetsOnce(const std::string& addresses) {
    std::istringstream list(addresses);
    for (std::string address; std::getline(list, address, ',');) {
        const std::optional<std::string> path = pathOf(address);
        if (!path) {
            continue;
        }
        if (const FileDescriptor file = connectTo(*path)) {
            return greets(file);
        }
    }
    return true;
}

} // namespace

bool sessionManagerGreets(const std::string& addresses) {
    // The toolkit waits for five answers, one after the other: a manager that is slow with each is
    // found out before that.
    constexpr int greetings = 6;
    for (int i = 0; i < greetings; ++i) {
        if (!greetsOnce(addresses)) {
            return false;
        }
    }
    return true;
}

} // namespace tarvik
