#pragma once

#include "state/AddressSet.h"
#include "state/TextColumn.h"
#include "types/Currency.h"
#include "types/Long.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// The records of a log as they were imported. Records are counted from 1, places in the lists from
/// 0.
struct ImportedHistory {
    static constexpr std::uint32_t noAddress = 0xFFFFFFFF;

    std::vector<Currency> sent;         ///< bytes
    std::vector<Currency> rcvd;         ///< bytes
    std::vector<Currency> duration;     ///< milliseconds
    TextColumn date;                    ///< may be empty texts
    TextColumn time;                    ///< may be empty texts
    std::vector<std::uint32_t> address; ///< places in `addresses`, or `noAddress`
    AddressSet addresses;
    /// How many of them belong to records that were read to their end.
    std::size_t addressCount = 0;

    /// The address logged with the record at that place; empty where none was.
    std::string_view ip(std::size_t place) const {
        return address[place] == noAddress ? std::string_view() : addresses[address[place]];
    }
};

/// What the history window remembers.
struct HistoryData {
    ImportedHistory log;
    bool imported = false;     ///< an import has succeeded
    Long start = 0;            ///< first record of the chart; 0 before the first import
    Long stop = 0;             ///< last record of the chart
    std::uint32_t imports = 0; ///< grows whenever `log` becomes another
    /// Grows whenever the chart is filled anew, so that an older filling knows that it is.
    std::uint32_t plots = 0;
    bool refilling = false; ///< the list of units is made anew: its selection is not the user's
    bool working = false;   ///< an import or export is under way
    bool stopped = false;   ///< the user has asked for its end
};

} // namespace tarvik
