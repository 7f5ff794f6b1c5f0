#pragma once

#include "ports/HeldFile.h"
#include "windows/services/FileHandle.h"

#include <string>
#include <utility>

namespace tarvik {

/// A file that others may read but not write, rename or delete while this process has it.
class WindowsHeldFile : public HeldFile {
public:
    explicit WindowsHeldFile(FileHandle file) : file_(std::move(file)) {}

    std::optional<ErrorNumber> read(std::string& bytes) override;
    std::optional<ErrorNumber> write(std::size_t offset, std::string_view bytes) override;
    std::optional<ErrorNumber> flush() override;
    /// Nobody else can take its name away.
    bool isInPlace(std::size_t size) override;
    std::optional<ErrorNumber> remove() override;

private:
    FileHandle file_;
};

/// How long a run waits in all for what other programs have open: one second, whatever it asks for.
/// The user waits with it.
class Patience {
public:
    /// Pauses for a moment; false, at once, when no patience is left.
    bool pause();

private:
    int pausesLeft_ = 20;
};

/// Takes an ordinary file of the user's own that has one name: neither a link nor anything that is
/// not a file. Waits for another program that has it open as long as there is patience.
Holding holdFile(const std::string& path, Patience& patience);

/// Makes one of `size` zeros with the access list of the file `like`, where that is there. Failed,
/// with nothing left behind, where it cannot be made.
Holding makeHeldFile(const std::string& path, std::size_t size, const std::string& like);

} // namespace tarvik
