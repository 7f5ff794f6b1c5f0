#include "common/NameIndex.h"

#include "types/Text.h"

namespace tarvik {

namespace {

std::size_t hashWithoutCase(std::string_view text) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char character : text) {
        const bool lower = character >= 'a' && character <= 'z';
        const auto byte = static_cast<unsigned char>(lower ? character - 'a' + 'A' : character);
        hash = (hash ^ byte) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

} // namespace

/// The place of the name, or the empty one where it would go. At most half of the places are taken.
std::size_t NameIndex::placeOf(std::string_view text, std::string_view name) const {
    const std::size_t mask = places_.size() - 1;
    std::size_t place = hashWithoutCase(name) & mask;
    while (places_[place] != 0 &&
           !equalWithoutCase(name, slice(text, names_[places_[place] - 1]))) {
        place = (place + 1) & mask;
    }
    return place;
}

void NameIndex::add(std::string_view text, TextRange name) {
    names_.push_back(name);
    if (names_.size() * 2 > places_.size()) {
        grow(text);
        return;
    }
    std::uint32_t& place = places_[placeOf(text, slice(text, name))];
    if (place == 0) {
        place = static_cast<std::uint32_t>(names_.size());
    }
}

void NameIndex::grow(std::string_view text) {
    constexpr std::size_t fewest = 16;
    const std::size_t wanted = places_.empty() ? fewest : places_.size() * 2;
    places_.assign(wanted, 0);
    for (std::uint32_t number = 1; number <= names_.size(); ++number) {
        std::uint32_t& place = places_[placeOf(text, slice(text, names_[number - 1]))];
        if (place == 0) {
            place = number;
        }
    }
}

std::optional<std::size_t> NameIndex::find(std::string_view text, std::string_view name) const {
    if (places_.empty()) {
        return std::nullopt;
    }
    const std::uint32_t entry = places_[placeOf(text, name)];
    return entry == 0 ? std::nullopt : std::optional<std::size_t>(entry - 1);
}

} // namespace tarvik
