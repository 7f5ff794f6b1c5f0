// The order of addresses: any texts. Held against sorting by inserting one after the other, as the
// comparison alone decides.
//
// Input: the addresses.

#include "FuzzWorld.h"
#include "history/AddressBox.h"
#include "history/mdlIPAddresses.h"

#include <algorithm>
#include <set>
#include <vector>

namespace tarvik::fuzz {
namespace {

using Texts = std::vector<std::string>;

AddressOrder opposite(AddressOrder order) {
    switch (order) {
    case AddressOrder::After:
        return AddressOrder::Before;
    case AddressOrder::Before:
        return AddressOrder::After;
    default:
        return order;
    }
}

bool isBefore(const std::string& a, const std::string& b) {
    return CompareIPAddresses(a, b) == AddressOrder::Before;
}

bool comparable(const std::string& address) {
    return std::count(address.begin(), address.end(), '.') == 3;
}

void requireOrder(const std::string& a, const std::string& b, const std::string& c) {
    require(CompareIPAddresses(a, a) == AddressOrder::Equal, "an address equals itself");
    require(CompareIPAddresses(a, b) == opposite(CompareIPAddresses(b, a)),
            "the other way round the opposite is answered");
    const AddressOrder order = CompareIPAddresses(a, b);
    require(order == AddressOrder::Equal ||
                (order == AddressOrder::NotComparable) == !(comparable(a) && comparable(b)),
            "addresses of four parts compare, others do not");
    if (isBefore(a, b) && isBefore(b, c)) {
        // Equal ones stand apart: blanks count in the order but not for being equal.
        require(CompareIPAddresses(a, c) != AddressOrder::After, "the order does not turn round");
    }
}

Texts sortedByInsertion(const Texts& addresses) {
    Texts sorted;
    for (const std::string& address : addresses) {
        auto place = sorted.begin();
        while (place != sorted.end() &&
               CompareIPAddresses(address, *place) == AddressOrder::After) {
            ++place;
        }
        if (place == sorted.end() ||
            CompareIPAddresses(address, *place) != AddressOrder::NotComparable) {
            sorted.insert(place, address);
        }
    }
    return sorted;
}

void play(Input input) {
    FuzzWorld fuzz;
    ImportedHistory& log = fuzz.world.forms.frmHistory.data.log;
    Texts addresses;
    std::set<std::string> known;
    while (!input.empty()) {
        const std::string address = input.text();
        if (known.insert(address).second) {
            addresses.push_back(address);
            log.addresses.add(address);
        }
    }
    log.addressCount = log.addresses.size();
    for (std::size_t i = 2; i < addresses.size(); ++i) {
        requireOrder(addresses[i - 2], addresses[i - 1], addresses[i]);
    }
    const TextBox& box = fuzz.world.forms.frmHistory.txtStatisticsIP;
    UpdateIPAddresses(true);
    require(box.text() == boxOf(sortedByInsertion(addresses)),
            "sorting inserts one after the other");
    UpdateIPAddresses(false);
    require(box.text() == boxOf(addresses), "by time nothing is moved");
    require(fuzz.boxes.empty(), "comparing raises no error");
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
