#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tarvik::faults {

/// What of one folder would survive a power cut: names that were flushed with the folder, and the
/// part of each file that was flushed with the file. The worst the rules for files allow: of the
/// changes of names since the last flush any may have reached the disk and any not.
class Disk {
public:
    /// Takes what lies in the folder as safe. `shadow` is an empty folder beside it, on the same
    /// disk. Every file seen is kept open: what is deleted can come back.
    void watch(const std::string& folder, const std::string& shadow);

    void made(const std::string& name);
    void renamed(const std::string& from, const std::string& to);
    void deleted(const std::string& name);
    void madeFolder();
    void shortened(int file);
    /// Bytes that stand there are about to be written over.
    void overwritten(int file);
    void flushed(int file);
    void flushedFolder();
    void flushedParent() { folderIsSafe_ = true; }

    /// What of the data that was not flushed a power cut takes: nothing, everything, of what was
    /// written over other bytes every second sector, or each block of 4 KiB that a byte of was
    /// written over, with all that stood beside it.
    enum class Loss { None, Unflushed, Sectors, Blocks };

    /// Leaves the folder as the power cut does: bit n of `kept` tells whether change n of those not
    /// flushed survives. False when there are not that many changes, or no sectors to lose: nothing
    /// happened.
    bool cut(unsigned kept, Loss loss);

private:
    struct Change {
        enum Kind { Made, Renamed, Deleted } kind;
        std::string name;
        std::string newName;
        ino_t file;
    };
    using Names = std::map<std::string, ino_t>;

    ino_t keep(const std::string& name);
    std::string shadowOf(ino_t file) const;
    std::string contentOf(ino_t file) const;
    void moveAllAside() const;
    void bringBack(ino_t file, const std::string& path, Loss loss) const;
    static void apply(const Change& change, Names& names);

    std::string folder_;
    std::string shadow_;
    Names safeNames_;
    std::map<ino_t, off_t> safeLengths_;
    std::map<ino_t, std::string> overwritten_; ///< what stood there when it was last flushed
    std::map<ino_t, int> open_;                ///< never closed: the process ends
    std::vector<Change> changes_;
    bool folderIsSafe_ = true;
};

} // namespace tarvik::faults
