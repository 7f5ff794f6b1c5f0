#include "linux/services/OwnLinks.h"

#include "linux/services/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

namespace tarvik {

namespace {

/// As many links one behind the other as the system itself follows.
constexpr int mostLinks = 40;

/// Stricter than the kernel's own protection, for which one of the folder's owner will do: in a
/// folder of another user's, who starts this program there would write wherever that one likes.
bool mayBeFollowed(uid_t owner) {
    return owner == geteuid() || owner == 0;
}

/// Where the link points, as a path from the same place as its own. The link is held open between
/// the two questions: it cannot be exchanged for another one's.
std::optional<std::string> pointedTo(const std::string& link) {
    const FileDescriptor held(
        retried([&] { return open(link.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
    struct stat info {};
    if (!held || fstat(held.number(), &info) != 0) {
        return std::nullopt;
    }
    if (!mayBeFollowed(info.st_uid)) {
        errno = EACCES;
        return std::nullopt;
    }
    std::array<char, PATH_MAX> text;
    const ssize_t length = readlinkat(held.number(), "", text.data(), text.size());
    if (length <= 0) {
        return std::nullopt;
    }
    const std::string target(text.data(), static_cast<std::size_t>(length));
    return target.front() == '/' ? target : folderOf(link) + '/' + target;
}

} // namespace

std::optional<std::string> followOwnLinks(const std::string& path, struct stat& info) {
    std::optional<std::string> at = path;
    for (int links = 0; at && links <= mostLinks; ++links) {
        if (lstat(at->c_str(), &info) != 0) {
            return std::nullopt;
        }
        if (!S_ISLNK(info.st_mode)) {
            return at;
        }
        at = pointedTo(*at);
    }
    errno = at ? ELOOP : errno;
    return std::nullopt;
}

} // namespace tarvik
