#include "types/Convert.h"
#include "types/DatePattern.h"

#include <cmath>

namespace tarvik {

namespace {

bool isPatternLetter(char character) {
    return std::string_view("dMyhHmst").find(character) != std::string_view::npos;
}

void appendPlain(std::vector<PatternPiece>& pieces, char character) {
    if (pieces.empty() || pieces.back().letter != 0) {
        pieces.emplace_back();
    }
    pieces.back().text += character;
}

std::string dayAndMonthText(const PatternPiece& piece, const CivilTime& civil,
                            const LocaleData& locale) {
    if (piece.letter == 'd') {
        return zeroPadded(civil.day, piece.length);
    }
    const auto month = static_cast<std::size_t>(civil.month - 1);
    switch (piece.length) {
    case 1:
    case 2:
        return zeroPadded(civil.month, piece.length);
    case 3:
        return locale.shortMonths.at(month);
    default:
        return locale.longMonths.at(month);
    }
}

std::string pieceText(const PatternPiece& piece, const CivilTime& civil, const LocaleData& locale) {
    switch (piece.letter) {
    case 'd':
    case 'M':
        return dayAndMonthText(piece, civil, locale);
    case 'y':
        return piece.length > 2 ? zeroPadded(civil.year, 4) : zeroPadded(civil.year % 100, 2);
    case 'H':
        return zeroPadded(civil.hour, piece.length);
    case 'h':
        return zeroPadded((civil.hour + 11) % 12 + 1, piece.length);
    case 'm':
        return zeroPadded(civil.minute, piece.length);
    case 's':
        return zeroPadded(civil.second, piece.length);
    case 't':
        return civil.hour < 12 ? locale.amText : locale.pmText;
    default:
        return piece.text;
    }
}

std::string patternText(const std::string& pattern, const CivilTime& civil,
                        const LocaleData& locale) {
    std::string text;
    for (const PatternPiece& piece : patternPieces(pattern)) {
        text += pieceText(piece, civil, locale);
    }
    return text;
}

} // namespace

std::vector<PatternPiece> patternPieces(const std::string& pattern) {
    std::vector<PatternPiece> pieces;
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char character = pattern[i];
        if (character == '\'') {
            if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
                appendPlain(pieces, character);
                ++i;
            } else {
                quoted = !quoted;
            }
        } else if (quoted || !isPatternLetter(character)) {
            appendPlain(pieces, character);
        } else if (!pieces.empty() && pieces.back().letter == character) {
            ++pieces.back().length;
        } else {
            pieces.push_back({.letter = character, .length = 1, .text = {}});
        }
    }
    return pieces;
}

std::string shortDateText(Date value, const LocaleData& locale) {
    return patternText(locale.shortDate, value.civil(), locale);
}

std::string longTimeText(Date value, const LocaleData& locale) {
    return patternText(locale.longTime, value.civil(), locale);
}

std::string toText(Date value, const LocaleData& locale) {
    const CivilTime civil = value.civil();
    const bool midnight = civil.hour == 0 && civil.minute == 0 && civil.second == 0;
    const bool dayZero = civil.year == 1899 && civil.month == 12 && civil.day == 30;
    if (midnight) {
        return dayZero ? longTimeText(value, locale) : shortDateText(value, locale);
    }
    if (dayZero) {
        return longTimeText(value, locale);
    }
    return shortDateText(value, locale) + " " + longTimeText(value, locale);
}

} // namespace tarvik
