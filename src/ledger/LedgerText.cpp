#include "ledger/LedgerText.h"

#include "types/Escape.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <utility>

namespace tarvik {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr std::size_t dateSize = 10; // 2026-11-16

bool isWritten(Moment moment) {
    return firstMoment <= moment && moment <= lastMoment;
}

} // namespace

void LedgerWriter::word(std::string_view value) {
    text += ' ';
    text += value;
}

void LedgerWriter::number(std::uint64_t value) {
    std::array<char, 24> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    word({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
}

void LedgerWriter::digits(unsigned value, int count) {
    if (count > 1) {
        digits(value / 10, count - 1);
    }
    text += static_cast<char>('0' + value % 10);
}

void LedgerWriter::date(year_month_day value) {
    text += ' ';
    digits(static_cast<unsigned>(static_cast<int>(value.year())), 4);
    text += '-';
    digits(static_cast<unsigned>(value.month()), 2);
    text += '-';
    digits(static_cast<unsigned>(value.day()), 2);
}

void LedgerWriter::day(LocalDay value) {
    date(year_month_day(value));
}

void LedgerWriter::minute(Moment value) {
    const auto midnight = std::chrono::floor<std::chrono::days>(value);
    const auto minute = static_cast<unsigned>((value - midnight) / minutes(1));
    date(year_month_day(midnight));
    text += 'T';
    digits(minute / 60, 2);
    text += ':';
    digits(minute % 60, 2);
    text += 'Z';
}

void LedgerWriter::second(Moment value) {
    minute(value);
    text.back() = ':';
    digits(static_cast<unsigned>(value.time_since_epoch() / seconds(1) % 60), 2);
    text += 'Z';
}

void LedgerWriter::ahead(minutes value) {
    const auto distance = static_cast<unsigned>(std::abs(value.count()));
    text += value < minutes(0) ? " -" : " +";
    digits(distance / 60, 2);
    text += ':';
    digits(distance % 60, 2);
}

void LedgerWriter::name(std::string_view value) {
    word(escaped(value));
}

std::string_view LedgerReader::word() {
    const std::size_t end = std::min(rest_.find(' '), rest_.size());
    const std::string_view result = rest_.substr(0, end);
    demand(more_ && !result.empty());
    more_ = end < rest_.size();
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return result;
}

std::uint64_t LedgerReader::number() {
    const std::string_view text = word();
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    // A number is written in one way only.
    demand(error == std::errc() && end == text.data() + text.size() &&
           (text.size() == 1 || text[0] != '0'));
    return value;
}

bool LedgerReader::oneOf(std::string_view first, std::string_view second) {
    const std::string_view text = word();
    demand(text == first || text == second);
    return text == second;
}

unsigned LedgerReader::digits(std::string_view text, std::size_t at, std::size_t count,
                              unsigned most) {
    unsigned value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        const bool isDigit = i < text.size() && text[i] >= '0' && text[i] <= '9';
        demand(isDigit);
        value = value * 10 + (isDigit ? static_cast<unsigned>(text[i] - '0') : 0);
    }
    demand(value <= most);
    return value;
}

year_month_day LedgerReader::date(std::string_view text) {
    const year_month_day date{std::chrono::year(static_cast<int>(digits(text, 0, 4, 9999))),
                              std::chrono::month(digits(text, 5, 2, 12)),
                              std::chrono::day(digits(text, 8, 2, 31))};
    demand(text.size() >= dateSize && text[4] == '-' && text[7] == '-' && date.ok() &&
           date.year() >= std::chrono::year(1969));
    return good ? date : year_month_day(std::chrono::sys_days());
}

/// Hours and minutes with a colon between them.
minutes LedgerReader::clock(std::string_view text, std::size_t at, unsigned mostHours) {
    const minutes result =
        hours(digits(text, at, 2, mostHours)) + minutes(digits(text, at + 3, 2, 59));
    demand(text.size() > at + 2 && text[at + 2] == ':');
    return result;
}

LocalDay LedgerReader::day() {
    const std::string_view text = word();
    demand(text.size() == dateSize);
    return LocalDay(date(text));
}

Moment LedgerReader::minute() {
    const std::string_view text = word();
    constexpr std::string_view form = "2026-11-16T07:15Z";
    const Moment result = std::chrono::sys_days(date(text)) + clock(text, dateSize + 1, 23);
    demand(text.size() == form.size() && text[dateSize] == 'T' && text.back() == 'Z' &&
           isWritten(result));
    return result;
}

Moment LedgerReader::second() {
    const std::string_view text = word();
    constexpr std::string_view form = "2026-11-16T07:15:22Z";
    const Moment result = std::chrono::sys_days(date(text)) + clock(text, dateSize + 1, 23) +
                          seconds(digits(text, dateSize + 7, 2, 59));
    demand(text.size() == form.size() && text[dateSize] == 'T' && text[dateSize + 6] == ':' &&
           text.back() == 'Z' && isWritten(result));
    return result;
}

minutes LedgerReader::ahead() {
    const std::string_view text = word();
    const minutes distance = clock(text, 1, 24);
    demand(text.size() == 6 && (text[0] == '+' || text[0] == '-') && distance <= hours(24) &&
           (text[0] == '+' || distance > minutes(0)));
    return good && text[0] == '-' ? -distance : distance;
}

std::string LedgerReader::name() {
    const auto result = unescaped(rest_);
    demand(std::exchange(more_, false) && result.has_value());
    return result.value_or("");
}

} // namespace tarvik
