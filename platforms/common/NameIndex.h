#pragma once

#include "types/NameHash.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvik {

/// A part of a text, as offsets.
struct TextRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

/// The part of the text.
constexpr std::string_view slice(std::string_view text, TextRange range) {
    return text.substr(range.begin, range.end - range.begin);
}

/// Finds names that stand in one text, without regard to the case of ASCII letters. It holds
/// offsets only; the text is handed in with each call and must be the same.
///
/// Names that rise, as those of a log's records do, need no more than the order they are in; others
/// are found by a hash that nobody can foresee.
class NameIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    NameIndex() = default;
    /// Of equal names the first is found.
    NameIndex(std::string_view text, std::vector<TextRange> names,
              const NameHash& hash = NameHash::ofThisRun());

    /// Which of the names it is, counted from 0, or `none`.
    std::uint32_t find(std::string_view text, std::string_view name) const;

    TextRange operator[](std::uint32_t number) const { return names_[number]; }

    /// How many slots are looked at for the name that is farthest from its own; 0 where names are
    /// not found by slots.
    std::size_t longestWay() const;

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = none;
    };

    /// Names of which each comes before the next.
    struct Run {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };

    std::string_view nameOf(std::string_view text, std::uint32_t number) const {
        return slice(text, names_[number]);
    }
    void findRuns(std::string_view text);
    std::uint32_t findInRuns(std::string_view text, std::string_view name, std::uint32_t end) const;
    bool isFirst(std::string_view text, std::uint32_t number) const;

    void fillSlots(std::string_view text);
    std::size_t mask() const { return slots_.size() - 1; } ///< their number is a power of two
    void insert(std::string_view text, std::uint32_t number, std::uint32_t hash);
    std::size_t slotOf(std::string_view text, std::string_view name, std::uint32_t hash) const;
    std::uint32_t findNearby(std::string_view text, std::string_view name) const;

    NameHash hash_ = NameHash::ofThisRun();
    std::vector<TextRange> names_;
    std::vector<Run> runs_;
    /// A name is in the first slot from its hash on that was empty. The hash stands there too, so
    /// that few names need to be looked at.
    std::vector<Slot> slots_;
    bool allDiffer_ = true;                         ///< by the slots
    mutable std::array<std::uint32_t, 2> recent_{}; ///< found last, the latest first
};

} // namespace tarvik
