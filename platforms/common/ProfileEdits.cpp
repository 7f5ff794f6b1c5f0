#include "common/ProfileEdits.h"

#include "types/Text.h"

#include <algorithm>

namespace tarvik {

namespace {

/// The key that a line of a replaced section names; empty for none.
std::string_view keyOfLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    return equals == std::string_view::npos ? std::string_view()
                                            : trimBlanks(line.substr(0, equals));
}

bool endsLine(std::string_view text) {
    return text.empty() || text.back() == '\n' || text.back() == '\r';
}

/// Replaces `[from, to)` of the old text by a new part.
struct Splice {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    std::string part;
};

/// Collects the splices for one old text and puts the new one together.
class Composer {
public:
    Composer(const ProfileText& text, std::string_view lineEnd) : text_(text), lineEnd_(lineEnd) {}

    void replaceSection(const ProfileSection& section, const std::vector<std::string>& lines) {
        const std::string_view end = lineEndAt(section.bodyBegin);
        std::string body = openingLineEnd(section.bodyBegin, end);
        for (const std::string& line : lines) {
            body += line;
            body += end;
        }
        splices_.push_back({section.bodyBegin, text_.endOfKeys(section), std::move(body)});
    }

    void writeKeys(const ProfileSection& section,
                   const std::vector<std::pair<std::string, std::string>>& keys) {
        const std::uint32_t place = text_.endOfKeys(section);
        const std::string_view end = lineEndAt(place);
        std::string appended;
        for (const auto& [key, value] : keys) {
            if (const auto found = text_.key(section, key)) {
                splices_.push_back({found->valueBegin, found->valueEnd, value});
            } else {
                appended += key + "=" + value;
                appended += end;
            }
        }
        if (!appended.empty()) {
            splices_.push_back({place, place, openingLineEnd(place, end) + appended});
        }
    }

    void addSection(const std::string& name, const std::vector<std::string>& lines) {
        const std::string_view end = lineEndAt(size());
        if (tail_.empty() && !onlyMark()) {
            tail_ = openingLineEnd(size(), end);
        }
        tail_ += "[" + name + "]";
        tail_ += end;
        for (const std::string& line : lines) {
            tail_ += line;
            tail_ += end;
        }
    }

    ProfilePieces pieces() && {
        std::stable_sort(splices_.begin(), splices_.end(),
                         [](const Splice& a, const Splice& b) { return a.from < b.from; });
        ProfilePieces result;
        std::uint32_t at = 0;
        for (Splice& splice : splices_) {
            result.keep(text_.bytes().substr(at, splice.from - at));
            result.add(std::move(splice.part));
            at = splice.to;
        }
        result.keep(text_.bytes().substr(at));
        result.add(std::move(tail_));
        return result;
    }

private:
    std::uint32_t size() const { return static_cast<std::uint32_t>(text_.bytes().size()); }

    bool onlyMark() const { return text_.bytes() == "\xEF\xBB\xBF"; }

    std::string_view lineEndAt(std::uint32_t offset) const {
        const std::string_view found = text_.lineEndBefore(offset);
        return found.empty() ? lineEnd_ : found;
    }

    /// A line end where the text before the offset lacks one.
    std::string openingLineEnd(std::uint32_t offset, std::string_view end) const {
        return std::string(endsLine(text_.bytes().substr(0, offset)) ? "" : end);
    }

    const ProfileText& text_;
    std::string_view lineEnd_;
    std::vector<Splice> splices_;
    std::string tail_;
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
        const std::string line = std::string(key) + "=" + std::string(value);
        const auto same =
            std::find_if(edited.lines->begin(), edited.lines->end(), [&](const std::string& other) {
                return equalWithoutCase(keyOfLine(other), key);
            });
        if (same == edited.lines->end()) {
            edited.lines->push_back(line);
        } else {
            *same = line;
        }
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
            if (equalWithoutCase(keyOfLine(line), key)) {
                return strippedValue(std::string_view(line).substr(line.find('=') + 1));
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
                lines.push_back(key + "=" + value);
            }
            composer.addSection(edited.name, lines);
        }
    }
    return std::move(composer).pieces();
}

} // namespace tarvik
