#include "faults/Session.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

namespace tarvik::faults {

namespace fs = std::filesystem;

Folder folderAt(const std::string& path, bool* there) {
    Folder files;
    std::error_code ignored;
    if (there != nullptr) {
        *there = fs::is_directory(path, ignored);
    }
    for (const auto& entry : fs::directory_iterator(path, ignored)) {
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().filename().string()] =
            std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return files;
}

void makeFolder(const std::string& path, const Folder& files) {
    std::error_code ignored;
    fs::remove_all(path, ignored);
    fs::create_directories(path);
    for (const auto& [name, bytes] : files) {
        std::ofstream(fs::path(path) / name, std::ios::binary) << bytes;
    }
}

bool isTemporary(const std::string& name) {
    return (name.starts_with(".tarvik-") || name.starts_with("~tarvik")) && name.ends_with(".tmp");
}

/// A file that is held, and tells of what is done with it.
class TellingFiles::Held : public HeldFile {
public:
    Held(TellingFiles& files, std::unique_ptr<HeldFile> real)
        : files_(files), real_(std::move(real)) {}

    FileResult read(std::string& bytes) override { return real_->read(bytes); }
    FileResult write(std::size_t offset, std::string_view bytes) override {
        files_.heldChanges("write", bytes);
        const FileResult result = real_->write(offset, bytes);
        files_.heldChanges(result ? "write failed" : "written", bytes);
        return result;
    }
    FileResult flush() override {
        const FileResult result = real_->flush();
        files_.heldChanges(result ? "flush failed" : "flushed", {});
        return result;
    }
    bool isInPlace(std::size_t size) override { return real_->isInPlace(size); }
    FileResult remove() override { return real_->remove(); }

private:
    TellingFiles& files_;
    std::unique_ptr<HeldFile> real_;
};

std::string TellingFiles::joined(const std::vector<std::string_view>& pieces) {
    std::string all;
    for (const std::string_view piece : pieces) {
        all += piece;
    }
    return all;
}

Holding TellingFiles::telling(const std::string& path, Holding held) {
    if (path.ends_with(".ledger")) {
        return held;
    }
    if (held.outcome != Holding::Outcome::Held && held.outcome != Holding::Outcome::Absent) {
        heldChanges("hold failed", {});
    }
    if (held.file) {
        held.file = std::make_unique<Held>(*this, std::move(held.file));
    }
    return held;
}

Session::Session(Files& real, const std::string& folder, char separator)
    : files(real), platform_(scripted.withFiles(profile_, files)) {
    scripted.program.folderPath = folder;
    scripted.program.separator = separator;
    scripted.connections.entries = {{.name = "Harbour"}, {.name = "Ridge"}};
    scripted.desktop.answerAny = [this](const MsgBoxRequest& request) {
        boxes.push_back(request.text);
        const bool asks = request.buttons == MsgBoxButtons::YesNo ||
                          request.buttons == MsgBoxButtons::YesNoCancel;
        return asks ? MsgBoxAnswer::Yes : MsgBoxAnswer::Ok;
    };
}

} // namespace tarvik::faults
