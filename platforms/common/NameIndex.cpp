#include "common/NameIndex.h"

#include "types/Text.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tarvik {

NameIndex::NameIndex(std::string_view text, std::vector<TextRange> names, const NameHash& hash)
    : hash_(hash), names_(std::move(names)), slots_(std::bit_ceil(2 * names_.size() + 1)) {
    for (std::uint32_t number = 0; number < names_.size(); ++number) {
        const std::string_view name = slice(text, names_[number]);
        const std::uint32_t itsHash = hash_(name);
        Slot& slot = slots_[slotOf(text, name, itsHash)];
        if (slot.number == none) {
            slot = {.hash = itsHash, .number = number};
        } else {
            allDiffer_ = false;
        }
    }
}

/// The slot of the name, or the empty one where it would go. At most half of the slots are taken.
std::size_t NameIndex::slotOf(std::string_view text, std::string_view name,
                              std::uint32_t hash) const {
    const auto isTheOne = [&](const Slot& slot) {
        return slot.hash == hash && equalWithoutCase(name, slice(text, names_[slot.number]));
    };
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].number != none && !isTheOne(slots_[at])) {
        at = (at + 1) & mask;
    }
    return at;
}

/// Names are asked for again, one and another by turns, and in the order and as they stand.
std::uint32_t NameIndex::findNearby(std::string_view text, std::string_view name) const {
    const auto isAt = [&](std::uint32_t number) {
        return number < names_.size() && slice(text, names_[number]) == name;
    };
    for (const std::uint32_t number : recent_) {
        if (isAt(number)) {
            return number;
        }
    }
    for (const std::uint32_t number : recent_) {
        // It may be a second name of its kind, unless there are none.
        if (allDiffer_ && isAt(number + 1)) {
            return number + 1;
        }
    }
    return none;
}

std::uint32_t NameIndex::find(std::string_view text, std::string_view name) const {
    if (names_.empty()) {
        return none;
    }
    std::uint32_t found = findNearby(text, name);
    if (found == none) {
        found = slots_[slotOf(text, name, hash_(name))].number;
    }
    if (found != none && found != recent_.front()) {
        recent_ = {found, recent_.front()};
    }
    return found;
}

std::size_t NameIndex::longestWay() const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t longest = 0;
    for (std::size_t at = 0; at < slots_.size(); ++at) {
        if (slots_[at].number != none) {
            longest = std::max(longest, ((at - slots_[at].hash) & mask) + 1);
        }
    }
    return longest;
}

} // namespace tarvik
