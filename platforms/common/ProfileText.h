#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvik {

/// A line of a profile's text as offsets; `end` is before its line end, `next` after it.
struct ProfileLine {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint32_t next = 0;
};

/// A `[name]` line and what follows it up to the next one, as offsets.
struct ProfileSection {
    std::uint32_t nameBegin = 0;
    std::uint32_t nameEnd = 0;
    std::uint32_t bodyBegin = 0;
    std::uint32_t bodyEnd = 0;
};

/// A `key=value` line, as offsets; the value is not yet stripped.
struct ProfileKey {
    std::uint32_t keyBegin = 0;
    std::uint32_t keyEnd = 0;
    std::uint32_t valueBegin = 0;
    std::uint32_t valueEnd = 0;
};

/// The text of a private-profile file with an index of its sections and, for long sections, of
/// their keys. Nothing is copied out of the text. Lines end with CR LF, LF or CR.
class ProfileText {
public:
    /// Longest text that can be indexed, bytes.
    static constexpr std::size_t longest = 0xFFFFFFF0;

    explicit ProfileText(std::string bytes);

    std::string_view bytes() const { return bytes_; }

    /// The first section of that name, without regard to case; null when there is none.
    const ProfileSection* section(std::string_view name) const;

    /// The first key of that name in the section, without regard to case.
    std::optional<ProfileKey> key(const ProfileSection& section, std::string_view name) const;

    std::string_view value(const ProfileKey& key) const;

    /// Where a new key goes: after the last line of the section that is not blank.
    std::uint32_t endOfKeys(const ProfileSection& section) const;

    /// The line end right before an offset; the first one of the text if there is none; empty where
    /// the text has none at all.
    std::string_view lineEndBefore(std::uint32_t offset) const;

    /// The text begins with the mark of a form that is not one byte a character.
    bool isWide() const;

private:
    /// Offsets found by the hash of a name: open addressing, 0 is an empty place.
    struct Index {
        std::vector<std::uint32_t> places;
    };

    ProfileLine lineAt(std::uint32_t offset, std::uint32_t limit) const;
    std::optional<ProfileKey> keyOf(const ProfileLine& line) const;
    std::string_view slice(std::uint32_t begin, std::uint32_t end) const;
    void findSections();
    void indexSections();
    const Index& keyIndex(const ProfileSection& section) const;
    void indexKeys(const ProfileSection& section, Index& index) const;

    std::string bytes_;
    std::vector<ProfileSection> sections_;
    Index sectionIndex_;
    mutable std::unordered_map<std::uint32_t, Index> keyIndexes_; ///< by the section's body
};

/// The text without blanks and tabs around it.
std::string_view trimBlanks(std::string_view text);

/// A value as readers see it: without blanks around it and without one pair of quotes.
std::string_view strippedValue(std::string_view text);

} // namespace tarvik
