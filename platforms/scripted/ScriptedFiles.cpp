#include "scripted/ScriptedFiles.h"

#include <utility>

namespace tarvik {

void ScriptedFiles::setFile(const std::string& path, std::string bytes) {
    Node& node = nodes_[path] = {};
    node.bytes = std::move(bytes);
    node.version = ++version_;
}

void ScriptedFiles::setKind(const std::string& path, FileKind kind) {
    Node& node = nodes_[path] = {};
    node.kind = kind;
    node.version = ++version_;
}

void ScriptedFiles::setUnreadable(const std::string& path) {
    nodes_.at(path).unreadable = true;
}

void ScriptedFiles::setReadOnly(const std::string& path) {
    nodes_.at(path).readOnly = true;
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

/// Whatever is done meanwhile brings nothing about in its turn.
void ScriptedFiles::tell(const std::string& operation, const std::string& path) {
    if (meanwhile) {
        const auto done = std::exchange(meanwhile, nullptr);
        done(operation, path);
        meanwhile = meanwhile ? meanwhile : done;
    }
}

FileKind ScriptedFiles::Dir(const std::string& path) {
    tell("Dir", path);
    return kindOf(path);
}

FileKind ScriptedFiles::kindOf(const std::string& path) const {
    const auto found = nodes_.find(path);
    return found == nodes_.end() ? FileKind::None : found->second.kind;
}

std::optional<FileStamp> ScriptedFiles::stamp(const std::string& path) {
    tell("stamp", path);
    if (kindOf(path) != FileKind::File) {
        return std::nullopt;
    }
    const Node& node = nodes_.at(path);
    return FileStamp{.identity = 1,
                     .size = node.bytes.size(),
                     .modified = node.version,
                     .changed = node.version};
}

FileResult ScriptedFiles::read(const std::string& path, std::string& bytes) {
    tell("read", path);
    ++reads;
    bytes.clear();
    if (readFailure) {
        return readFailure;
    }
    if (kindOf(path) != FileKind::File) {
        return exists(path) ? ErrorNumber::PathFileAccess : ErrorNumber::FileNotFound;
    }
    const Node& node = nodes_.at(path);
    if (node.unreadable) {
        return ErrorNumber::PermissionDenied;
    }
    bytes = node.bytes;
    return std::nullopt;
}

FileResult ScriptedFiles::replaceIf(const std::string& path,
                                    const std::vector<std::string_view>& pieces,
                                    const LastLook& stillRight) {
    tell("replace", path);
    ++replacements;
    if (replaceFailure && replacementsLeft-- <= 0) {
        return replaceFailure;
    }
    if (exists(path) && kindOf(path) != FileKind::File) {
        return ErrorNumber::PathFileAccess;
    }
    if (exists(path) && nodes_.at(path).readOnly) {
        return ErrorNumber::PermissionDenied;
    }
    std::string bytes;
    for (const std::string_view piece : pieces) {
        bytes += piece;
    }
    if (stillRight) {
        tell("LastLook", path);
        if (!stillRight()) {
            return ErrorNumber::PathFileAccess;
        }
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

FileResult ScriptedFiles::Name(const std::string& path, const std::string& newPath) {
    if (exists(newPath)) {
        return ErrorNumber::FileAlreadyExists;
    }
    const auto found = nodes_.find(path);
    if (found == nodes_.end()) {
        return ErrorNumber::FileNotFound;
    }
    nodes_[newPath] = std::exchange(found->second, {});
    nodes_.erase(path);
    return std::nullopt;
}

FileResult ScriptedFiles::Kill(const std::string& path) {
    if (killFailure) {
        return killFailure;
    }
    if (kindOf(path) != FileKind::File) {
        return exists(path) ? ErrorNumber::PathFileAccess : ErrorNumber::FileNotFound;
    }
    nodes_.erase(path);
    return std::nullopt;
}

} // namespace tarvik
