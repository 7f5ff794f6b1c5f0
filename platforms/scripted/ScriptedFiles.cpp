#include "scripted/ScriptedFiles.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tarvik {

namespace {

std::string folderOf(const std::string& path) {
    const std::size_t end = path.find_last_of("\\/");
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

} // namespace

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

void ScriptedFiles::setPrivate(const std::string& path) {
    nodes_.at(path).isPrivate = true;
}

void ScriptedFiles::setTwoNames(const std::string& path) {
    nodes_.at(path).hasTwoNames = true;
}

bool ScriptedFiles::isPrivate(const std::string& path) const {
    const auto found = nodes_.find(path);
    return found != nodes_.end() && found->second.isPrivate;
}

void ScriptedFiles::beginWriting(const std::string& path) {
    setFile(path, "");
    nodes_.at(path).isNew = true;
    nodes_.at(path).isWritten = true;
}

void ScriptedFiles::breakOff(const std::string& path) {
    nodes_.at(path).isWritten = false;
}

std::vector<std::string> ScriptedFiles::namesIn(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& [path, node] : nodes_) {
        if (folderOf(path) == folder) {
            names.push_back(path.substr(folder.size() + 1));
        }
    }
    return names;
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
        return absence(path);
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
    std::string bytes;
    for (const std::string_view piece : pieces) {
        bytes += piece;
    }
    const bool keepsPrivate =
        exists(path) ? isPrivate(path) : path == deleted_ && deletedWasPrivate_;
    if (const FileResult why = whyNotReplaced(path)) {
        return why;
    }
    sweepUp(folderOf(path));
    if (!isStillRight(path, stillRight)) {
        return ErrorNumber::PathFileAccess;
    }
    setFile(path, std::move(bytes));
    nodes_.at(path).isPrivate = keepsPrivate;
    return lateFailure;
}

/// Nothing when the file can be replaced, in a folder that is there by then.
FileResult ScriptedFiles::whyNotReplaced(const std::string& path) {
    if (!hasFolder(folderOf(path))) {
        return ErrorNumber::PathNotFound;
    }
    if (exists(path) && kindOf(path) != FileKind::File) {
        return ErrorNumber::PathFileAccess;
    }
    return exists(path) && nodes_.at(path).readOnly ? FileResult(ErrorNumber::PermissionDenied)
                                                    : std::nullopt;
}

bool ScriptedFiles::hasFolder(const std::string& folder) {
    if (folder == home) {
        missingFolders.erase(home);
    }
    return !isMissing(folder);
}

/// Looks while the new file lies beside the old one.
bool ScriptedFiles::isStillRight(const std::string& path, const LastLook& stillRight) {
    if (!stillRight) {
        return true;
    }
    const std::string beside = path + ".new";
    beginWriting(beside);
    tell("LastLook", path);
    const bool right = stillRight();
    remove(beside);
    return right;
}

/// What a kill left of earlier replacements.
void ScriptedFiles::sweepUp(const std::string& folder) {
    std::erase_if(nodes_, [&](const auto& entry) {
        return entry.second.isNew && !entry.second.isWritten && folderOf(entry.first) == folder;
    });
}

/// Why there is no ordinary file of that name.
ErrorNumber ScriptedFiles::absence(const std::string& path) const {
    return exists(path)                ? ErrorNumber::PathFileAccess
           : isMissing(folderOf(path)) ? ErrorNumber::PathNotFound
                                       : ErrorNumber::FileNotFound;
}

FileResult ScriptedFiles::FileCopy(const std::string& source, const std::string& target) {
    std::string bytes;
    if (const FileResult failure = read(source, bytes)) {
        return failure;
    }
    const bool wasPrivate = isPrivate(source);
    const FileResult failure = replace(target, {bytes});
    if (!failure) {
        nodes_.at(target).isPrivate = wasPrivate;
    }
    return failure;
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
    tell("Kill", path);
    if (killFailure) {
        return killFailure;
    }
    if (kindOf(path) != FileKind::File) {
        return absence(path);
    }
    deleted_ = path;
    deletedWasPrivate_ = isPrivate(path);
    nodes_.erase(path);
    return std::nullopt;
}

int ScriptedFiles::held() const {
    return static_cast<int>(std::count_if(nodes_.begin(), nodes_.end(),
                                          [](const auto& each) { return each.second.held; }));
}

