#include "common/NameIndex.h"

#include "types/Text.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tarvik {

NameIndex::NameIndex(std::string_view text, std::vector<TextRange> names, const NameHash& hash)
    : hash_(hash), names_(std::move(names)), slots_(std::bit_ceil(2 * names_.size() + 1)) {
    // The slots of a long index lie all over the memory: some are asked for at once, and come while
    // the next names are worked on.
    constexpr std::size_t atOnce = 32;
    std::array<std::uint32_t, atOnce> hashes{};
    for (std::size_t first = 0; first < names_.size(); first += atOnce) {
        const std::size_t count = std::min(atOnce, names_.size() - first);
        for (std::size_t i = 0; i < count; ++i) {
            hashes[i] = hash_(slice(text, names_[first + i]));
            __builtin_prefetch(&slots_[hashes[i] & mask()], 1);
        }
        for (std::size_t i = 0; i < count; ++i) {
            insert(text, static_cast<std::uint32_t>(first + i), hashes[i]);
        }
    }
}

void NameIndex::insert(std::string_view text, std::uint32_t number, std::uint32_t hash) {
    Slot& slot = slots_[slotOf(text, slice(text, names_[number]), hash)];
    if (slot.number == none) {
        slot = {.hash = hash, .number = number};
    } else {
        allDiffer_ = false;
    }
}

/// The slot of the name, or the empty one where it would go. At most half of the slots are taken.
std::size_t NameIndex::slotOf(std::string_view text, std::string_view name,
                              std::uint32_t hash) const {
    const auto isTheOne = [&](const Slot& slot) {
        return slot.hash == hash && equalWithoutCase(name, slice(text, names_[slot.number]));
    };
    std::size_t at = hash & mask();
    while (slots_[at].number != none && !isTheOne(slots_[at])) {
        at = (at + 1) & mask();
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
    std::size_t longest = 0;
    for (std::size_t at = 0; at < slots_.size(); ++at) {
        if (slots_[at].number != none) {
            longest = std::max(longest, ((at - slots_[at].hash) & mask()) + 1);
        }
    }
    return longest;
}

} // namespace tarvik
