#include "windows/services/WindowsLocale.h"

#include "types/DatePattern.h"
#include "windows/services/SystemHeader.h"

namespace tarvik {

namespace {

/// A text of a locale; empty where the system has none.
std::string setting(LCID locale, LCTYPE which) {
    char text[256];
    // In the code page of the system, which need not be that of the locale.
    const int size = GetLocaleInfoA(locale, which | LOCALE_USE_CP_ACP, text, sizeof text);
    return size > 0 ? std::string(text, static_cast<std::size_t>(size) - 1) : std::string();
}

void takeUnlessEmpty(std::string& text, const std::string& found) {
    if (!found.empty()) {
        text = found;
    }
}

/// The letters of a run as the program's pattern language writes them; none for a run that is left
/// out.
std::string translatedRun(const PatternPiece& piece) {
    switch (piece.letter) {
    case 'y':
        return "yyyy";
    case 'd':
        return piece.length > 2 ? "" : std::string(static_cast<std::size_t>(piece.length), 'd');
    case 't':
        return "tt";
    default:
        return std::string(static_cast<std::size_t>(piece.length), piece.letter);
    }
}

/// Without the letters that stand for the name of an era.
std::string withoutEras(const std::string& pattern) {
    std::string result;
    bool plain = false;
    for (const char character : pattern) {
        plain = plain != (character == '\'');
        if (plain || character != 'g') {
            result += character;
        }
    }
    return result;
}

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char character : text) {
        result += character;
        if (character == '\'') {
            result += character;
        }
    }
    return result + "'";
}

/// A system puts something alike or a question mark in the place of what a code page lacks.
std::string middleDotIn(const CodePage& codePage) {
    const std::string dot = codePage.fromUtf8(LocaleData().middleDot);
    return codePage.toUtf8(dot) == LocaleData().middleDot ? dot : "-";
}

/// Text that stands for itself needs quotes where it could be taken for a run of letters.
std::string plainText(const std::string& text) {
    return text.find_first_of("dMyhHmst'") == std::string::npos ? text : quoted(text);
}

bool has(const std::string& pattern, const char* letters) {
    for (; *letters != '\0'; ++letters) {
        if (pattern.find(*letters) == std::string::npos) {
            return false;
        }
    }
    return true;
}

} // namespace

std::string translatedPattern(const std::string& pattern) {
    std::string result;
    for (const PatternPiece& piece : patternPieces(withoutEras(pattern))) {
        result += piece.letter != 0 ? translatedRun(piece) : plainText(piece.text);
    }
    const std::size_t first = result.find_first_not_of(" ,");
    const std::size_t last = result.find_last_not_of(" ,");
    return first == std::string::npos ? "" : result.substr(first, last - first + 1);
}

WindowsLocale::WindowsLocale() : data_(localeDataOf(LOCALE_USER_DEFAULT)) {}

LocaleData localeDataOf(std::uint32_t locale, const CodePage& codePage) {
    LocaleData data;
    data.middleDot = middleDotIn(codePage);
    const std::string date = translatedPattern(setting(locale, LOCALE_SSHORTDATE));
    data.shortDate = has(date, "dMy") ? date : "yyyy-MM-dd";
    const std::string time = translatedPattern(setting(locale, LOCALE_STIMEFORMAT));
    // Only the separator of thousands may be nothing at all.
    data.thousandsSeparator = setting(locale, LOCALE_STHOUSAND);
    takeUnlessEmpty(data.decimalSeparator, setting(locale, LOCALE_SDECIMAL));
    takeUnlessEmpty(data.amText, setting(locale, LOCALE_S1159));
    takeUnlessEmpty(data.pmText, setting(locale, LOCALE_S2359));
    // Halves of the day whose texts have no place in the code page cannot be told apart.
    const bool halves = has(time, "ht") && data.amText != data.pmText;
    data.longTime = has(time, "ms") && (has(time, "H") || halves) ? time : "HH:mm:ss";
    for (unsigned month = 0; month < data.shortMonths.size(); ++month) {
        takeUnlessEmpty(data.shortMonths[month], setting(locale, LOCALE_SABBREVMONTHNAME1 + month));
        takeUnlessEmpty(data.longMonths[month], setting(locale, LOCALE_SMONTHNAME1 + month));
    }
    return data;
}

} // namespace tarvik
