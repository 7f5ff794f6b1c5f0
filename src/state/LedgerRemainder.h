#pragma once

#include <cstdint>
#include <string>

namespace tarvik {

/// What is not in the ledger yet, as the lines that are to be added to it.
struct LedgerRemainder {
    std::uint64_t end = 0; ///< bytes of the ledger without them
    std::string lines;     ///< each with its end

    friend bool operator==(const LedgerRemainder&, const LedgerRemainder&) = default;
};

} // namespace tarvik
