#include "common/NameIndex.h"

#include "types/Text.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tarvik {

namespace {

/// Names of more runs than this are found by their hash.
constexpr std::size_t mostRuns = 16;

/// Shorter names come first: those that end in a growing number rise.
bool comesBefore(std::string_view a, std::string_view b) {
    return a.size() != b.size() ? a.size() < b.size() : lessWithoutCase(a, b);
}

} // namespace

NameIndex::NameIndex(std::string_view text, std::vector<TextRange> names, const NameHash& hash)
    : hash_(hash), names_(std::move(names)) {
    findRuns(text);
    if (runs_.size() > mostRuns) {
        fillSlots(text);
    }
}

void NameIndex::findRuns(std::string_view text) {
    for (std::uint32_t number = 0; number < names_.size() && runs_.size() <= mostRuns; ++number) {
        if (number == 0 || !comesBefore(nameOf(text, number - 1), nameOf(text, number))) {
            runs_.push_back({.first = number});
        }
        runs_.back().last = number;
    }
}

void NameIndex::fillSlots(std::string_view text) {
    slots_.resize(std::bit_ceil(2 * names_.size() + 1));
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
    Slot& slot = slots_[slotOf(text, nameOf(text, number), hash)];
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
        return slot.hash == hash && equalWithoutCase(name, nameOf(text, slot.number));
    };
    std::size_t at = hash & mask();
    while (slots_[at].number != none && !isTheOne(slots_[at])) {
        at = (at + 1) & mask();
    }
    return at;
}

/// A run of which nothing comes at or behind the name is passed over by a look at its last one.
std::uint32_t NameIndex::findInRuns(std::string_view text, std::string_view name,
                                    std::uint32_t end) const {
    for (const Run& run : runs_) {
        if (run.first >= end) {
            break;
        }
        if (comesBefore(nameOf(text, run.last), name)) {
            continue;
        }
        const auto found =
            std::lower_bound(names_.begin() + run.first, names_.begin() + run.last, name,
                             [&](const TextRange& range, std::string_view sought) {
                                 return comesBefore(slice(text, range), sought);
                             });
        if (equalWithoutCase(slice(text, *found), name)) {
            return static_cast<std::uint32_t>(found - names_.begin());
        }
    }
    return none;
}

/// No name before it is equal.
bool NameIndex::isFirst(std::string_view text, std::uint32_t number) const {
    if (!slots_.empty()) {
        return allDiffer_;
    }
    const auto own = std::find_if(runs_.begin(), runs_.end(),
                                  [&](const Run& run) { return number <= run.last; });
    return findInRuns(text, nameOf(text, number), own->first) == none;
}

/// Names are asked for again, one and another by turns, and in the order and as they stand.
std::uint32_t NameIndex::findNearby(std::string_view text, std::string_view name) const {
    const auto isAt = [&](std::uint32_t number) {
        return number < names_.size() && nameOf(text, number) == name;
    };
    for (const std::uint32_t number : recent_) {
        if (isAt(number)) {
            return number;
        }
    }
    for (const std::uint32_t number : recent_) {
        if (isAt(number + 1) && isFirst(text, number + 1)) {
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
        found = slots_.empty() ? findInRuns(text, name, none)
                               : slots_[slotOf(text, name, hash_(name))].number;
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
