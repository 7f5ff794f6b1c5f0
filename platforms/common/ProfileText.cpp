#include "common/ProfileText.h"

#include "types/Text.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tarvik {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// A section whose body is shorter than this is searched line by line.
constexpr std::uint32_t shortBody = 2048;

constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

constexpr bool isLineEnd(char character) {
    return character == '\n' || character == '\r';
}

std::size_t hashWithoutCase(std::string_view text) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char character : text) {
        const bool lower = character >= 'a' && character <= 'z';
        const auto byte = static_cast<unsigned char>(lower ? character - 'a' + 'A' : character);
        hash = (hash ^ byte) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

/// Room for that many entries with at least as many empty places.
std::size_t placesFor(std::size_t entries) {
    return std::bit_ceil(entries * 2 + 2);
}

/// Walks the places of a hash until `matches` is true for an entry or a place is empty. Returns the
/// place.
template <class Matches>
std::uint32_t& findPlace(std::vector<std::uint32_t>& places, std::string_view name,
                         Matches&& matches) {
    const std::size_t mask = places.size() - 1;
    std::size_t place = hashWithoutCase(name) & mask;
    while (places[place] != 0 && !matches(places[place])) {
        place = (place + 1) & mask;
    }
    return places[place];
}

} // namespace

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view strippedValue(std::string_view text) {
    text = trimBlanks(text);
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == '"' || text.front() == '\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes)) {
    if (!isWide()) {
        findSections();
        indexSections();
    }
}

bool ProfileText::isWide() const {
    return bytes_.starts_with("\xFF\xFE") || bytes_.starts_with("\xFE\xFF");
}

std::string_view ProfileText::slice(std::uint32_t begin, std::uint32_t end) const {
    return std::string_view(bytes_).substr(begin, end - begin);
}

ProfileLine ProfileText::lineAt(std::uint32_t offset, std::uint32_t limit) const {
    const char* begin = bytes_.data() + offset;
    std::size_t length = limit - offset;
    if (const void* found = std::memchr(begin, '\n', length)) {
        length = static_cast<std::size_t>(static_cast<const char*>(found) - begin);
    }
    if (const void* found = std::memchr(begin, '\r', length)) {
        length = static_cast<std::size_t>(static_cast<const char*>(found) - begin);
    }
    const auto end = offset + static_cast<std::uint32_t>(length);
    std::uint32_t next = end;
    if (next < limit) {
        const bool pair = bytes_[next] == '\r' && next + 1 < limit && bytes_[next + 1] == '\n';
        next += pair ? 2 : 1;
    }
    return {.begin = offset, .end = end, .next = next};
}

void ProfileText::findSections() {
    const auto limit = static_cast<std::uint32_t>(bytes_.size());
    std::uint32_t offset =
        bytes_.starts_with(utf8Mark) ? static_cast<std::uint32_t>(utf8Mark.size()) : 0;
    while (offset < limit) {
        const ProfileLine line = lineAt(offset, limit);
        const std::string_view text = trimBlanks(slice(line.begin, line.end));
        const std::size_t close = text.rfind(']');
        if (text.starts_with('[') && close != std::string_view::npos) {
            if (!sections_.empty()) {
                sections_.back().bodyEnd = line.begin;
            }
            const std::string_view name = trimBlanks(text.substr(1, close - 1));
            const auto begin = static_cast<std::uint32_t>(name.data() - bytes_.data());
            sections_.push_back({.nameBegin = begin,
                                 .nameEnd = begin + static_cast<std::uint32_t>(name.size()),
                                 .bodyBegin = line.next,
                                 .bodyEnd = limit});
        }
        offset = line.next;
    }
}

void ProfileText::indexSections() {
    sectionIndex_.places.assign(placesFor(sections_.size()), 0);
    for (std::uint32_t i = 0; i < sections_.size(); ++i) {
        const std::string_view name = slice(sections_[i].nameBegin, sections_[i].nameEnd);
        std::uint32_t& place = findPlace(sectionIndex_.places, name, [&](std::uint32_t entry) {
            const ProfileSection& other = sections_[entry - 1];
            return equalWithoutCase(name, slice(other.nameBegin, other.nameEnd));
        });
        if (place == 0) {
            place = i + 1;
        }
    }
}

