#pragma once

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace tarvik {

/// A folder of one test's own; gone at its end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device number;
        std::filesystem::path folder;
        do {
            folder = std::filesystem::temp_directory_path() /
                     ("tarvik-" + std::to_string(number() % 1'000'000));
        } while (!std::filesystem::create_directory(folder));
        path_ = folder.string();
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

    /// What lies in the folder, hidden names too.
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
