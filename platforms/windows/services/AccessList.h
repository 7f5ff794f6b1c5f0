#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// Who may do what with a file, as the system keeps it: its own entries and those that it has from
/// its folder.
class AccessList {
public:
    /// A list that says nothing.
    AccessList() = default;

    /// The file's list; one that says nothing where there is no file or it cannot be asked.
    static AccessList of(const std::string& path);

    /// Gives the file this list, as far as the file system has lists and the user may; a list that
    /// says nothing changes nothing.
    void giveTo(const std::string& path) const;

private:
    std::vector<unsigned char> descriptor_; ///< as the system wants it: one block of memory
};

} // namespace tarvik
