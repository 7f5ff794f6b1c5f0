#pragma once

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>

namespace tarvik {

/// Who may do what with a file that is there.
inline mode_t modeOf(const std::string& file) {
    struct stat info {};
    EXPECT_EQ(stat(file.c_str(), &info), 0) << file;
    return info.st_mode & 07777U;
}

} // namespace tarvik
