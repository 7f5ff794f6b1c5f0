#pragma once

#include "ports/Files.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

namespace tarvik {

/// Owner of an open file.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : number_(number) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        close();
        number_ = std::exchange(other.number_, -1);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }
    /// False when the system reports an error that had been held back.
    bool close();

private:
    int number_;
};

/// The run-time error that the system's last error stands for.
ErrorNumber errorNumberOf(int systemError);

/// Writes everything, however the system cuts it up; false with errno set.
bool writeAll(int file, std::string_view bytes);

/// Appends the rest of the file to `bytes`; false with errno set, also for more than `most` bytes
/// or than memory holds.
bool readAll(int file, std::string& bytes, std::size_t most);

/// The call's result, the call repeated as often as a signal cut it short.
template <class Call>
auto retried(Call&& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// The folder part of a path, "." when it has none.
std::string folderOf(const std::string& path);

} // namespace tarvik
