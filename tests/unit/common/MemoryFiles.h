#pragma once

#include "ports/Files.h"

#include <map>
#include <new>
#include <string>
#include <vector>

namespace tarvik {

/// Files in memory that count what is done to them and fail when told to.
class MemoryFiles : public Files {
public:
    /// Puts a file there, as another program would.
    void put(const std::string& path, std::string bytes) {
        files_[path] = {.kind = FileKind::File, .bytes = std::move(bytes), .version = ++version_};
    }
    void putOther(const std::string& path, FileKind kind) {
        files_[path] = {.kind = kind, .bytes = {}, .version = ++version_};
    }
    bool exists(const std::string& path) const { return files_.contains(path); }
    std::string bytes(const std::string& path) const { return files_.at(path).bytes; }

    bool readsFail = false;
    bool replacesFail = false;
    bool memoryIsShort = false;
    int stamps = 0;
    int reads = 0;
    int replaces = 0;

    FileKind Dir(const std::string& path) override {
        return exists(path) ? files_.at(path).kind : FileKind::None;
    }

    std::optional<FileStamp> stamp(const std::string& path) override {
        ++stamps;
        if (Dir(path) != FileKind::File) {
            return std::nullopt;
        }
        const Entry& entry = files_.at(path);
        return FileStamp{.identity = 1,
                         .size = entry.bytes.size(),
                         .modified = entry.version,
                         .changed = entry.version};
    }

    FileResult read(const std::string& path, std::string& bytes) override {
        ++reads;
        if (memoryIsShort) {
            throw std::bad_alloc();
        }
        if (readsFail || Dir(path) != FileKind::File) {
            return ErrorNumber::PathFileAccess;
        }
        bytes = files_.at(path).bytes;
        return std::nullopt;
    }

    FileResult replace(const std::string& path,
                       const std::vector<std::string_view>& pieces) override {
        ++replaces;
        const FileKind kind = Dir(path);
        if (replacesFail || (kind != FileKind::None && kind != FileKind::File)) {
            return ErrorNumber::DiskFull;
        }
        std::string bytes;
        for (const std::string_view piece : pieces) {
            bytes += piece;
        }
        put(path, std::move(bytes));
        return std::nullopt;
    }

    FileResult FileCopy(const std::string& source, const std::string& target) override {
        std::string bytes;
        if (const FileResult failure = read(source, bytes)) {
            return failure;
        }
        return replace(target, {bytes});
    }

    FileResult Kill(const std::string& path) override {
        return files_.erase(path) == 1 ? std::nullopt : FileResult(ErrorNumber::FileNotFound);
    }

private:
    struct Entry {
        FileKind kind = FileKind::File;
        std::string bytes;
        std::int64_t version = 0;
    };

    std::map<std::string, Entry> files_;
    std::int64_t version_ = 0;
};

} // namespace tarvik
