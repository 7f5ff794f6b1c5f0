#include "history/mdlHistoryLog.h"

#include "forms/Forms.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "ui/mdlGUIFigures.h"

#include <algorithm>

namespace tarvik {

namespace {

const ImportedHistory& importedLog() {
    return forms().frmHistory.data.log;
}

std::string numberText(Currency value) {
    return toText(value, platform().locale.data());
}

std::string orElse(std::string_view text, const char* substitute) {
    return text.empty() ? std::string(substitute) : std::string(text);
}

/// A cell of the list of all records.
std::string cellText(int row, int column) {
    const ImportedHistory& log = importedLog();
    const auto place = static_cast<std::size_t>(row);
    switch (column) {
    case 0:
        return toText(Long(row + 1));
    case 1:
        return orElse(log.date[place], "(no date)");
    case 2:
        return orElse(log.time[place], "(no time)");
    case 3:
        return FinaliseTime(log.duration[place]);
    case 4:
        return numberText(log.sent[place]);
    case 5:
        return numberText(log.rcvd[place]);
    default:
        return orElse(log.ip(place), "[no IP logged]");
    }
}

/// The longest of the texts; the substitute counts where one is missing.
template <class Texts>
std::string longestOf(const Texts& texts, std::string_view substitute = {}) {
    std::string_view longest;
    for (std::size_t place = 0; place < texts.size(); ++place) {
        const std::string_view text = texts[place];
        const std::string_view shown = text.empty() ? substitute : text;
        longest = shown.size() > longest.size() ? shown : longest;
    }
    return std::string(longest);
}

/// How many characters a number takes.
int lengthOf(Currency number) {
    constexpr int decimals = 4;
    constexpr std::int64_t base = 10;
    std::int64_t fraction = number.scaled() % Currency::scale;
    int length = fraction == 0 ? 0 : 1 + decimals;
    for (; fraction != 0 && fraction % base == 0; fraction /= base) {
        --length;
    }
    std::int64_t whole = number.integralPart();
    do {
        ++length;
        whole /= base;
    } while (whole != 0);
    return length + (number < Currency(0) ? 1 : 0);
}

/// The number that takes most characters.
std::string longestNumber(const std::vector<Currency>& numbers) {
    const auto longest =
        std::max_element(numbers.begin(), numbers.end(),
                         [](Currency a, Currency b) { return lengthOf(a) < lengthOf(b); });
    return longest == numbers.end() ? std::string() : numberText(*longest);
}

/// The duration that takes most characters: the longest, or the shortest if it is below zero.
std::string longestDuration(const std::vector<Currency>& durations) {
    if (durations.empty()) {
        return {};
    }
    const auto [least, most] = std::minmax_element(durations.begin(), durations.end());
    const std::string shortest = FinaliseTime(*least);
    const std::string longest = FinaliseTime(*most);
    return shortest.size() > longest.size() ? shortest : longest;
}

/// The longest cell of each column.
std::vector<std::string> longestCells(Long count) {
    const ImportedHistory& log = importedLog();
    const auto missing =
        std::find(log.address.begin(), log.address.end(), ImportedHistory::noAddress);
    const std::string address = longestOf(log.addresses);
    const std::string substitute = missing == log.address.end() ? "" : "[no IP logged]";
    return {toText(count),
            longestOf(log.date, "(no date)"),
            longestOf(log.time, "(no time)"),
            longestDuration(log.duration),
            longestNumber(log.sent),
            longestNumber(log.rcvd),
            address.size() > substitute.size() ? address : substitute};
}

/// Where record `r` stands in the lists; raises SubscriptOutOfRange (9) for one that there is not.
std::size_t placeOf(Long r) {
    if (r < Long(1) || static_cast<std::size_t>(r.value()) > importedLog().sent.size()) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(r.value() - 1);
}

/// "3.) 12.05.2005/14:03:11 (00:12:40:000) S:123456; R:987654 (IP: 10.0.0.1)"
std::string rangeText(Long r) {
    const ImportedHistory& log = importedLog();
    const std::size_t place = placeOf(r);
    return toText(r) + ".) " + std::string(log.date[place]) + "/" + std::string(log.time[place]) +
           " (" + FinaliseTime(log.duration[place]) + ") S:" + numberText(log.sent[place]) +
           "; R:" + numberText(log.rcvd[place]) + " (IP: " + std::string(log.ip(place)) + ")";
}

} // namespace

void ListRecords(Long Count) {
    forms().frmHistory.lvwCompleteLog.setRows(Count.value(), cellText, longestCells(Count));
}

void UpdateStartStop() {
    guarded("UpdateStartStop", [] {
        FrmHistory& history = forms().frmHistory;
        history.txtCurrentStart.setText(rangeText(history.data.start));
        history.txtCurrentStop.setText(rangeText(history.data.stop));
    });
}

void ShowRecord(Long k) {
    const ImportedHistory& log = importedLog();
    const std::size_t place = placeOf(k);
    const auto line = [](const char* name, const char* tabs, std::string_view value) {
        return CR + std::string(name) + tabs + std::string(value);
    };
    MsgBox(std::string("This records data:") + CR + line("ID:  ", "\t\t", toText(k)) +
               line("Date:", "\t\t", log.date[place]) + line("Time:", "\t\t", log.time[place]) +
               line("Duration:  ", "\t", FinaliseTime(log.duration[place])) +
               line("Bytes sent:", "\t", numberText(log.sent[place])) +
               line("Bytes rcvd:", "\t", numberText(log.rcvd[place])) +
               line("IP address:", "\t", log.ip(place)),
           MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
}

} // namespace tarvik
