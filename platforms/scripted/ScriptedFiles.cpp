#include "scripted/ScriptedFiles.h"

namespace tarvik {

void ScriptedFiles::setFile(const std::string& path, std::string bytes) {
    nodes_[path] = {.kind = FileKind::File, .bytes = std::move(bytes), .version = ++version_};
}

void ScriptedFiles::setKind(const std::string& path, FileKind kind) {
    nodes_[path] = {.kind = kind, .bytes = {}, .version = ++version_};
}

void ScriptedFiles::remove(const std::string& path) {
    nodes_.erase(path);
}

std::string ScriptedFiles::file(const std::string& path) const {
    const auto found = nodes_.find(path);
    return found == nodes_.end() ? std::string() : found->second.bytes;
}

bool ScriptedFiles::exists(const std::string& path) const {
    return nodes_.contains(path);
}

FileKind ScriptedFiles::Dir(const std::string& path) {
    const auto found = nodes_.find(path);
    return found == nodes_.end() ? FileKind::None : found->second.kind;
}

std::optional<FileStamp> ScriptedFiles::stamp(const std::string& path) {
    if (Dir(path) != FileKind::File) {
        return std::nullopt;
    }
    const Node& node = nodes_.at(path);
    return FileStamp{.identity = 1,
                     .size = node.bytes.size(),
                     .modified = node.version,
                     .changed = node.version};
}

FileResult ScriptedFiles::read(const std::string& path, std::string& bytes) {
    ++reads;
    bytes.clear();
    if (readFailure) {
        return readFailure;
    }
    if (Dir(path) != FileKind::File) {
        return exists(path) ? ErrorNumber::PathFileAccess : ErrorNumber::FileNotFound;
    }
    bytes = nodes_.at(path).bytes;
    return std::nullopt;
}

FileResult ScriptedFiles::replace(const std::string& path,
                                  const std::vector<std::string_view>& pieces) {
    ++replacements;
    if (replaceFailure) {
        return replaceFailure;
    }
    if (exists(path) && Dir(path) != FileKind::File) {
        return ErrorNumber::PathFileAccess;
    }
    std::string bytes;
    for (const std::string_view piece : pieces) {
        bytes += piece;
    }
    setFile(path, std::move(bytes));
    return std::nullopt;
}

FileResult ScriptedFiles::FileCopy(const std::string& source, const std::string& target) {
    std::string bytes;
    if (const FileResult failure = read(source, bytes)) {
        return failure;
    }
    return replace(target, {bytes});
}

FileResult ScriptedFiles::Kill(const std::string& path) {
    if (Dir(path) != FileKind::File) {
        return exists(path) ? ErrorNumber::PathFileAccess : ErrorNumber::FileNotFound;
    }
    nodes_.erase(path);
    return std::nullopt;
}

} // namespace tarvik
