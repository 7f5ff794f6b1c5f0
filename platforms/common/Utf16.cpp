#include "common/Utf16.h"

#include <array>
#include <cstdint>

namespace tarvik {

namespace {

constexpr std::uint32_t firstHigh = 0xD800;
constexpr std::uint32_t firstLow = 0xDC00;
constexpr std::uint32_t afterLow = 0xE000;
constexpr std::uint32_t beyondUnits = 0x10000;
constexpr char16_t replacement = u'\uFFFD';

void append(std::string& text, std::uint32_t code) {
    const auto add = [&](std::uint32_t bits) { text += static_cast<char>(bits); };
    const auto addRest = [&](std::uint32_t shift) { add(0x80U | ((code >> shift) & 0x3FU)); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0U | (code >> 6U));
        addRest(0);
    } else if (code < beyondUnits) {
        add(0xE0U | (code >> 12U));
        addRest(6);
        addRest(0);
    } else {
        add(0xF0U | (code >> 18U));
        addRest(12);
        addRest(6);
        addRest(0);
    }
}

/// A lead byte: how many bytes follow it, what it adds, and the least code of that length.
struct Lead {
    std::uint32_t mask;
    std::uint32_t mark;
    std::size_t rest;
    std::uint32_t least;
};

constexpr std::array<Lead, 4> leads{{{.mask = 0x80, .mark = 0x00, .rest = 0, .least = 0},
                                     {.mask = 0xE0, .mark = 0xC0, .rest = 1, .least = 0x80},
                                     {.mask = 0xF0, .mark = 0xE0, .rest = 2, .least = 0x800},
                                     {.mask = 0xF8, .mark = 0xF0, .rest = 3, .least = 0x10000}}};

} // namespace

std::uint32_t takeCharacter(std::string_view& text) {
    const auto byteAt = [&](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i]));
    };
    for (const Lead& lead : leads) {
        if ((byteAt(0) & lead.mask) != lead.mark || text.size() <= lead.rest) {
            continue;
        }
        std::uint32_t code = byteAt(0) & ~lead.mask;
        bool whole = true;
        for (std::size_t i = 1; i <= lead.rest; ++i) {
            whole = whole && (byteAt(i) & 0xC0U) == 0x80U;
            code = (code << 6U) | (byteAt(i) & 0x3FU);
        }
        if (whole && code >= lead.least && code < noCharacter) {
            text.remove_prefix(lead.rest + 1);
            return code;
        }
    }
    text.remove_prefix(1);
    return noCharacter;
}

std::string utf8Of(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t code = units[i];
        const std::uint32_t next = i + 1 < units.size() ? units[i + 1] : 0;
        if (code >= firstHigh && code < firstLow && next >= firstLow && next < afterLow) {
            code = beyondUnits + ((code - firstHigh) << 10U) + (next - firstLow);
            ++i;
        }
        append(text, code);
    }
    return text;
}

std::u16string utf16Of(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        const std::uint32_t code = takeCharacter(text);
        if (code == noCharacter) {
            units += replacement;
        } else if (code < beyondUnits) {
            units += static_cast<char16_t>(code);
        } else {
            units += static_cast<char16_t>(firstHigh + ((code - beyondUnits) >> 10U));
            units += static_cast<char16_t>(firstLow + ((code - beyondUnits) & 0x3FFU));
        }
    }
    return units;
}

} // namespace tarvik
