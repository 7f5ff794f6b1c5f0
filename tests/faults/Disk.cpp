#include "faults/Disk.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik::faults {

namespace {

std::vector<std::string> namesIn(const std::string& path) {
    std::vector<std::string> names;
    DIR* const folder = opendir(path.c_str());
    if (folder == nullptr) {
        return names;
    }
    while (const dirent* const entry = readdir(folder)) {
        if (entry->d_type == DT_REG) {
            names.emplace_back(entry->d_name);
        }
    }
    closedir(folder);
    return names;
}

struct stat infoOf(int file) {
    struct stat info {};
    fstat(file, &info);
    return info;
}

} // namespace

void Disk::watch(const std::string& folder, const std::string& shadow) {
    folder_ = folder;
    shadow_ = shadow;
    for (const std::string& name : namesIn(folder)) {
        safeNames_[name] = keep(name);
        struct stat info {};
        stat((folder_ + "/" + name).c_str(), &info);
        safeLengths_[info.st_ino] = info.st_size;
    }
}

std::string Disk::shadowOf(ino_t file) const {
    return shadow_ + "/" + std::to_string(file);
}

ino_t Disk::keep(const std::string& name) {
    const std::string path = folder_ + "/" + name;
    struct stat info {};
    if (stat(path.c_str(), &info) == 0) {
        // It may be there already.
        static_cast<void>(link(path.c_str(), shadowOf(info.st_ino).c_str()) == 0);
    }
    return info.st_ino;
}

void Disk::made(const std::string& name) {
    const ino_t file = keep(name);
    safeLengths_.emplace(file, 0);
    changes_.push_back({Change::Made, name, {}, file});
}

void Disk::renamed(const std::string& from, const std::string& to) {
    changes_.push_back({Change::Renamed, from, to, keep(to)});
}

void Disk::deleted(const std::string& name) {
    changes_.push_back({Change::Deleted, name, {}, 0});
}

void Disk::madeFolder() {
    folderIsSafe_ = false;
}

void Disk::shortened(int file) {
    const struct stat info = infoOf(file);
    off_t& safe = safeLengths_[info.st_ino];
    safe = std::min(safe, info.st_size);
}

void Disk::flushed(int file) {
    const struct stat info = infoOf(file);
    safeLengths_[info.st_ino] = info.st_size;
}

void Disk::flushedFolder() {
    for (const Change& change : changes_) {
        apply(change, safeNames_);
    }
    changes_.clear();
}

void Disk::apply(const Change& change, Names& names) {
    names.erase(change.name);
    if (change.kind == Change::Made) {
        names[change.name] = change.file;
    } else if (change.kind == Change::Renamed) {
        names[change.newName] = change.file;
    }
}

void Disk::empty() const {
    for (const std::string& name : namesIn(folder_)) {
        unlink((folder_ + "/" + name).c_str());
    }
}

bool Disk::cut(unsigned kept, bool onlyFlushed) {
    // The making of the folder is one more change, which all others need.
    const std::size_t count = changes_.size() + (folderIsSafe_ ? 0 : 1);
    if (kept >> count != 0) {
        return false;
    }
    empty();
    if (!folderIsSafe_ && (kept >> changes_.size()) == 0) {
        rmdir(folder_.c_str());
        return kept == 0;
    }
    Names names = safeNames_;
    for (std::size_t i = 0; i < changes_.size(); ++i) {
        if ((kept >> i & 1U) != 0) {
            apply(changes_[i], names);
        }
    }
    for (const auto& [name, file] : names) {
        const std::string shadow = shadowOf(file);
        if (onlyFlushed) {
            static_cast<void>(truncate(shadow.c_str(), safeLengths_[file]) == 0);
        }
        static_cast<void>(link(shadow.c_str(), (folder_ + "/" + name).c_str()) == 0);
    }
    return true;
}

} // namespace tarvik::faults
