#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

// As names are told apart, stated apart from the engine.
/// Without the blanks around it.
std::string trimmed(std::string text);
/// In small letters, those of ASCII.
std::string folded(std::string text);

/// The rules of private-profile files stated a second time, as plainly as possible: a list of lines
/// that is searched from its start and cut anew after every write. Slow, and right at a glance.
class ReferenceProfile {
public:
    ReferenceProfile(std::string_view bytes, std::string lineEnd);

    std::string bytes() const;

    std::optional<std::string> read(const std::string& section, const std::string& key) const;
    void writeKey(const std::string& section, const std::string& key, const std::string& value);
    void writeSection(const std::string& section, const std::vector<std::string>& lines);

private:
    struct Line {
        std::string text;
        std::string end;
    };

    void cut(std::string_view bytes);
    std::optional<std::size_t> headerOf(const std::string& section) const;
    std::size_t bodyEnd(std::size_t header) const;
    std::size_t lastFilledLine(std::size_t header) const;
    std::string giveEnd(std::size_t line);
    std::string usualEnd() const;
    void insert(std::size_t at, const std::vector<std::string>& texts, const std::string& end);
    void append(const std::string& section, const std::vector<std::string>& texts);

    bool mark_ = false;
    std::vector<Line> lines_;
    std::string lineEnd_;
};

} // namespace tarvik
