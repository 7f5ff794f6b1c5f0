#pragma once

#include "linux/services/FileDescriptor.h"
#include "ports/HeldFile.h"

#include <string>

namespace tarvik {

/// A file that is locked for this process. The lock ends with the process, however that ends.
class LinuxHeldFile : public HeldFile {
public:
    LinuxHeldFile(FileDescriptor file, std::string path)
        : file_(std::move(file)), path_(std::move(path)) {}

    std::optional<ErrorNumber> read(std::string& bytes) override;
    /// FileNotFound once the file has no name any more.
    std::optional<ErrorNumber> write(std::size_t offset, std::string_view bytes) override;
    std::optional<ErrorNumber> flush() override;
    bool isInPlace(std::size_t size) override;
    std::optional<ErrorNumber> remove() override;

private:
    FileDescriptor file_;
    std::string path_;
};

/// Takes an ordinary file of the user's own that has one name: neither a link nor what a link leads
/// to, nor anything that is not a file.
Holding holdFile(const std::string& path);

/// Makes one of `size` zeros, which takes over who may read and write the file `like`, where that
/// is there. Failed, with nothing left behind, where it cannot be made.
Holding makeHeldFile(const std::string& path, std::size_t size, const std::string& like);

} // namespace tarvik
