#include "types/Convert.h"
#include "types/DatePattern.h"
#include "types/Text.h"

#include <array>
#include <optional>
#include <vector>

namespace tarvik {

namespace {

constexpr CivilTime dayZero{};

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

/// The position of the name that the text begins with; of several the longest.
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

/// Reads a text that was written with a pattern.
class PatternReader {
public:
    PatternReader(std::string_view text, const LocaleData& locale) : rest_(text), locale_(locale) {}

    std::optional<Date> read(const std::string& pattern) {
        for (const PatternPiece& piece : patternPieces(pattern)) {
            if (!takePiece(piece)) {
                return std::nullopt;
            }
        }
        if (!rest_.empty() || (halfDay_ && (civil_.hour < 1 || civil_.hour > 12))) {
            return std::nullopt;
        }
        if (halfDay_) {
            civil_.hour = civil_.hour % 12 + (afternoon_ ? 12 : 0);
        }
        return dateOf(civil_);
    }

private:
    bool takePiece(const PatternPiece& piece) {
        switch (piece.letter) {
        case 'd':
            return takeNumber(2, civil_.day);
        case 'M':
            return piece.length > 2 ? takeMonth(piece.length) : takeNumber(2, civil_.month);
        case 'y':
            return takeYear();
        case 'H':
        case 'h':
            return takeNumber(2, civil_.hour);
        case 'm':
            return takeNumber(2, civil_.minute);
        case 's':
            return takeNumber(2, civil_.second);
        case 't':
            return takeHalfDay();
        default:
            return take(piece.text);
        }
    }

    bool take(std::string_view text) {
        if (!equalWithoutCase(text, rest_.substr(0, text.size()))) {
            return false;
        }
        rest_.remove_prefix(text.size());
        return true;
    }

    /// The number of digits read; 0 when there is none.
    int takeNumber(int mostDigits, int& number) {
        int digits = 0;
        int value = 0;
        while (digits < mostDigits && !rest_.empty() && rest_.front() >= '0' &&
               rest_.front() <= '9') {
            value = value * 10 + (rest_.front() - '0');
            rest_.remove_prefix(1);
            ++digits;
        }
        number = digits > 0 ? value : number;
        return digits;
    }

    bool takeYear() {
        const int digits = takeNumber(4, civil_.year);
        civil_.year = fullYear(civil_.year, digits);
        return digits > 0;
    }

    bool takeMonth(int length) {
        const auto& names = length == 3 ? locale_.shortMonths : locale_.longMonths;
        const auto month = leadingName(rest_, names);
        if (!month) {
            return false;
        }
        rest_.remove_prefix(names[*month].size());
        civil_.month = static_cast<int>(*month) + 1;
        return true;
    }

    bool takeHalfDay() {
        // Where one text begins the other, the longer one is meant.
        const bool afternoonFirst = locale_.pmText.size() > locale_.amText.size();
        halfDay_ = true;
        afternoon_ = afternoonFirst;
        if (take(afternoonFirst ? locale_.pmText : locale_.amText)) {
            return true;
        }
        afternoon_ = !afternoonFirst;
        return take(afternoonFirst ? locale_.amText : locale_.pmText);
    }

    std::string_view rest_;
    const LocaleData& locale_;
    CivilTime civil_ = dayZero;
    bool halfDay_ = false;
    bool afternoon_ = false;
};

/// One number or month name of a date text.
struct Field {
    int number = 0;
    int digits = 0; ///< 0 for a month's name
    bool afterColon = false;
};

/// Reads a date text that follows no pattern to the letter: it is cut into its fields, the date in
/// the locale's order, the time with colons.
class DateReader {
public:
    DateReader(std::string_view text, const LocaleData& locale) : rest_(text), locale_(locale) {}

    Date read() {
        readFields();
        CivilTime civil = dayZero;
        placeTime(civil);
        placeDate(civil);
        const auto date = dateOf(civil);
        if (!date) {
            refuse();
        }
        return *date;
    }

private:
    [[noreturn]] static void refuse() { raise(ErrorNumber::TypeMismatch); }

    void readFields() {
        while (!rest_.empty()) {
            if (!(takeNumber() || takeMonth() || takeHalfDay() || takeSeparator())) {
                refuse();
            }
        }
    }

