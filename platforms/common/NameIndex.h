#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvik {

/// A part of a text, as offsets.
struct TextRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

/// The part of the text.
constexpr std::string_view slice(std::string_view text, TextRange range) {
    return text.substr(range.begin, range.end - range.begin);
}

/// Finds names that stand in one text, without regard to the case of ASCII letters. It holds
/// offsets only; the text is handed in with each call and must be the same.
class NameIndex {
public:
    /// Adds a name; of equal ones the first is found.
    void add(std::string_view text, TextRange name);

    /// Which of the added names it is, counted from 0.
    std::optional<std::size_t> find(std::string_view text, std::string_view name) const;

    TextRange operator[](std::size_t number) const { return names_[number]; }

private:
    std::size_t placeOf(std::string_view text, std::string_view name) const;
    void grow(std::string_view text);

    std::vector<TextRange> names_;
    /// A name's number and one more, at the first empty place from its hash on; 0 is empty.
    std::vector<std::uint32_t> places_;
};

} // namespace tarvik
