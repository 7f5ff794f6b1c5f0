#pragma once

#include "common/NameIndex.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// Three bytes that some editors put before a UTF-8 text.
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// What follows a `[name]` line up to the next one, as offsets.
struct ProfileSection {
    std::uint32_t bodyBegin = 0;
    std::uint32_t bodyEnd = 0;
};

/// A `key=value` line. The value is everything behind the first `=`, not yet stripped. A line
/// without `=` is a key that has no value; what stands behind its name are blanks.
struct ProfileKey {
    std::string_view name;
    std::string_view value;
    bool hasValue = true;
};

/// The text of a private-profile file with an index of its sections and, for long sections, of
/// their keys. Nothing is copied out of the text. Lines end with CR LF, LF or CR; a section's name
/// reaches to the last `]` of its line; a UTF-8 mark at the start is skipped.
class ProfileText {
public:
    /// Longest text that can be indexed, bytes.
    static constexpr std::size_t longest = 0xFFFFFFF0;

    explicit ProfileText(std::string bytes);
    ProfileText(const ProfileText&) = delete;
    ProfileText& operator=(const ProfileText&) = delete;

    std::string_view bytes() const { return bytes_; }

    /// The first section of that name, without regard to case; null when there is none.
    const ProfileSection* section(std::string_view name) const;

    /// The first key of that name in the section, without regard to case, as views of `bytes()`.
    std::optional<ProfileKey> key(const ProfileSection& section, std::string_view name) const;

    /// Where a view of `bytes()` begins.
    std::uint32_t offsetOf(std::string_view part) const {
        return static_cast<std::uint32_t>(part.data() - bytes_.data());
    }

    /// Where a new key goes: after the last line of the section that is not blank.
    std::uint32_t endOfKeys(const ProfileSection& section) const;

    /// The line end right before an offset; the first one of the text if there is none; empty where
    /// the text has none at all.
    std::string_view lineEndBefore(std::uint32_t offset) const;

private:
    /// A line without its line end, and where the next one begins.
    struct Line {
        std::string_view text;
        std::uint32_t next = 0;
    };

    Line lineAt(std::uint32_t offset, std::uint32_t limit) const;
    std::uint32_t size() const { return static_cast<std::uint32_t>(bytes_.size()); }
    TextRange rangeOf(std::string_view part) const;
    void findSections();
    void beginSection(std::uint32_t header, std::uint32_t body);
    std::optional<ProfileKey> indexedKey(const ProfileSection& section,
                                         std::string_view name) const;
    const NameIndex& keyIndex(const ProfileSection& section) const;
    /// Hands over each key of the section, in order.
    template <class Take>
    void forEachKey(const ProfileSection& section, Take&& take) const;
    const std::vector<ProfileKey>& keysOf(const ProfileSection& section) const;

    std::string bytes_;
    std::vector<ProfileSection> sections_;
    NameIndex names_; ///< of the sections
    /// By the section's body. A hash of these could be made to collide: whoever writes the file
    /// chooses where its sections begin.
    mutable std::map<std::uint32_t, NameIndex> keyIndexes_;
    mutable std::optional<ProfileKey> lastKey_; ///< found last by such an index
    mutable std::uint32_t lastBody_ = 0;        ///< of that key's section
    mutable std::vector<ProfileKey> lastKeys_;  ///< of the short section that was asked last
    mutable std::uint32_t lastKeysBody_ = NameIndex::none; ///< where it begins
};

/// The text without blanks and tabs around it.
std::string_view trimBlanks(std::string_view text);

/// The line end that the text ends with; empty for none.
std::string_view trailingLineEnd(std::string_view text);

/// A value as readers see it: without blanks around it and without one pair of quotes.
std::string_view strippedValue(std::string_view text);

/// The key that a line holds; nothing for a comment or a line without a name.
std::optional<ProfileKey> keyOfLine(std::string_view line);

} // namespace tarvik
