#include "support/ReferenceProfile.h"

namespace tarvik {

std::string trimmed(std::string text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.pop_back();
    }
    while (!text.empty() && (text[0] == ' ' || text[0] == '\t')) {
        text.erase(0, 1);
    }
    return text;
}

std::string folded(std::string text) {
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character + 32);
        }
    }
    return text;
}

namespace {

const std::string mark = "\xEF\xBB\xBF";

bool same(const std::string& a, const std::string& b) {
    return folded(trimmed(a)) == folded(trimmed(b));
}

/// The name in a header, with its blanks; nothing for any other line.
std::optional<std::string> nameIn(const std::string& line) {
    const std::string text = trimmed(line);
    if (text.empty() || text[0] != '[' || text.find(']') == std::string::npos) {
        return std::nullopt;
    }
    return text.substr(1, text.find_last_of(']') - 1);
}

bool holdsKey(const std::string& line, const std::string& key) {
    const std::string text = trimmed(line);
    return !text.empty() && text[0] != ';' && text[0] != '=' &&
           same(text.substr(0, text.find('=')), key);
}

std::string unquoted(const std::string& text) {
    for (const char quote : {'"', '\''}) {
        if (text.size() > 1 && text[0] == quote && text[text.size() - 1] == quote) {
            return text.substr(1, text.size() - 2);
        }
    }
    return text;
}

} // namespace

ReferenceProfile::ReferenceProfile(std::string_view bytes, std::string lineEnd)
    : lineEnd_(std::move(lineEnd)) {
    cut(bytes);
}

void ReferenceProfile::cut(std::string_view bytes) {
    lines_.clear();
    mark_ = bytes.substr(0, 3) == mark;
    bool open = false;
    for (std::size_t i = mark_ ? 3 : 0; i < bytes.size(); ++i) {
        if (!open) {
            lines_.emplace_back();
        }
        open = bytes[i] != '\r' && bytes[i] != '\n';
        (open ? lines_.back().text : lines_.back().end) += bytes[i];
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') {
            lines_.back().end += bytes[++i];
        }
    }
}

std::string ReferenceProfile::bytes() const {
    std::string result = mark_ ? mark : "";
    for (const Line& line : lines_) {
        result += line.text + line.end;
    }
    return result;
}

std::optional<std::size_t> ReferenceProfile::headerOf(const std::string& section) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const auto name = nameIn(lines_[i].text);
        if (name && same(*name, section)) {
            return i;
        }
    }
    return std::nullopt;
}

std::size_t ReferenceProfile::bodyEnd(std::size_t header) const {
    std::size_t end = header + 1;
    while (end < lines_.size() && !nameIn(lines_[end].text)) {
        ++end;
    }
    return end;
}

std::size_t ReferenceProfile::lastFilledLine(std::size_t header) const {
    std::size_t last = bodyEnd(header) - 1;
    while (last > header && trimmed(lines_[last].text).empty()) {
        --last;
    }
    return last;
}

std::string ReferenceProfile::usualEnd() const {
    return lines_.empty() || lines_[0].end.empty() ? lineEnd_ : lines_[0].end;
}

/// The end of a line that another one is to follow.
std::string ReferenceProfile::giveEnd(std::size_t line) {
    if (lines_[line].end.empty()) {
        lines_[line].end = usualEnd();
    }
    return lines_[line].end;
}

void ReferenceProfile::insert(std::size_t at, const std::vector<std::string>& texts,
                              const std::string& end) {
    for (const std::string& text : texts) {
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at++), Line{text, end});
    }
    cut(bytes());
}

void ReferenceProfile::append(const std::string& section, const std::vector<std::string>& texts) {
    const std::string end = lines_.empty() ? lineEnd_ : giveEnd(lines_.size() - 1);
    lines_.push_back({std::string("[").append(trimmed(section)).append("]"), end});
    insert(lines_.size(), texts, end);
}

std::optional<std::string> ReferenceProfile::read(const std::string& section,
                                                  const std::string& key) const {
    const auto header = headerOf(section);
    if (!header) {
        return std::nullopt;
    }
    for (std::size_t i = *header + 1; i < bodyEnd(*header); ++i) {
        if (holdsKey(lines_[i].text, key)) {
            const std::string& text = lines_[i].text;
            if (text.find('=') == std::string::npos) {
                return std::nullopt;
            }
            return unquoted(trimmed(text.substr(text.find('=') + 1)));
        }
    }
    return std::nullopt;
}

void ReferenceProfile::writeKey(const std::string& section, const std::string& key,
                                const std::string& value) {
    const std::string line = trimmed(key) + "=" + value;
    const auto header = headerOf(section);
    if (!header) {
        append(section, {line});
        return;
    }
    for (std::size_t i = *header + 1; i < bodyEnd(*header); ++i) {
        std::string& text = lines_[i].text;
        if (holdsKey(text, key)) {
            const std::size_t equals = text.find('=');
            if (equals == std::string::npos) {
                while (text.back() == ' ' || text.back() == '\t') {
                    text.pop_back();
                }
            }
            text = text.substr(0, equals) + "=" + value;
            return;
        }
    }
    const std::size_t last = lastFilledLine(*header);
    insert(last + 1, {line}, giveEnd(last));
}

void ReferenceProfile::writeSection(const std::string& section,
                                    const std::vector<std::string>& lines) {
    const auto header = headerOf(section);
    if (!header) {
        append(section, lines);
        return;
    }
    const std::size_t last = lastFilledLine(*header);
    const std::string end = lines_[*header].end.empty() ? usualEnd() : lines_[*header].end;
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*header + 1),
                 lines_.begin() + static_cast<std::ptrdiff_t>(last + 1));
    if (!lines.empty()) {
        giveEnd(*header);
    }
    insert(*header + 1, lines, end);
}

} // namespace tarvik
