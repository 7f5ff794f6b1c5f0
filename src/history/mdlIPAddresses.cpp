#include "history/mdlIPAddresses.h"

#include "forms/Forms.h"
#include "history/InsertedAddresses.h"
#include "state/mdlTools.h"
#include "types/Text.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

using Addresses = std::vector<const std::string*>;

/// How the addresses stand to each other, blanks around them disregarded where they are equal.
AddressOrder compare(const std::string& first, const std::string& second) {
    if (trimSpaces(first) == trimSpaces(second)) {
        return AddressOrder::Equal;
    }
    const auto firstParts = partsOf(first);
    const auto secondParts = partsOf(second);
    return firstParts && secondParts ? compareParts(*firstParts, *secondParts)
                                     : AddressOrder::NotComparable;
}

Addresses sortedByInsertion(const Addresses& addresses) {
    InsertedAddresses sorted;
    for (const std::string* address : addresses) {
        if (const auto parts = partsOf(*address)) {
            sorted.insert(*address, *parts);
        }
    }
    return sorted.all();
}

/// Nothing can be compared with an address that has not four parts, unless it is equal: one that is
/// inserted first stays alone with those, each before the one before it.
Addresses equalToFirst(const Addresses& addresses) {
    Addresses equal;
    std::copy_if(addresses.rbegin(), addresses.rend(), std::back_inserter(equal),
                 [&](const std::string* address) {
                     return trimSpaces(*address) == trimSpaces(*addresses.front());
                 });
    return equal;
}

/// The same for addresses that have no blanks around them: no two of them are equal, and any order
/// of inserting them leads to one result.
Addresses sortedAtOnce(const Addresses& addresses) {
    std::vector<std::pair<AddressParts, const std::string*>> entries;
    entries.reserve(addresses.size());
    for (const std::string* address : addresses) {
        if (const auto parts = partsOf(*address)) {
            entries.emplace_back(*parts, address);
        }
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        return compareParts(a.first, b.first) == AddressOrder::Before;
    });
    Addresses sorted;
    sorted.reserve(entries.size());
    for (const auto& entry : entries) {
        sorted.push_back(entry.second);
    }
    return sorted;
}

bool hasBlanksAround(const std::string& address) {
    return trimSpaces(address).size() != address.size();
}

/// Ascending, as inserting one after the other sorts them, each before the first one that it is not
/// after; one that meets another with which it cannot be compared is left out.
Addresses sortedAddresses(const Addresses& addresses) {
    if (addresses.empty() || !partsOf(*addresses.front())) {
        return equalToFirst(addresses);
    }
    const bool plain =
        std::none_of(addresses.begin(), addresses.end(),
                     [](const std::string* address) { return hasBlanksAround(*address); });
    return plain ? sortedAtOnce(addresses) : sortedByInsertion(addresses);
}

/// All that were imported, in the order in which they appear.
Addresses importedAddresses() {
    const ImportedHistory& log = forms().frmHistory.data.log;
    Addresses result;
    result.reserve(log.addressCount);
    for (std::size_t i = 0; i < log.addressCount; ++i) {
        result.push_back(&log.addresses[i]);
    }
    return result;
}

} // namespace

AddressOrder CompareIPAddresses(const std::string& First, const std::string& Second) {
    return guarded("CompareIPAddresses", AddressOrder::NotComparable,
                   [&](AddressOrder& result) { result = compare(First, Second); });
}

void UpdateIPAddresses(bool ByAddress) {
    guarded("UpdateIPAddresses", [&] {
        Addresses addresses = importedAddresses();
        if (ByAddress) {
            addresses = sortedAddresses(addresses);
        }
        std::string text;
        for (const std::string* address : addresses) {
            text += *address + "\r\n";
        }
        forms().frmHistory.txtStatisticsIP.setText(text.empty() ? "[no IP addresses recorded]"
                                                                : std::move(text));
    });
}

} // namespace tarvik
