#pragma once

#include "windows/services/SystemHeader.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace tarvik {

/// A folder of one test's own; gone at its end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static int number = 0;
        const std::string name =
            "tarvik-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number);
        path_ = (std::filesystem::temp_directory_path() / name).string();
        std::filesystem::create_directory(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

    /// What lies in the folder.
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            result.push_back(entry.path().filename().string());
        }
        std::sort(result.begin(), result.end());
        return result;
    }

private:
    std::string path_;
};

} // namespace tarvik
