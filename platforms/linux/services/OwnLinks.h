#pragma once

#include <optional>
#include <string>
#include <sys/stat.h>

namespace tarvik {

/// The path that a path leads to through symbolic links, and what is there, as `lstat` tells it.
/// Only links of the user's own and of the administrator's are followed: in a folder where others
/// may write, or which is another's, a link of theirs would choose which of the user's files is
/// read and replaced. Nothing, with errno set, where there is nothing at the end, or where a link
/// is another user's (EACCES).
std::optional<std::string> followOwnLinks(const std::string& path, struct stat& info);

} // namespace tarvik
