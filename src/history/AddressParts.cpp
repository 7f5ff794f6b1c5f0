#include "history/AddressParts.h"

#include <cstddef>

namespace tarvik {

std::optional<AddressParts> partsOf(std::string_view address) {
    AddressParts parts;
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

AddressOrder compareParts(const AddressParts& first, const AddressParts& second) {
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

} // namespace tarvik