    bool takeNumber() {
        Field field;
        while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
            constexpr int mostDigits = 4;
            if (++field.digits > mostDigits) {
                refuse();
            }
            field.number = field.number * 10 + (rest_.front() - '0');
            rest_.remove_prefix(1);
        }
        if (field.digits == 0) {
            return false;
        }
        add(field);
        return true;
    }

    /// A number next to a colon belongs to the time; the others are date fields.
    void add(Field field) {
        const bool colonFollows = !rest_.empty() && rest_.front() == ':';
        field.afterColon = colonBefore_;
        if (colonBefore_ || colonFollows) {
            time_.push_back(field);
        } else {
            date_.push_back(field);
        }
        colonBefore_ = false;
    }

    bool takeText(const std::string& text) {
        if (text.empty() || text.size() > rest_.size() ||
            !equalWithoutCase(text, rest_.substr(0, text.size()))) {
            return false;
        }
        rest_.remove_prefix(text.size());
        return true;
    }

    bool takeMonth() {
        for (const auto* names : {&locale_.longMonths, &locale_.shortMonths}) {
            const auto month = leadingName(rest_, *names);
            if (month) {
                rest_.remove_prefix((*names)[*month].size());
                date_.push_back({.number = static_cast<int>(*month) + 1});
                return true;
            }
        }
        return false;
    }

    bool takeHalfDay() {
        const bool am = takeText(locale_.amText) || takeText("AM");
        if (!am && !takeText(locale_.pmText) && !takeText("PM")) {
            return false;
        }
        if (afternoon_.has_value()) {
            refuse();
        }
        afternoon_ = !am;
        return true;
    }

    bool takeSeparator() {
        if (rest_.front() == ':') {
            colonBefore_ = true;
        } else if (std::string_view(". /-,\t").find(rest_.front()) == std::string_view::npos) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    void placeTime(CivilTime& civil) const {
        if (time_.empty()) {
            if (afternoon_.has_value()) {
                refuse();
            }
            return;
        }
        if (time_.size() < 2 || time_.size() > 3 || time_.front().afterColon) {
            refuse();
        }
        civil.hour = hour(time_[0].number);
        civil.minute = time_[1].number;
        civil.second = time_.size() == 3 ? time_[2].number : 0;
    }

    int hour(int number) const {
        if (!afternoon_.has_value()) {
            return number;
        }
        if (number < 1 || number > 12) {
            refuse();
        }
        return number % 12 + (*afternoon_ ? 12 : 0);
    }

    void placeDate(CivilTime& civil) const {
        if (date_.empty()) {
            if (time_.empty()) {
                refuse();
            }
            return;
        }
        if (date_.size() != 3) {
            refuse();
        }
        const std::string order = fieldOrder();
        for (std::size_t i = 0; i < order.size(); ++i) {
            place(civil, order[i], date_[i]);
        }
    }

    /// The letters d, M and y in the order in which the fields stand.
    std::string fieldOrder() const {
        if (date_.front().digits > 2) {
            return "yMd";
        }
        std::string order;
        for (const PatternPiece& piece : patternPieces(locale_.shortDate)) {
            const bool dateLetter =
                piece.letter == 'd' || piece.letter == 'M' || piece.letter == 'y';
            if (dateLetter && order.find(piece.letter) == std::string::npos) {
                order += piece.letter;
            }
        }
        return order.size() == 3 ? order : "dMy";
    }

    static void place(CivilTime& civil, char letter, const Field& field) {
        if (field.digits == 0 && letter != 'M') {
            refuse();
        }
        switch (letter) {
        case 'd':
            civil.day = shortNumber(field);
            break;
        case 'M':
            civil.month = shortNumber(field);
            break;
        default:
            civil.year = fullYear(field.number, field.digits);
        }
    }

    static int shortNumber(const Field& field) {
        if (field.digits > 2) {
            refuse();
        }
        return field.number;
    }

    std::string_view rest_;
    const LocaleData& locale_;
    std::vector<Field> date_;
    std::vector<Field> time_;
    std::optional<bool> afternoon_;
    bool colonBefore_ = false;
};

} // namespace

Date textToDate(std::string_view text, const LocaleData& locale) {
    const std::string_view trimmed = trimSpaces(text);
    for (const std::string& pattern :
         {locale.shortDate + " " + locale.longTime, locale.shortDate, locale.longTime}) {
        if (const auto date = PatternReader(trimmed, locale).read(pattern)) {
            return *date;
        }
    }
    return DateReader(trimmed, locale).read();
}

} // namespace tarvik
