#include "history/mdlIPAddresses.h"

#include "startup/mdlTools.h"
#include "types/Text.h"
#include "ui/Forms.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

using Parts = std::array<std::string_view, 4>;

/// Nothing for a text that has not exactly four parts.
std::optional<Parts> partsOf(std::string_view address) {
    Parts parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::size_t dot = address.find('.');
        const bool last = i + 1 == parts.size();
        if (last != (dot == std::string_view::npos)) {
            return std::nullopt;
        }
        parts[i] = address.substr(0, dot);
        address.remove_prefix(last ? address.size() : dot + 1);
    }
    return parts;
}

AddressOrder compareParts(const Parts& first, const Parts& second) {
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (first[i].size() != second[i].size()) {
            return first[i].size() < second[i].size() ? AddressOrder::Before : AddressOrder::After;
        }
        if (first[i] != second[i]) {
            return first[i] < second[i] ? AddressOrder::Before : AddressOrder::After;
        }
    }
    return AddressOrder::NotComparable;
}

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

using Addresses = std::vector<const std::string*>;

/// Puts the address before the first one that it is not after; leaves it out where it meets one
/// that it cannot be compared with.
void insertInOrder(Addresses& sorted, const std::string& address) {
    for (auto place = sorted.begin(); place != sorted.end(); ++place) {
        const AddressOrder order = compare(address, **place);
        if (order == AddressOrder::NotComparable) {
            return;
        }
        if (order != AddressOrder::After) {
            sorted.insert(place, &address);
            return;
        }
    }
    sorted.push_back(&address);
}

/// The same for addresses that all have four parts and no blanks around them: no two of them are
/// equal, and any order of inserting them leads to one result.
Addresses sortedAtOnce(const Addresses& addresses) {
    std::vector<std::pair<Parts, const std::string*>> entries;
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

/// Ascending, as inserting one after the other sorts them.
Addresses sortedAddresses(const Addresses& addresses) {
    const bool plain =
        (addresses.empty() || partsOf(*addresses.front()).has_value()) &&
        std::none_of(addresses.begin(), addresses.end(),
                     [](const std::string* address) { return hasBlanksAround(*address); });
    if (plain) {
        return sortedAtOnce(addresses);
    }
    Addresses sorted;
    for (const std::string* address : addresses) {
        insertInOrder(sorted, *address);
    }
    return sorted;
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
