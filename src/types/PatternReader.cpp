#include "types/PatternReader.h"

#include "types/RunTimeError.h"
#include "types/Text.h"

namespace tarvik {

namespace {

/// The piece is written as digits.
bool isNumber(const PatternPiece& piece) {
    const bool monthName = piece.letter == 'M' && piece.length > 2;
    return piece.letter != 0 && piece.letter != 't' && !monthName;
}

} // namespace

std::optional<std::size_t> leadingName(std::string_view text,
                                       const std::array<std::string, 12>& names) {
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string& name = names[i];
        if (!name.empty() && equalWithoutCase(name, text.substr(0, name.size())) &&
            (!best || name.size() > names[*best].size())) {
            best = i;
        }
    }
    return best;
}

int fullYear(int number, int digits) {
    if (digits > 2) {
        return number;
    }
    constexpr int firstOfLastCentury = 30;
    return number + (number < firstOfLastCentury ? 2000 : 1900);
}

std::optional<Date> dateOf(const CivilTime& civil) {
    try {
        return Date::fromCivil(civil);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::optional<Date> PatternReader::read(const std::string& pattern) {
    const std::vector<PatternPiece> pieces = patternPieces(pattern);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const bool digitsFollow = i + 1 < pieces.size() && isNumber(pieces[i + 1]);
        if (!takePiece(pieces[i], digitsFollow)) {
            return std::nullopt;
        }
    }
    if (!rest_.empty() || !placeHalfDay()) {
        return std::nullopt;
    }
    return dateOf(civil_);
}

bool PatternReader::takePiece(const PatternPiece& piece, bool digitsFollow) {
    switch (piece.letter) {
    case 'd':
        return takeNumber(2, civil_.day) != 0;
    case 'M':
        return piece.length > 2 ? takeMonth(piece.length) : takeNumber(2, civil_.month) != 0;
    case 'y':
        return takeYear(piece.length < 3 && digitsFollow ? 2 : 4);
    case 'h':
        twelveHours_ = true;
        return takeNumber(2, civil_.hour) != 0;
    case 'H':
        return takeNumber(2, civil_.hour) != 0;
    case 'm':
        return takeNumber(2, civil_.minute) != 0;
    case 's':
        return takeNumber(2, civil_.second) != 0;
    case 't':
        return takeHalfDay();
    default:
        return take(piece.text) || isTrimmedAway(piece.text);
    }
}

/// Blanks at either end of a text are lost where a file or a user leaves them out; an empty
/// half-day text puts them there.
bool PatternReader::isTrimmedAway(std::string_view text) const {
    const bool atEnd = rest_.empty() || rest_.size() == length_;
    return atEnd && trimSpaces(text).empty();
}

bool PatternReader::take(std::string_view text) {
    if (!equalWithoutCase(text, rest_.substr(0, text.size()))) {
        return false;
    }
    rest_.remove_prefix(text.size());
    return true;
}

/// The number of digits read; 0 when there is none.
int PatternReader::takeNumber(int mostDigits, int& number) {
    int digits = 0;
    int value = 0;
    while (digits < mostDigits && !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
        value = value * 10 + (rest_.front() - '0');
        rest_.remove_prefix(1);
        ++digits;
    }
    number = digits > 0 ? value : number;
    return digits;
}

bool PatternReader::takeYear(int mostDigits) {
    const int digits = takeNumber(mostDigits, civil_.year);
    civil_.year = fullYear(civil_.year, digits);
    return digits > 0;
}

bool PatternReader::takeMonth(int length) {
    const auto& names = length == 3 ? locale_.shortMonths : locale_.longMonths;
    const auto month = leadingName(rest_, names);
    if (!month) {
        return false;
    }
    rest_.remove_prefix(names[*month].size());
    civil_.month = static_cast<int>(*month) + 1;
    return true;
}

bool PatternReader::takeHalfDay() {
    // Where one text begins the other, or one is empty, the longer one is meant.
    const bool afternoonFirst = locale_.pmText.size() > locale_.amText.size();
    if (take(afternoonFirst ? locale_.pmText : locale_.amText)) {
        afternoon_ = afternoonFirst;
        return true;
    }
    afternoon_ = !afternoonFirst;
    return take(afternoonFirst ? locale_.amText : locale_.pmText);
}

/// Turns an hour of the half day into one of the day. Where hours run to 23 the half day's text
/// adds nothing.
bool PatternReader::placeHalfDay() {
    if (!twelveHours_ || !afternoon_) {
        return true;
    }
    if (civil_.hour < 1 || civil_.hour > 12) {
        return false;
    }
    civil_.hour = civil_.hour % 12 + (*afternoon_ ? 12 : 0);
    return true;
}

} // namespace tarvik
