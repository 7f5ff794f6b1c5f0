#pragma once

#include "types/NameHash.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace tarvik {

/// Texts that differ, in the order in which they were first added.
class AddressSet {
public:
    AddressSet() = default;
    AddressSet(AddressSet&&) = default;
    AddressSet& operator=(AddressSet&&) = default;
    AddressSet(const AddressSet&) = delete; // the order points into the places
    AddressSet& operator=(const AddressSet&) = delete;

    /// Adds the address unless it is there; its place, counted from 0, either way.
    std::uint32_t add(const std::string& address) {
        const auto count = static_cast<std::uint32_t>(order_.size());
        const auto [entry, added] = places_.emplace(address, count);
        if (added) {
            order_.push_back(&entry->first);
        }
        return entry->second;
    }

    std::size_t size() const { return order_.size(); }
    const std::string& operator[](std::size_t place) const { return *order_[place]; }

    /// How many there are at most that only looking at each tells apart.
    std::size_t crowd() const {
        std::size_t most = 0;
        for (std::size_t i = 0; i < places_.bucket_count(); ++i) {
            most = std::max(most, places_.bucket_size(i));
        }
        return most;
    }

private:
    std::unordered_map<std::string, std::uint32_t, TextHash> places_;
    std::vector<const std::string*> order_;
};

} // namespace tarvik
