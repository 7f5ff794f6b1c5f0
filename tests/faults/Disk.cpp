#include "faults/Disk.h"

#include <algorithm>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
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
    if (stat(path.c_str(), &info) == 0 && !open_.contains(info.st_ino)) {
        open_[info.st_ino] = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    }
    return info.st_ino;
}

std::string Disk::contentOf(ino_t file) const {
    std::string bytes;
    const auto found = open_.find(file);
    if (found != open_.end()) {
        bytes.resize(static_cast<std::size_t>(infoOf(found->second).st_size));
        const ssize_t count = pread(found->second, bytes.data(), bytes.size(), 0);
        bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return bytes;
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

void Disk::overwritten(int file) {
    const ino_t number = infoOf(file).st_ino;
    if (!overwritten_.contains(number)) {
        overwritten_[number] = contentOf(number);
    }
}

void Disk::flushed(int file) {
    const struct stat info = infoOf(file);
    safeLengths_[info.st_ino] = info.st_size;
    overwritten_.erase(info.st_ino);
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

void Disk::moveAllAside() const {
    for (const std::string& name : namesIn(folder_)) {
        const std::string path = folder_ + "/" + name;
        struct stat info {};
        stat(path.c_str(), &info);
        std::rename(path.c_str(), shadowOf(info.st_ino).c_str());
    }
}

/// The file itself where a name had it to the last, else another one of its content.
void Disk::bringBack(ino_t file, const std::string& path, Loss loss) const {
    const std::string bytes = contentOf(file);
    if (std::rename(shadowOf(file).c_str(), path.c_str()) != 0) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    if (loss == Loss::Unflushed) {
        const auto safe = safeLengths_.find(file);
        const off_t length = safe == safeLengths_.end() ? 0 : safe->second;
        static_cast<void>(truncate(path.c_str(), length) == 0);
    }
    const auto before = overwritten_.find(file);
    if (loss == Loss::None || before == overwritten_.end()) {
        return;
    }
    constexpr std::size_t sector = 512;
    constexpr std::size_t block = 4096;
    std::string left = before->second;
    for (std::size_t i = 0; loss == Loss::Sectors && i < left.size(); i += 2 * sector) {
        left.replace(i, sector, bytes, i, sector);
    }
    for (std::size_t i = 0; loss == Loss::Blocks && i < left.size(); i += block) {
        const std::size_t size = std::min(block, left.size() - i);
        if (left.compare(i, size, bytes, i, size) != 0) {
            left.replace(i, size, size, '\0');
        }
    }
    std::ofstream(path, std::ios::binary) << left;
}

bool Disk::cut(unsigned kept, Loss loss) {
    // The making of the folder is one more change, which all others need.
    const std::size_t count = changes_.size() + (folderIsSafe_ ? 0 : 1);
    if (kept >> count != 0 || (loss >= Loss::Sectors && overwritten_.empty())) {
        return false;
    }
    moveAllAside();
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
        bringBack(file, folder_ + "/" + name, loss);
    }
    return true;
}

} // namespace tarvik::faults
