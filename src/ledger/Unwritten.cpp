#include "ledger/Unwritten.h"

#include <algorithm>
#include <tuple>

namespace tarvik {

namespace {

Traffic portionOf(const Traffic& whole, std::uint32_t part, std::uint32_t all) {
    return {portion(whole.rcvd, part, all), portion(whole.sent, part, all),
            portion(whole.milliseconds, part, all)};
}

Moment within(Moment moment) {
    return std::clamp(moment, firstMoment, lastMoment);
}

std::uint32_t secondsBetween(Moment from, Moment to) {
    return static_cast<std::uint32_t>((to - from).count());
}

auto placeOf(const LedgerEntry& entry) {
    return std::tie(entry.at, entry.line, entry.inside, entry.ahead);
}

} // namespace

std::vector<LedgerEntry> byQuarterHours(const Growth& growth) {
    const Moment to = within(growth.to);
    const Moment from = within(growth.from);
    const bool isSpread = from < to && to - from <= std::chrono::days(1);
    std::vector<LedgerEntry> result;
    Traffic told;
    Moment quarter = quarterOf(isSpread ? from : to);
    do {
        const Moment end = quarter + quarterHour;
        const Traffic untilThen =
            isSpread && end < to
                ? portionOf(growth.traffic, secondsBetween(from, end), secondsBetween(from, to))
                : growth.traffic;
        result.push_back({.inside = growth.inside,
                          .at = quarter,
                          .ahead = growth.ahead,
                          .line = growth.line,
                          .traffic = untilThen - told});
        told = untilThen;
        quarter = end;
    } while (quarter < to);
    std::erase_if(result, [](const LedgerEntry& one) { return one.traffic == Traffic(); });
    return result;
}

void Unwritten::add(const Growth& growth) {
    for (LedgerEntry& one : byQuarterHours(growth)) {
        const auto place =
            std::lower_bound(entries_.begin(), entries_.end(), one,
                             [](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
        if (place != entries_.end() && placeOf(*place) == placeOf(one)) {
            place->traffic = place->traffic + one.traffic;
        } else {
            entries_.insert(place, std::move(one));
        }
    }
}

std::uint64_t Unwritten::bytes() const {
    std::uint64_t sum = 0;
    for (const LedgerEntry& one : entries_) {
        sum = sumUpTo(sum, sumUpTo(one.traffic.rcvd, one.traffic.sent));
    }
    return sum;
}

bool isWriteDue(const Unwritten& unwritten, LedgerOccasion occasion, Moment now,
                std::uint64_t sinceWrite) {
    if (unwritten.entries().empty()) {
        return false;
    }
    if (occasion != LedgerOccasion::Tick) {
        return true;
    }
    const bool quarterIsOver = unwritten.entries().front().at != quarterOf(now);
    return sinceWrite >= betweenLedgerWrites &&
           (quarterIsOver || unwritten.bytes() >= bytesWorthWriting);
}

} // namespace tarvik
