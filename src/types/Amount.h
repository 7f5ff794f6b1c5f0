#pragma once

#include "types/Currency.h"

namespace tarvik {

/// Bytes and time together, as the totals have them.
struct Amount {
    Currency rcvd;     ///< bytes
    Currency sent;     ///< bytes
    Currency duration; ///< milliseconds

    friend bool operator==(const Amount&, const Amount&) = default;
    friend Amount operator+(const Amount& a, const Amount& b) {
        return {a.rcvd + b.rcvd, a.sent + b.sent, a.duration + b.duration};
    }
    friend Amount operator-(const Amount& a, const Amount& b) {
        return {a.rcvd - b.rcvd, a.sent - b.sent, a.duration - b.duration};
    }
};

} // namespace tarvik