const ProfileSection* ProfileText::section(std::string_view name) const {
    if (sections_.empty()) {
        return nullptr;
    }
    auto& places = const_cast<ProfileText*>(this)->sectionIndex_.places; // NOLINT: only read
    const std::uint32_t entry = findPlace(places, name, [&](std::uint32_t found) {
        const ProfileSection& other = sections_[found - 1];
        return equalWithoutCase(name, slice(other.nameBegin, other.nameEnd));
    });
    return entry == 0 ? nullptr : &sections_[entry - 1];
}

std::optional<ProfileKey> ProfileText::keyOf(const ProfileLine& line) const {
    const std::string_view text = slice(line.begin, line.end);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view name = trimBlanks(text.substr(0, equals));
    if (name.empty() || name.front() == ';') {
        return std::nullopt;
    }
    const auto begin = static_cast<std::uint32_t>(name.data() - bytes_.data());
    return ProfileKey{.keyBegin = begin,
                      .keyEnd = begin + static_cast<std::uint32_t>(name.size()),
                      .valueBegin = line.begin + static_cast<std::uint32_t>(equals) + 1,
                      .valueEnd = line.end};
}

const ProfileText::Index& ProfileText::keyIndex(const ProfileSection& section) const {
    const auto [entry, made] = keyIndexes_.try_emplace(section.bodyBegin);
    if (made) {
        indexKeys(section, entry->second);
    }
    return entry->second;
}

void ProfileText::indexKeys(const ProfileSection& section, Index& index) const {
    std::size_t lines = 0;
    for (std::uint32_t at = section.bodyBegin; at < section.bodyEnd; ++lines) {
        at = lineAt(at, section.bodyEnd).next;
    }
    index.places.assign(placesFor(lines), 0);
    for (std::uint32_t at = section.bodyBegin; at < section.bodyEnd;) {
        const ProfileLine line = lineAt(at, section.bodyEnd);
        if (const auto key = keyOf(line)) {
            const std::string_view name = slice(key->keyBegin, key->keyEnd);
            std::uint32_t& place = findPlace(index.places, name, [&](std::uint32_t entry) {
                const auto other = keyOf(lineAt(entry - 1, section.bodyEnd));
                return equalWithoutCase(name, slice(other->keyBegin, other->keyEnd));
            });
            if (place == 0) {
                place = line.begin + 1;
            }
        }
        at = line.next;
    }
}

std::optional<ProfileKey> ProfileText::key(const ProfileSection& section,
                                           std::string_view name) const {
    if (section.bodyEnd - section.bodyBegin >= shortBody) {
        auto& places = const_cast<Index&>(keyIndex(section)).places; // NOLINT: only read
        const std::uint32_t entry = findPlace(places, name, [&](std::uint32_t found) {
            const auto other = keyOf(lineAt(found - 1, section.bodyEnd));
            return equalWithoutCase(name, slice(other->keyBegin, other->keyEnd));
        });
        return entry == 0 ? std::nullopt : keyOf(lineAt(entry - 1, section.bodyEnd));
    }
    for (std::uint32_t at = section.bodyBegin; at < section.bodyEnd;) {
        const ProfileLine line = lineAt(at, section.bodyEnd);
        const auto key = keyOf(line);
        if (key && equalWithoutCase(name, slice(key->keyBegin, key->keyEnd))) {
            return key;
        }
        at = line.next;
    }
    return std::nullopt;
}

std::string_view ProfileText::value(const ProfileKey& key) const {
    return strippedValue(slice(key.valueBegin, key.valueEnd));
}

std::uint32_t ProfileText::endOfKeys(const ProfileSection& section) const {
    std::uint32_t end = section.bodyEnd;
    while (end > section.bodyBegin && (isBlank(bytes_[end - 1]) || isLineEnd(bytes_[end - 1]))) {
        --end;
    }
    return end == section.bodyBegin ? end : lineAt(end, section.bodyEnd).next;
}

std::string_view ProfileText::lineEndBefore(std::uint32_t offset) const {
    const std::string_view text = slice(0, offset);
    if (!text.empty() && isLineEnd(text.back())) {
        return text.substr(text.size() - (text.ends_with("\r\n") ? 2 : 1));
    }
    const ProfileLine first = lineAt(0, static_cast<std::uint32_t>(bytes_.size()));
    return slice(first.end, first.next);
}

} // namespace tarvik
