#include "linux/services/LocalSocket.h"

#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <utility>

namespace tarvik {

FileDescriptor connectTo(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return FileDescriptor();
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size() +
                                             (path.front() == '\0' ? 0 : 1));
    FileDescriptor file(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const bool connected =
        file && connect(file.number(), reinterpret_cast<const sockaddr*>(&address), size) == 0;
    return connected ? std::move(file) : FileDescriptor();
}

bool sendTo(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent =
            retried([&] { return send(file.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL); });
        if (sent <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace tarvik
