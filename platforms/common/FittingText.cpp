#include "common/FittingText.h"

#include "common/Utf16.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tarvik {

namespace {

/// What is shown in one line, and what sets it apart from the one before: a line end, the blank at
/// which the box breaks it, or what a word is broken by.
struct Row {
    std::string before;
    std::string text;
    std::size_t letters = 0;
};

/// East Asian letters are twice as wide.
std::size_t widthOf(std::uint32_t character) {
    constexpr std::uint32_t firstWide = 0x1100;
    return character >= firstWide && character != noCharacter ? 2 : 1;
}

/// Lays a text out as a box of that width would.
class Rows {
public:
    explicit Rows(std::size_t letters) : letters_(letters) {}

    void addLine(std::string_view lineEnd, std::string_view line) {
        rows_.push_back({.before = std::string(lineEnd), .text = {}});
        std::string blank;
        while (true) {
            const std::size_t end = std::min(line.find(' '), line.size());
            addWord(blank, line.substr(0, end));
            if (end == line.size()) {
                return;
            }
            blank = " ";
            line.remove_prefix(end + 1);
        }
    }

    std::vector<Row> take() && { return std::move(rows_); }

private:
    void addWord(const std::string& blank, std::string_view word) {
        std::size_t width = 0;
        for (std::string_view rest = word; !rest.empty();) {
            width += widthOf(takeCharacter(rest));
        }
        if (rows_.back().letters + blank.size() + width <= letters_ || blank.empty()) {
            rows_.back().text += blank;
            rows_.back().letters += blank.size();
        } else {
            rows_.push_back({.before = blank, .text = {}});
        }
        while (!word.empty()) {
            addLetter(word);
        }
    }

    void addLetter(std::string_view& word) {
        std::string_view rest = word;
        const std::size_t width = widthOf(takeCharacter(rest));
        if (rows_.back().letters + width > letters_ && rows_.back().letters > 0) {
            rows_.push_back({.before = "\r", .text = {}});
        }
        rows_.back().text += word.substr(0, word.size() - rest.size());
        rows_.back().letters += width;
        word = rest;
    }

    std::size_t letters_;
    std::vector<Row> rows_;
};

std::vector<Row> rowsOf(std::string_view text, std::size_t letters) {
    Rows rows(letters);
    std::string_view lineEnd;
    while (true) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        rows.addLine(lineEnd, text.substr(0, end));
        text.remove_prefix(end);
        if (text.empty()) {
            return std::move(rows).take();
        }
        lineEnd = text.substr(0, text.starts_with("\r\n") ? 2 : 1);
        text.remove_prefix(lineEnd.size());
    }
}

} // namespace

BoxRoom boxRoom(int screenWidth, int screenHeight, int letterWidth, int lineHeight) {
    // What the program itself says fits these on any screen.
    constexpr int fewestLetters = 40;
    constexpr int fewestLines = 14;
    constexpr int comfortable = 80; // letters
    constexpr int others = 10;      // lines that icon, buttons and borders are as high as
    // A box that is wider than half of the screen may break the lines once more.
    const int letters = screenWidth / 2 / std::max(letterWidth, 1);
    const int lines = screenHeight / std::max(lineHeight, 1) - others;
    return {.letters = static_cast<std::size_t>(std::clamp(letters, fewestLetters, comfortable)),
            .lines = static_cast<std::size_t>(std::max(lines, fewestLines))};
}

std::string fittingText(std::string_view text, const BoxRoom& room) {
    std::vector<Row> rows = rowsOf(text, room.letters);
    if (rows.size() > room.lines) {
        const std::size_t last = room.lines / 3;
        const auto from = rows.begin() + static_cast<std::ptrdiff_t>(room.lines - 1 - last);
        const auto to = rows.end() - static_cast<std::ptrdiff_t>(last);
        const auto behind = rows.insert(rows.erase(from, to), {.before = "\r", .text = "..."}) + 1;
        if (behind != rows.end()) {
            behind->before = "\r";
        }
    }
    std::string result;
    for (const Row& row : rows) {
        result += row.before + row.text;
    }
    return result;
}

std::string fittingText(std::string_view text, const BoxRoom& room, const CodePage& codePage) {
    return changedInUtf8(text, codePage,
                         [&](std::string_view utf8) { return fittingText(utf8, room); });
}

} // namespace tarvik
