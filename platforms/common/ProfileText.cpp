#include "common/ProfileText.h"

#include "types/Text.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

/// A section whose body is shorter than this, bytes, is searched line by line.
constexpr std::uint32_t shortBody = 2048;

constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

constexpr bool isLineEnd(char character) {
    return character == '\n' || character == '\r';
}

/// The name that a `[name]` line gives.
std::optional<std::string_view> sectionNameOf(std::string_view line) {
    const std::string_view text = trimBlanks(line);
    if (!text.starts_with('[')) {
        return std::nullopt;
    }
    const std::size_t close = text.rfind(']');
    return close == std::string_view::npos ? std::nullopt
                                           : std::optional(trimBlanks(text.substr(1, close - 1)));
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

std::string_view trailingLineEnd(std::string_view text) {
    if (text.empty() || !isLineEnd(text.back())) {
        return {};
    }
    return text.substr(text.size() - (text.ends_with("\r\n") ? 2 : 1));
}

std::string_view strippedValue(std::string_view text) {
    text = trimBlanks(text);
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == '"' || text.front() == '\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

std::optional<ProfileKey> keyOfLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    const std::string_view name = trimBlanks(line.substr(0, equals));
    if (name.empty() || name.front() == ';') {
        return std::nullopt;
    }
    if (equals == std::string_view::npos) {
        const auto end = static_cast<std::size_t>(name.data() - line.data()) + name.size();
        return ProfileKey{.name = name, .value = line.substr(end), .hasValue = false};
    }
    return ProfileKey{.name = name, .value = line.substr(equals + 1)};
}

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes)) {
    findSections();
}

TextRange ProfileText::rangeOf(std::string_view part) const {
    const std::uint32_t begin = offsetOf(part);
    return {.begin = begin, .end = begin + static_cast<std::uint32_t>(part.size())};
}

ProfileText::Line ProfileText::lineAt(std::uint32_t offset, std::uint32_t limit) const {
    const char* const begin = bytes_.data() + offset;
    const char* const end = std::find_if(begin, bytes_.data() + limit, isLineEnd);
    const auto length = static_cast<std::size_t>(end - begin);
    std::uint32_t next = offset + static_cast<std::uint32_t>(length);
    if (next < limit) {
        const bool pair = bytes_[next] == '\r' && next + 1 < limit && bytes_[next + 1] == '\n';
        next += pair ? 2 : 1;
    }
    return {.text = {begin, length}, .next = next};
}

/// Looks at brackets only: most lines have none.
void ProfileText::findSections() {
    std::vector<TextRange> names;
    const std::size_t begin = bytes_.starts_with(utf8Mark) ? utf8Mark.size() : 0;
    for (std::size_t at = bytes_.find('[', begin); at != std::string::npos;
         at = bytes_.find('[', at + 1)) {
        std::size_t header = at;
        while (header > begin && isBlank(bytes_[header - 1])) {
            --header;
        }
        if (header > begin && !isLineEnd(bytes_[header - 1])) {
            continue;
        }
        const Line line = lineAt(static_cast<std::uint32_t>(header), size());
        if (const auto name = sectionNameOf(line.text)) {
            names.push_back(rangeOf(*name));
            beginSection(static_cast<std::uint32_t>(header), line.next);
        }
    }
    names_ = NameIndex(bytes_, std::move(names));
}

void ProfileText::beginSection(std::uint32_t header, std::uint32_t body) {
    if (!sections_.empty()) {
        sections_.back().bodyEnd = header;
    }
    sections_.push_back({.bodyBegin = body, .bodyEnd = size()});
}

const ProfileSection* ProfileText::section(std::string_view name) const {
    const std::uint32_t number = names_.find(bytes_, name);
    return number == NameIndex::none ? nullptr : &sections_[number];
}

template <class Take>
void ProfileText::forEachKey(const ProfileSection& section, Take&& take) const {
    for (std::uint32_t at = section.bodyBegin; at < section.bodyEnd;) {
        const Line line = lineAt(at, section.bodyEnd);
        if (const auto key = keyOfLine(line.text)) {
            take(*key);
        }
        at = line.next;
    }
}

const NameIndex& ProfileText::keyIndex(const ProfileSection& section) const {
    const auto known = keyIndexes_.find(section.bodyBegin);
    if (known != keyIndexes_.end()) {
        return known->second;
    }
    std::vector<TextRange> names;
    forEachKey(section, [&](const ProfileKey& key) { names.push_back(rangeOf(key.name)); });
    return keyIndexes_.emplace(section.bodyBegin, NameIndex(bytes_, std::move(names)))
        .first->second;
}

std::optional<ProfileKey> ProfileText::key(const ProfileSection& section,
                                           std::string_view name) const {
    if (section.bodyEnd - section.bodyBegin >= shortBody) {
        return indexedKey(section, name);
    }
    const std::vector<ProfileKey>& keys = keysOf(section);
    const auto found = std::find_if(keys.begin(), keys.end(), [&](const ProfileKey& key) {
        return equalWithoutCase(name, key.name);
    });
    return found == keys.end() ? std::nullopt : std::optional(*found);
}

/// Of a short section, which is asked for one key after the other.
const std::vector<ProfileKey>& ProfileText::keysOf(const ProfileSection& section) const {
    if (lastKeysBody_ != section.bodyBegin) {
        lastKeys_.clear();
        lastKeysBody_ = section.bodyBegin;
        forEachKey(section, [&](const ProfileKey& key) { lastKeys_.push_back(key); });
    }
    return lastKeys_;
}

std::optional<ProfileKey> ProfileText::indexedKey(const ProfileSection& section,
                                                  std::string_view name) const {
    const bool again = lastKey_ && lastKey_->name == name && lastBody_ == section.bodyBegin;
    if (!again) {
        const NameIndex& index = keyIndex(section);
        const std::uint32_t number = index.find(bytes_, name);
        lastKey_ = number == NameIndex::none
                       ? std::nullopt
                       : keyOfLine(lineAt(index[number].begin, section.bodyEnd).text);
        lastBody_ = section.bodyBegin;
    }
    return lastKey_;
}

std::uint32_t ProfileText::endOfKeys(const ProfileSection& section) const {
    std::uint32_t end = section.bodyEnd;
    while (end > section.bodyBegin && (isBlank(bytes_[end - 1]) || isLineEnd(bytes_[end - 1]))) {
        --end;
    }
    return end == section.bodyBegin ? end : lineAt(end, section.bodyEnd).next;
}

std::string_view ProfileText::lineEndBefore(std::uint32_t offset) const {
    const std::string_view before = trailingLineEnd(slice(bytes_, {0, offset}));
    if (!before.empty()) {
        return before;
    }
    const Line first = lineAt(0, size());
    return slice(bytes_, {static_cast<std::uint32_t>(first.text.size()), first.next});
}

} // namespace tarvik
