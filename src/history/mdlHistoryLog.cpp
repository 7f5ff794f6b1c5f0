#include "history/mdlHistoryLog.h"

#include "ports/Locale.h"
#include "ports/Platform.h"
#include "startup/mdlConst.h"
#include "startup/mdlTools.h"
#include "types/Convert.h"
#include "ui/Forms.h"
#include "ui/mdlGUI.h"

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

template <class Texts>
std::string longestOf(const Texts& texts, std::string longest) {
    for (std::size_t place = 0; place < texts.size(); ++place) {
        if (texts[place].size() > longest.size()) {
            longest = texts[place];
        }
    }
    return longest;
}

/// Of whole numbers, one with the most digits.
Currency longestOf(const std::vector<Currency>& numbers) {
    if (numbers.empty()) {
        return {};
    }
    const auto [least, most] = std::minmax_element(numbers.begin(), numbers.end());
    return numberText(*least).size() > numberText(*most).size() ? *least : *most;
}

std::vector<std::string> longestCells(Long count) {
    const ImportedHistory& log = importedLog();
    return {toText(count),
            longestOf(log.date, "(no date)"),
            longestOf(log.time, "(no time)"),
            FinaliseTime(longestOf(log.duration)),
            numberText(longestOf(log.sent)),
            numberText(longestOf(log.rcvd)),
            longestOf(log.addresses, "[no IP logged]")};
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
