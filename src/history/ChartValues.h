#pragma once

#include "state/HistoryData.h"
#include "types/Currency.h"
#include "types/Long.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// What the lists of the history window ask for, as positions in them; a position that there is not
/// asks for nothing.
struct ChartView {
    enum Show { RcvdAndSent = 0, ReceivedOnly = 1, SentOnly = 2, Total = 3, Duration = 4 };
    enum Kind { TotalTransfer = 0, DifferentialTransfer = 1, Percentual = 2 };

    int show = RcvdAndSent;
    int kind = TotalTransfer;
    int unit = 0; ///< each step is a factor of 1024, or of time

    bool asksForQuantity() const { return show >= RcvdAndSent && show <= Duration; }
    bool ofTime() const { return show == Duration; }
    bool inPercent() const { return kind == Percentual; }
    friend bool operator==(const ChartView&, const ChartView&) = default;
};

// Values of record r, from 1. `second` asks for what a second column shows: bytes sent. A record
// that there is not raises SubscriptOutOfRange (9), a part of nothing DivisionByZero (11), and what
// does not fit Overflow (6).

/// Of a record with one before it: as recorded, as the difference to that one, or as a part of the
/// newest.
Currency valueOfLater(const ImportedHistory& log, const ChartView& view, Long r, bool second);
/// Of the first record, to which there is no difference.
Currency valueOfFirst(const ImportedHistory& log, const ChartView& view, Long r, bool second);
/// The value in the chosen unit; in bytes or milliseconds where there is no such unit.
Currency inUnit(const ChartView& view, Currency value);

/// What each column shows, for the key and for reading values off.
std::vector<std::string> columnLabels(const ChartView& view);
/// What the values are measured in; empty for a unit that there is not.
std::string unitOfValues(const ChartView& view);
/// What the values are called; nothing for a unit that there is not.
std::optional<std::string> valueTitle(const ChartView& view);

} // namespace tarvik
