#pragma once

#include "ports/Files.h"
#include "windows/services/SystemHeader.h"

#include <string>
#include <string_view>
#include <utility>

namespace tarvik {

/// Owner of an open file.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~FileHandle() { close(); }
    FileHandle(FileHandle&& other) noexcept
        : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        close();
        handle_ = std::exchange(other.handle_, INVALID_HANDLE_VALUE);
        return *this;
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    void close() {
        if (*this) {
            CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
        }
    }

private:
    HANDLE handle_;
};

/// The run-time error that one of the system's errors stands for.
ErrorNumber errorNumberOf(DWORD systemError);

/// Writes everything; false with the system's last error set.
bool writeAll(const FileHandle& file, std::string_view bytes);

/// Has the file deleted when its handles are closed; false with the system's last error set.
bool markDeleted(const FileHandle& file);

/// Reads the rest of the file into `bytes`; false with the system's last error set, also for more
/// than a gigabyte, or than memory holds.
bool readAll(const FileHandle& file, std::string& bytes);

} // namespace tarvik
