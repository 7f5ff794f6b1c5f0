#pragma once

#include "types/RunTimeError.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

/// A file that this process alone writes to, in place, for as long as it has it. No operation
/// throws; each gives nothing when it succeeded, else the run-time error number it stands for.
class HeldFile {
public:
    /// Lets the file go; it stays where it is.
    virtual ~HeldFile() = default;

    /// No file of this program's is longer, bytes: ten lines that are always up have less in their
    /// quarter hours.
    static constexpr std::size_t longest = std::size_t{1} << 25U;

    /// Reads the whole file; PathFileAccess for one that is longer.
    virtual std::optional<ErrorNumber> read(std::string& bytes) = 0;
    /// Writes these bytes over those that stand there. The end of the process may leave parts of
    /// it, and a power cut may undo it or leave parts of it until the next flush has succeeded.
    virtual std::optional<ErrorNumber> write(std::size_t offset, std::string_view bytes) = 0;
    /// Returns when everything written is on the disk.
    virtual std::optional<ErrorNumber> flush() = 0;
    /// The file still stands under its name and has no less than so many bytes; also where nobody
    /// can tell.
    virtual bool isInPlace(std::size_t size) = 0;
    /// Deletes the file while it is still held, so that nobody else finds it half gone.
    virtual std::optional<ErrorNumber> remove() = 0;
};

/// What became of the wish to hold a file.
struct Holding {
    enum class Outcome {
        Held,
        Absent,  ///< there is none, and none was to be made
        Busy,    ///< another process holds it
        Refused, ///< a link, a device, a directory, another user's file
        Failed,  ///< no room, no rights
    };

    Outcome outcome = Outcome::Absent;
    std::unique_ptr<HeldFile> file; ///< where it is held
};

} // namespace tarvik
