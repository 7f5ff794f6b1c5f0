#pragma once

#include "ports/ConnectionProvider.h"
#include "state/mdlTransfers.h"
#include "types/Amount.h"

#include <cstdint>
#include <map>
#include <string>

namespace tarvik::faults {

/// What a line carries, in whole numbers of the harness's own.
struct Figures {
    std::int64_t rcvd = 0; ///< bytes
    std::int64_t sent = 0; ///< bytes
    std::int64_t time = 0; ///< milliseconds

    friend bool operator==(const Figures&, const Figures&) = default;
    friend Figures operator+(const Figures& a, const Figures& b) {
        return {a.rcvd + b.rcvd, a.sent + b.sent, a.time + b.time};
    }
    friend Figures operator-(const Figures& a, const Figures& b) {
        return {a.rcvd - b.rcvd, a.sent - b.sent, a.time - b.time};
    }

    bool covers(const Figures& other) const {
        return rcvd >= other.rcvd && sent >= other.sent && time >= other.time;
    }
    std::string text() const {
        return std::to_string(rcvd) + "/" + std::to_string(sent) + "/" + std::to_string(time);
    }
};

/// What lines have carried, by the names of their entries.
using Sums = std::map<std::string, Figures>;

inline std::string textOf(const Sums& sums) {
    std::string all;
    for (const auto& [line, figures] : sums) {
        all += (all.empty() ? "" : ", ") + line + " " + figures.text();
    }
    return all.empty() ? "nothing" : all;
}

inline Figures figuresOf(const Amount& amount) {
    return {amount.rcvd.integralPart(), amount.sent.integralPart(), amount.duration.integralPart()};
}

inline Figures figuresOf(const Traffic& totals) {
    const auto plain = [](std::uint64_t figure) { return static_cast<std::int64_t>(figure); };
    return {plain(totals.rcvd), plain(totals.sent), plain(totals.milliseconds)};
}

inline Amount amountOf(const Figures& figures) {
    return {.rcvd = Currency::fromWhole(figures.rcvd),
            .sent = Currency::fromWhole(figures.sent),
            .duration = Currency::fromWhole(figures.time)};
}

/// What the program shows.
inline Figures shownNow() {
    return figuresOf(Amount{
        .rcvd = Rcvd().overall(), .sent = Sent().overall(), .duration = Duration().overall()});
}

} // namespace tarvik::faults