/// A file of the map, for as long as nobody takes it away from under its holder.
class ScriptedFiles::Held : public HeldFile {
public:
    Held(ScriptedFiles& files, std::string path) : files_(files), path_(std::move(path)) {
        files_.nodes_.at(path_).held = true;
    }
    ~Held() override {
        if (Node* const mine = node()) {
            mine->held = false;
        }
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    FileResult read(std::string& bytes) override {
        Node* const mine = node();
        if (mine == nullptr || mine->unreadable || mine->bytes.size() > longest) {
            return ErrorNumber::PathFileAccess;
        }
        bytes = mine->bytes;
        return std::nullopt;
    }
    FileResult write(std::size_t offset, std::string_view bytes) override {
        files_.tell("write", path_);
        Node* const mine = node();
        if (mine == nullptr || files_.holdFailure) {
            return files_.holdFailure.value_or(ErrorNumber::FileNotFound);
        }
        ++files_.writesInPlace;
        mine->bytes.resize(std::max(mine->bytes.size(), offset + bytes.size()));
        mine->bytes.replace(offset, bytes.size(), bytes);
        mine->unflushed = true;
        mine->takenForClean = false;
        mine->version = ++files_.version_;
        files_.tell("written", path_);
        return std::nullopt;
    }
    FileResult flush() override {
        files_.tell("flush", path_);
        Node* const mine = node();
        if (mine == nullptr || files_.holdFailure) {
            return files_.holdFailure.value_or(ErrorNumber::PathFileAccess);
        }
        if (files_.flushFailure) {
            mine->takenForClean = true;
            return files_.flushFailure;
        }
        ++files_.flushes;
        if (!mine->takenForClean) {
            mine->flushed = mine->bytes;
            mine->unflushed = false;
        }
        files_.tell("flushed", path_);
        return std::nullopt;
    }
    bool isInPlace(std::size_t size) override {
        Node* const mine = node();
        return mine != nullptr && mine->bytes.size() >= size;
    }
    FileResult remove() override {
        files_.tell("remove", path_);
        if (node() == nullptr || files_.killFailure) {
            return files_.killFailure.value_or(ErrorNumber::FileNotFound);
        }
        files_.nodes_.erase(path_);
        files_.tell("removed", path_);
        return std::nullopt;
    }

private:
    Node* node() {
        const auto found = files_.nodes_.find(path_);
        return found == files_.nodes_.end() || !found->second.held ? nullptr : &found->second;
    }

    ScriptedFiles& files_;
    std::string path_;
};

Holding ScriptedFiles::hold(const std::string& path) {
    using Outcome = Holding::Outcome;
    tell("hold", path);
    if (!exists(path)) {
        return {};
    }
    Node& node = nodes_.at(path);
    if (node.kind != FileKind::File || node.hasTwoNames) {
        return {.outcome = Outcome::Refused, .file = nullptr};
    }
    if (node.held || heldElsewhere) {
        return {.outcome = Outcome::Busy, .file = nullptr};
    }
    if (node.readOnly || holdFailure) {
        return {.outcome = Outcome::Failed, .file = nullptr};
    }
    node.flushed = node.unflushed ? node.flushed : node.bytes;
    return {.outcome = Outcome::Held, .file = std::make_unique<Held>(*this, path)};
}

Holding ScriptedFiles::holdOrMake(const std::string& path, std::size_t size,
                                  const std::string& like) {
    Holding found = hold(path);
    if (found.outcome != Holding::Outcome::Absent) {
        return found;
    }
    if (holdFailure || !hasFolder(folderOf(path))) {
        return {.outcome = Holding::Outcome::Failed, .file = nullptr};
    }
    setFile(path, std::string(size, '\0'));
    nodes_.at(path).isPrivate = isPrivate(like);
    return hold(path);
}

void ScriptedFiles::goBackTo(const ScriptedFiles& then) {
    nodes_ = then.nodes_;
    deleted_ = then.deleted_;
    deletedWasPrivate_ = then.deletedWasPrivate_;
}

void ScriptedFiles::letAllGo() {
    for (auto& [path, node] : nodes_) {
        node.held = false;
    }
}

void ScriptedFiles::cutPower(std::size_t kept) {
    for (auto& [path, node] : nodes_) {
        if (node.unflushed) {
            node.flushed.resize(node.bytes.size());
            node.bytes = node.bytes.substr(0, kept) + node.flushed.substr(kept);
            node.unflushed = false;
        }
    }
}

} // namespace tarvik
