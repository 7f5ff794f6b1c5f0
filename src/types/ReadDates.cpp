#include "types/Blanks.h"
#include "types/Convert.h"
#include "types/PatternReader.h"
#include "types/Text.h"

#include <optional>
#include <vector>

namespace tarvik {

namespace {

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

    /// Nothing when the text is no date.
    std::optional<Date> read() {
        CivilTime civil;
        if (!readFields() || !placeTime(civil) || !placeDate(civil)) {
            return std::nullopt;
        }
        return dateOf(civil);
    }

private:
    bool readFields() {
        while (!rest_.empty()) {
            if (!(takeNumber() || takeMonth() || takeHalfDay() || takeSeparator())) {
                return false;
            }
        }
        return !colonBefore_;
    }

    bool takeNumber() {
        constexpr int mostDigits = 4;
        Field field;
        while (field.digits < mostDigits && startsWithDigit()) {
            field.number = field.number * 10 + (rest_.front() - '0');
            rest_.remove_prefix(1);
            ++field.digits;
        }
        if (field.digits == 0 || startsWithDigit()) {
            return false;
        }
        add(field);
        return true;
    }

    bool startsWithDigit() const {
        return !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9';
    }

    /// A number next to a colon belongs to the time; the others are date fields.
    void add(Field field) {
        const bool colonFollows = !rest_.empty() && rest_.front() == ':';
        field.afterColon = colonBefore_;
        (colonBefore_ || colonFollows ? time_ : date_).push_back(field);
        colonBefore_ = false;
    }

    bool takeText(std::string_view text) {
        if (text.empty() || !equalWithoutCase(text, rest_.substr(0, text.size()))) {
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
        if (afternoon_.has_value()) {
            return false;
        }
        const bool am = takeText(locale_.amText) || takeText("AM");
        if (!am && !takeText(locale_.pmText) && !takeText("PM")) {
            return false;
        }
        afternoon_ = !am;
        return true;
    }

    bool takeSeparator() {
        if (const std::size_t blank = leadingBlank(rest_)) {
            rest_.remove_prefix(blank);
            return true;
        }
        if (rest_.front() == ':' && !colonBefore_) {
            colonBefore_ = true;
        } else if (std::string_view("./-,").find(rest_.front()) == std::string_view::npos) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    bool placeTime(CivilTime& civil) const {
        if (time_.empty()) {
            return !afternoon_.has_value();
        }
        if (time_.size() < 2 || time_.size() > 3 || time_.front().afterColon) {
            return false;
        }
        civil.hour = time_[0].number;
        civil.minute = time_[1].number;
        civil.second = time_.size() == 3 ? time_[2].number : 0;
        if (!afternoon_.has_value()) {
            return true;
        }
        const bool inHalfDay = civil.hour >= 1 && civil.hour <= 12;
        civil.hour = civil.hour % 12 + (*afternoon_ ? 12 : 0);
        return inHalfDay;
    }

    bool placeDate(CivilTime& civil) const {
        if (date_.empty()) {
            return !time_.empty();
        }
        if (date_.size() != 3) {
            return false;
        }
        const std::string order = fieldOrder();
        return place(civil, order[0], date_[0]) && place(civil, order[1], date_[1]) &&
               place(civil, order[2], date_[2]);
    }

    /// The letters d, M and y in the order in which the fields stand.
    std::string fieldOrder() const {
        std::string order = date_.front().digits > 2 ? "yMd" : patternOrder();
        for (std::size_t i = 0; i < date_.size(); ++i) {
            if (date_[i].digits == 0) {
                order.erase(order.find('M'), 1);
                order.insert(i, 1, 'M');
                break;
            }
        }
        return order;
    }

    std::string patternOrder() const {
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

    static bool place(CivilTime& civil, char letter, const Field& field) {
        switch (letter) {
        case 'd':
            civil.day = field.number;
            return field.digits == 1 || field.digits == 2;
        case 'M':
            civil.month = field.number;
            return field.digits <= 2;
        default:
            civil.year = fullYear(field.number, field.digits);
            return field.digits > 0;
        }
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
    const std::string& date = locale.shortDate;
    const std::string& time = locale.longTime;
    for (const std::string& pattern : {date + " " + time, date, time + " " + date}) {
        if (const auto read = PatternReader(trimmed, locale).read(pattern)) {
            return *read;
        }
    }
    // Three numbers with dots may be a time as well; the date goes first.
    if (const auto read = DateReader(trimmed, locale).read()) {
        return *read;
    }
    if (const auto read = PatternReader(trimmed, locale).read(time)) {
        return *read;
    }
    raise(ErrorNumber::TypeMismatch);
}

} // namespace tarvik
