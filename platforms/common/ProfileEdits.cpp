#include "common/ProfileEdits.h"

#include "types/Text.h"

#include <algorithm>

namespace tarvik {

namespace {

std::string lineOf(std::string_view key, std::string_view value) {
    return std::string(key).append("=").append(value);
}

/// What takes the place of a key's value, so that the key has one.
std::string valuePart(const ProfileKey& key, std::string_view value) {
    return std::string(key.hasValue ? "" : "=").append(value);
}

/// The lines in one text, each with that line end.
std::string joined(const std::vector<std::string>& lines, std::string_view lineEnd) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).append(lineEnd);
    }
    return text;
}

/// Replaces `[from, to)` of the old text by a new part.
struct Splice {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    std::string part;
    bool wholeLines = true; ///< the part begins a line, so the text before it must end one
};

/// Collects the splices for one old text and puts the new one together.
class Composer {
public:
    Composer(const ProfileText& text, std::string_view lineEnd) : text_(text), lineEnd_(lineEnd) {}

    void replaceSection(const ProfileSection& section, const std::vector<std::string>& lines) {
        splices_.push_back({section.bodyBegin, text_.endOfKeys(section),
                            joined(lines, lineEndAt(section.bodyBegin))});
    }

    void writeKeys(const ProfileSection& section,
                   const std::vector<std::pair<std::string, std::string>>& keys) {
        const std::uint32_t place = text_.endOfKeys(section);
        std::vector<std::string> added;
        for (const auto& [key, value] : keys) {
            if (const auto found = text_.key(section, key)) {
                const std::uint32_t begin = text_.offsetOf(found->value);
                const auto length = static_cast<std::uint32_t>(found->value.size());
                splices_.push_back({begin, begin + length, valuePart(*found, value), false});
            } else {
                added.push_back(lineOf(key, value));
            }
        }
        splices_.push_back({place, place, joined(added, lineEndAt(place))});
    }

    void addSection(const std::string& name, const std::vector<std::string>& lines) {
        tail_.push_back("[" + name + "]");
        tail_.insert(tail_.end(), lines.begin(), lines.end());
    }

    ProfilePieces pieces() && {
        // Where two go to one place, an empty last value and what follows it, the order stays.
        std::stable_sort(splices_.begin(), splices_.end(),
                         [](const Splice& a, const Splice& b) { return a.from < b.from; });
        ProfilePieces result;
        std::uint32_t at = 0;
        for (Splice& splice : splices_) {
            result.keep(slice(text_.bytes(), {at, splice.from}));
            if (splice.wholeLines && !splice.part.empty()) {
                result.endLine(lineEndAt(splice.from));
            }
            result.add(std::move(splice.part));
            at = splice.to;
        }
        result.keep(text_.bytes().substr(at));
        if (!tail_.empty()) {
            result.endLine(lineEndAt(size()));
            const std::string_view end = result.lineEnd();
            result.add(joined(tail_, end.empty() ? lineEndAt(size()) : end));
        }
        return result;
    }

private:
    std::uint32_t size() const { return static_cast<std::uint32_t>(text_.bytes().size()); }

    std::string_view lineEndAt(std::uint32_t offset) const {
        const std::string_view found = text_.lineEndBefore(offset);
        return found.empty() ? lineEnd_ : found;
    }

    const ProfileText& text_;
    std::string_view lineEnd_;
    std::vector<Splice> splices_;
    std::vector<std::string> tail_; ///< lines of new sections
};

} // namespace

void ProfilePieces::keep(std::string_view part) {
    if (!part.empty()) {
        parts_.push_back(part);
    }
}

void ProfilePieces::add(std::string part) {
    if (!part.empty()) {
        parts_.emplace_back(added_.emplace_back(std::move(part)));
    }
}

std::string_view ProfilePieces::lineEnd() const {
    return parts_.empty() ? std::string_view() : trailingLineEnd(parts_.back());
}

