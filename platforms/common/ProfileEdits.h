#pragma once

#include "common/ProfileText.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik {

/// A new text, made of parts of the old one and of new parts, in order. The views live as long as
/// both the old text and this object.
class ProfilePieces {
public:
    void keep(std::string_view part);
    void add(std::string part);
    /// The line end that what is there so far ends with; empty for none.
    std::string_view lineEnd() const;
    /// Ends the line that what is there so far leaves open, if there is more than a text's mark.
    /// The line end is kept as a view.
    void endLine(std::string_view lineEnd);
    const std::vector<std::string_view>& parts() const { return parts_; }

private:
    std::vector<std::string_view> parts_;
    std::deque<std::string> added_;
};

/// Writes to a profile that are not in its file yet.
class ProfileEdits {
public:
    bool empty() const { return sections_.empty(); }
    void clear() { sections_.clear(); }

    void writeKey(std::string_view section, std::string_view key, std::string_view value);
    /// Replaces a whole section by these lines.
    void writeSection(std::string_view section, std::vector<std::string> lines);

    /// What these writes make of the key: nothing at all (look into the text), or its value if it
    /// has one.
    std::optional<std::optional<std::string_view>> value(std::string_view section,
                                                         std::string_view key) const;

    /// The same writes with every text converted.
    ProfileEdits converted(std::string (*convert)(std::string_view)) const;

    /// The text with all writes applied. `lineEnd` is for a text that has none.
    ProfilePieces applied(const ProfileText& text, std::string_view lineEnd) const;

private:
    struct Section {
        std::string name;
        std::optional<std::vector<std::string>> lines; ///< the whole section, when it is replaced
        std::vector<std::pair<std::string, std::string>> keys; ///< otherwise
    };

    static void writeLine(std::vector<std::string>& lines, std::string_view key,
                          std::string_view value);
    Section& touch(std::string_view name);
    const Section* find(std::string_view name) const;

    std::vector<Section> sections_;
};

} // namespace tarvik
