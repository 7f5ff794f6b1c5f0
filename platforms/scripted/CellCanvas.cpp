#include "scripted/CellCanvas.h"

#include <algorithm>

namespace tarvik {

namespace {

/// Length in bytes of the character at the start of a text that is not empty; 1 for a stray byte.
std::size_t firstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    for (std::size_t i = 1; i < length; ++i) {
        if (i >= text.size() || (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) {
            return 1;
        }
    }
    return length;
}

std::vector<std::string_view> charactersOf(std::string_view text) {
    std::vector<std::string_view> characters;
    while (!text.empty()) {
        characters.push_back(text.substr(0, firstCharacter(text)));
        text.remove_prefix(characters.back().size());
    }
    return characters;
}

} // namespace

std::size_t cellsOf(std::string_view text) {
    return charactersOf(text).size();
}

CellCanvas::CellCanvas(int width, int height)
    : width_(width), height_(height),
      cells_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

void CellCanvas::put(int left, int top, std::string_view character) {
    if (left < 0 || left >= width_ || top < 0 || top >= height_) {
        return;
    }
    const auto row = static_cast<std::size_t>(top) * static_cast<std::size_t>(width_);
    std::string& cell = cells_[row + static_cast<std::size_t>(left)];
    const bool control = static_cast<unsigned char>(character.front()) < ' ';
    cell = !cell.empty() ? "#" : control ? " " : character;
}

void CellCanvas::text(int left, int top, int width, std::string_view line,
                      TextAlignment alignment) {
    const auto characters = charactersOf(line);
    const int spare = std::max(0, width - static_cast<int>(characters.size()));
    if (alignment == TextAlignment::Right) {
        left += spare;
    } else if (alignment == TextAlignment::Centre) {
        left += spare / 2;
    }
    const auto fitting = std::min(characters.size(), static_cast<std::size_t>(std::max(0, width)));
    for (std::size_t i = 0; i < fitting; ++i) {
        put(left + static_cast<int>(i), top, characters[i]);
    }
}

void CellCanvas::border(int left, int top, int width, int height, std::string_view title) {
    std::string edge(static_cast<std::size_t>(std::max(2, width)), '-');
    edge.front() = edge.back() = '+';
    text(left, top + height - 1, width, edge);
    for (int row = 1; row < height - 1; ++row) {
        put(left, top + row, "|");
        put(left + width - 1, top + row, "|");
    }
    if (title.empty()) {
        return text(left, top, width, edge);
    }
    // "+- Title ---+": the title with a blank on both sides, after the corner and one dash.
    const std::string head = "+- " + std::string(title) + " ";
    const int headWidth = static_cast<int>(cellsOf(head));
    text(left, top, headWidth, head);
    text(left + headWidth, top, width - headWidth,
         std::string_view(edge).substr(std::min(edge.size(), static_cast<std::size_t>(headWidth))));
}

std::string CellCanvas::lines() const {
    std::string result;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        result += cells_[i].empty() ? " " : cells_[i];
        if ((i + 1) % static_cast<std::size_t>(width_) == 0) {
            result += '\n';
        }
    }
    return result;
}

} // namespace tarvik
