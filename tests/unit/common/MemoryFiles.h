#pragma once

#include "ports/Files.h"

#include <functional>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// Files in memory that count what is done to them and fail when told to.
class MemoryFiles : public Files {
public:
    /// Puts a file there, as another program would.
    void put(const std::string& path, std::string bytes) {
        files_[path] = {.kind = FileKind::File,
                        .bytes = std::move(bytes),
                        .version = ++version_,
                        .identity = 0};
        files_[path].identity = static_cast<std::uint64_t>(version_);
    }
    /// Gives the file that is there another content.
    void overwrite(const std::string& path, std::string bytes) {
        files_.at(path).bytes = std::move(bytes);
        files_.at(path).version = ++version_;
    }
    void putOther(const std::string& path, FileKind kind) {
        files_[path] = {.kind = kind, .bytes = {}, .version = ++version_, .identity = 0};
    }
    bool exists(const std::string& path) const { return files_.contains(path); }
    std::string bytes(const std::string& path) const { return files_.at(path).bytes; }

    bool readsFail = false;
    bool replacesFail = false;
    bool memoryIsShort = false;
    std::optional<std::uint64_t> sizeTold; ///< bytes, of any file, instead of its own
    std::function<void()> beforeLastLook;  ///< what others do before a replacement asks last
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
        return FileStamp{.identity = entry.identity,
                         .size = sizeTold.value_or(entry.bytes.size()),
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

    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook& stillRight) override {
        ++replaces;
        const FileKind kind = Dir(path);
        if (replacesFail || (kind != FileKind::None && kind != FileKind::File)) {
            return ErrorNumber::DiskFull;
        }
        std::string bytes;
        for (const std::string_view piece : pieces) {
            bytes += piece;
        }
        if (beforeLastLook) {
            beforeLastLook();
        }
        if (stillRight && !stillRight()) {
            return ErrorNumber::PathFileAccess;
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

    FileResult Name(const std::string& path, const std::string& newPath) override {
        if (exists(newPath)) {
            return ErrorNumber::FileAlreadyExists;
        }
        files_[newPath] = files_.at(path);
        files_.erase(path);
        return std::nullopt;
    }

    FileResult Kill(const std::string& path) override {
        return files_.erase(path) == 1 ? std::nullopt : FileResult(ErrorNumber::FileNotFound);
    }

    Holding hold(const std::string&) override { return {}; }
    Holding holdOrMake(const std::string&, std::size_t, const std::string&) override {
        return {.outcome = Holding::Outcome::Failed, .file = nullptr};
    }

private:
    struct Entry {
        FileKind kind = FileKind::File;
        std::string bytes;
        std::int64_t version = 0;
        std::uint64_t identity = 0;
    };

    std::map<std::string, Entry> files_;
    std::int64_t version_ = 0;
};

} // namespace tarvik