void ProfilePieces::endLine(std::string_view lineEnd) {
    const bool nothing = parts_.empty() || (parts_.size() == 1 && parts_.front() == utf8Mark);
    if (!nothing && this->lineEnd().empty()) {
        parts_.push_back(lineEnd);
    }
}

const ProfileEdits::Section* ProfileEdits::find(std::string_view name) const {
    const auto found =
        std::find_if(sections_.begin(), sections_.end(),
                     [&](const Section& section) { return equalWithoutCase(section.name, name); });
    return found == sections_.end() ? nullptr : &*found;
}

ProfileEdits::Section& ProfileEdits::touch(std::string_view name) {
    if (const Section* found = find(name)) {
        return sections_[static_cast<std::size_t>(found - sections_.data())];
    }
    return sections_.emplace_back(Section{.name = std::string(name), .lines = {}, .keys = {}});
}

void ProfileEdits::writeKey(std::string_view section, std::string_view key,
                            std::string_view value) {
    Section& edited = touch(section);
    if (edited.lines) {
        writeLine(*edited.lines, key, value);
        return;
    }
    const auto same = std::find_if(edited.keys.begin(), edited.keys.end(), [&](const auto& entry) {
        return equalWithoutCase(entry.first, key);
    });
    if (same == edited.keys.end()) {
        edited.keys.emplace_back(key, value);
    } else {
        same->second = value;
    }
}

/// The same as in a file: the first line with the key gets the value, or the key is added.
void ProfileEdits::writeLine(std::vector<std::string>& lines, std::string_view key,
                             std::string_view value) {
    for (std::string& line : lines) {
        const auto found = keyOfLine(line);
        if (found && equalWithoutCase(found->name, key)) {
            line.replace(line.size() - found->value.size(), std::string::npos,
                         valuePart(*found, value));
            return;
        }
    }
    lines.push_back(lineOf(key, value));
}

void ProfileEdits::writeSection(std::string_view section, std::vector<std::string> lines) {
    Section& edited = touch(section);
    edited.keys.clear();
    edited.lines = std::move(lines);
}

std::optional<std::optional<std::string_view>> ProfileEdits::value(std::string_view section,
                                                                   std::string_view key) const {
    const Section* edited = find(section);
    if (edited == nullptr) {
        return std::nullopt;
    }
    if (edited->lines) {
        for (const std::string& line : *edited->lines) {
            const auto found = keyOfLine(line);
            if (found && equalWithoutCase(found->name, key)) {
                return found->hasValue ? std::optional(strippedValue(found->value)) : std::nullopt;
            }
        }
        return std::optional<std::string_view>();
    }
    for (const auto& [name, value] : edited->keys) {
        if (equalWithoutCase(name, key)) {
            return strippedValue(value);
        }
    }
    return std::nullopt;
}

ProfileEdits ProfileEdits::converted(std::string (*convert)(std::string_view)) const {
    ProfileEdits result = *this;
    for (Section& section : result.sections_) {
        section.name = convert(section.name);
        if (section.lines) {
            for (std::string& line : *section.lines) {
                line = convert(line);
            }
        }
        for (auto& [key, value] : section.keys) {
            key = convert(key);
            value = convert(value);
        }
    }
    return result;
}

ProfilePieces ProfileEdits::applied(const ProfileText& text, std::string_view lineEnd) const {
    Composer composer(text, lineEnd);
    for (const Section& edited : sections_) {
        const ProfileSection* section = text.section(edited.name);
        if (section != nullptr && edited.lines) {
            composer.replaceSection(*section, *edited.lines);
        } else if (section != nullptr) {
            composer.writeKeys(*section, edited.keys);
        } else {
            std::vector<std::string> lines = edited.lines.value_or(std::vector<std::string>());
            for (const auto& [key, value] : edited.keys) {
                lines.push_back(lineOf(key, value));
            }
            composer.addSection(edited.name, lines);
        }
    }
    return std::move(composer).pieces();
}

} // namespace tarvik
