#include "plan/PlanWords.h"

#include "ledger/LedgerText.h"
#include "types/Escape.h"
#include "types/Text.h"

#include <algorithm>
#include <charconv>

namespace tarvik {

namespace {

constexpr std::string_view betweenNames = "|";
constexpr std::string_view beforeProgram = " | ";
constexpr std::string_view minutesWord = "min";
constexpr char hungUpMark = '!';
constexpr int hoursInDay = 24;
constexpr std::size_t mostSaid = 3;
constexpr std::size_t mostProgram = 1024;
constexpr int mostGraceMinutes = 9999;

std::vector<std::string_view> piecesOf(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + 1);
    }
}

/// Without the blank that a ledger's words have before them.
std::string wordOf(const LedgerWriter& to) {
    return to.text.substr(1);
}

/// "hangup", "hangup+500MB+30min"
std::string hangUpWord(const Threshold& threshold) {
    if (threshold.hangUp == HangUpRule::No) {
        return {};
    }
    if (threshold.hangUp == HangUpRule::AtOnce) {
        return " hangup";
    }
    std::string size = textOf(threshold.grace);
    std::erase(size, ' ');
    return " hangup+" + size + "+" + std::to_string(threshold.graceMinutes) +
           std::string(minutesWord);
}

bool readHangUp(Threshold& threshold, std::string_view word) {
    const auto pieces = piecesOf(word, '+');
    if (pieces[0] != "hangup" || (pieces.size() != 1 && pieces.size() != 3)) {
        return false;
    }
    threshold.hangUp = HangUpRule::AtOnce;
    threshold.grace = {};
    threshold.graceMinutes = 0;
    if (pieces.size() == 1) {
        return true;
    }
    const auto grace = readDataSize(pieces[1]);
    const bool hasUnit = pieces[2].ends_with(minutesWord);
    const auto more =
        readNumber(pieces[2].substr(0, pieces[2].size() - (hasUnit ? minutesWord.size() : 0)), 0,
                   mostGraceMinutes);
    threshold.hangUp = HangUpRule::AfterGrace;
    threshold.grace = grace.value_or(DataSize());
    threshold.graceMinutes = more.value_or(0);
    return grace && hasUnit && more;
}

bool readWord(Threshold& threshold, std::string_view word) {
    if (word == "note") {
        threshold.note = true;
    } else if (word == "window") {
        threshold.window = true;
    } else {
        return readHangUp(threshold, word);
    }
    return true;
}

/// "2026-11-01T00"
std::string hourText(LocalMoment moment) {
    const auto hour = std::chrono::floor<std::chrono::hours>(moment - dayOf(moment)).count();
    return textOf(dayOf(moment)) + (hour < 10 ? "T0" : "T") + std::to_string(hour);
}

std::optional<LocalMoment> readHour(std::string_view text) {
    constexpr std::size_t dateSize = 10;
    const auto day = readDay(text.substr(0, dateSize));
    if (!day || text.size() != dateSize + 3 || text[dateSize] != 'T') {
        return std::nullopt;
    }
    std::string_view digits = text.substr(dateSize + 1);
    digits.remove_prefix(digits[0] == '0' ? 1 : 0);
    const auto hour = readNumber(digits, 0, hoursInDay - 1);
    return hour ? std::optional<LocalMoment>(*day + std::chrono::hours(*hour)) : std::nullopt;
}

std::optional<SaidInPeriod> readPeriod(std::string_view text) {
    constexpr int mostPercent = 100;
    const auto words = piecesOf(text, ' ');
    const auto period = readHour(words[0]);
    SaidInPeriod said{.period = period.value_or(LocalMoment())};
    for (std::size_t i = 1; period && i < words.size(); ++i) {
        const bool isHungUp = words[i].ends_with(hungUpMark);
        const auto percent =
            readNumber(words[i].substr(0, words[i].size() - (isHungUp ? 1 : 0)), 1, mostPercent);
        std::vector<int>& percents = isHungUp ? said.hungUp : said.said;
        if (!percent || percents.size() == mostPercent) {
            return std::nullopt;
        }
        percents.push_back(*percent);
    }
    return period ? std::optional(said) : std::nullopt;
}

} // namespace

std::optional<int> readNumber(std::string_view text, int least, int most) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

std::string textOf(LocalDay day) {
    LedgerWriter to;
    to.day(day);
    return wordOf(to);
}

std::optional<LocalDay> readDay(std::string_view text) {
    LedgerReader from(text);
    const LocalDay day = from.day();
    return from.done() ? std::optional(day) : std::nullopt;
}

std::string textOf(Moment moment) {
    LedgerWriter to;
    to.second(moment);
    return wordOf(to);
}

std::optional<Moment> readMoment(std::string_view text) {
    LedgerReader from(text);
    const Moment moment = from.second();
    return from.done() ? std::optional(moment) : std::nullopt;
}

std::string textOf(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& one : names) {
        text += (text.empty() ? "" : betweenNames);
        text += escaped(one, betweenNames);
    }
    return text;
}

std::optional<std::vector<std::string>> readNames(std::string_view text) {
    std::vector<std::string> names;
    for (const std::string_view piece : piecesOf(text, betweenNames[0])) {
        const auto name = unescaped(piece, betweenNames);
        if (!name) {
            return std::nullopt;
        }
        if (name->size() > longestPlanName || names.size() == mostPlanLines) {
            return std::nullopt;
        }
        if (!name->empty()) {
            names.push_back(*name);
        }
    }
    return names;
}

std::string textOf(const Threshold& threshold) {
    return std::to_string(threshold.percent) + (threshold.note ? " note" : "") +
           (threshold.window ? " window" : "") + hangUpWord(threshold) +
           (threshold.program.empty() ? ""
                                      : std::string(beforeProgram) + escaped(threshold.program));
}

std::optional<Threshold> readThreshold(std::string_view text) {
    constexpr int mostPercent = 100;
    const std::size_t end = std::min(text.find(beforeProgram), text.size());
    const auto words = piecesOf(text.substr(0, end), ' ');
    const auto program =
        unescaped(end < text.size() ? text.substr(end + beforeProgram.size()) : std::string_view());
    const auto percent = readNumber(words[0], 1, mostPercent);
    if (!percent || !program || program->size() > mostProgram) {
        return std::nullopt;
    }
    Threshold threshold{.percent = *percent, .note = false, .program = *program};
    const bool isWhole = std::all_of(words.begin() + 1, words.end(), [&](std::string_view word) {
        return readWord(threshold, word);
    });
    return isWhole ? std::optional(threshold) : std::nullopt;
}

std::string textOf(const std::vector<SaidInPeriod>& said) {
    std::string text;
    for (const SaidInPeriod& one : said) {
        text += (text.empty() ? "" : ";") + hourText(one.period);
        for (const int percent : one.said) {
            text += " " + std::to_string(percent);
        }
        for (const int percent : one.hungUp) {
            text += " " + std::to_string(percent) + hungUpMark;
        }
    }
    return text;
}

std::optional<std::vector<SaidInPeriod>> readSaid(std::string_view text) {
    std::vector<SaidInPeriod> said;
    if (text.empty()) {
        return said;
    }
    for (const std::string_view piece : piecesOf(text, ';')) {
        const auto one = readPeriod(piece);
        if (!one || said.size() == mostSaid) {
            return std::nullopt;
        }
        said.push_back(*one);
    }
    return said;
}

} // namespace tarvik
