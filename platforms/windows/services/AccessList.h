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

    /// Gives the file this list, where its file system has lists; one that says nothing changes
    /// nothing. False, with the system's last error set, if others might read what they must not.
    bool giveTo(const std::string& path) const;

    /// The list for a file that is being made, so that nobody else may open it before `giveTo`
    /// gives it the list as it is to stay. Empty for one that says nothing.
    std::vector<unsigned char> forMaking() const;

private:
    std::vector<unsigned char> descriptor_; ///< as the system wants it: one block of memory
};

} // namespace tarvik
