#include "ledger/Unwritten.h"

#include <algorithm>
#include <map>
#include <span>
#include <tuple>
#include <utility>

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

using Entries = std::span<const LedgerEntry>;

std::string linesOf(Entries entries) {
    std::string text;
    for (const LedgerEntry& one : entries) {
        text += textOf(one);
    }
    return text;
}

/// How many of them, from the first one on, find room in so many bytes.
std::size_t countWithin(Entries entries, std::size_t room) {
    std::size_t size = 0;
    std::size_t count = 0;
    for (; count < entries.size(); ++count) {
        size += textOf(entries[count]).size();
        if (size > room) {
            break;
        }
    }
    return count;
}

/// One for each line, at the last moment of any; or one that names none.
std::vector<LedgerEntry> joined(Entries entries, bool named) {
    std::map<std::pair<std::string, bool>, LedgerEntry> sums;
    for (const LedgerEntry& one : entries) {
        const std::string line = named ? one.line : std::string();
        LedgerEntry& sum = sums[{line, one.inside}];
        const Traffic traffic = sum.traffic + one.traffic;
        if (one.at >= sum.at) {
            sum = one;
            sum.line = line;
        }
        sum.traffic = traffic;
    }
    std::vector<LedgerEntry> result;
    result.reserve(sums.size());
    for (auto& [key, sum] : sums) {
        result.push_back(std::move(sum));
    }
    return result;
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
        add(std::move(one));
    }
}

void Unwritten::add(LedgerEntry entry) {
    const auto place = std::lower_bound(
        entries_.begin() + static_cast<std::ptrdiff_t>(begun_), entries_.end(), entry,
        [](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
    if (place != entries_.end() && placeOf(*place) == placeOf(entry)) {
        place->traffic = place->traffic + entry.traffic;
    } else {
        entries_.insert(place, std::move(entry));
    }
}

Unwritten::Unwritten(std::vector<LedgerEntry> left)
    : entries_(std::move(left)), begun_(entries_.size()) {}

void Unwritten::beginWriting(std::size_t room) {
    if (begun_ > 0 || entries_.empty()) {
        return;
    }
    begun_ = countWithin(entries_, std::min(room, longestPortion));
    if (begun_ < entries_.size()) {
        // What is joined later of fewer is no longer.
        const std::size_t rest = linesOf(joined(entries_, true)).size();
        const std::size_t portion = std::max(room - std::min(rest, room), room / 2);
        begun_ = countWithin(entries_, std::min(portion, longestPortion));
    }
    begun_ = std::max<std::size_t>(begun_, 1);
}

std::vector<LedgerEntry> Unwritten::begun() const {
    return {entries_.begin(), entries_.begin() + static_cast<std::ptrdiff_t>(begun_)};
}

void Unwritten::endWriting() {
    entries_.erase(entries_.begin(), entries_.begin() + static_cast<std::ptrdiff_t>(begun_));
    begun_ = 0;
}

void Unwritten::clear() {
    entries_.clear();
    begun_ = 0;
}

std::string Unwritten::textWithin(std::size_t room) const {
    const Entries all(entries_);
    const std::size_t portion =
        std::max(countWithin(all.first(begun_), longestPortion), std::min<std::size_t>(begun_, 1));
    for (const std::size_t asTheyAre : {all.size(), begun_, portion}) {
        if (countWithin(all.first(asTheyAre), room) == asTheyAre) {
            std::string text =
                linesOf(all.first(asTheyAre)) + linesOf(joined(all.subspan(asTheyAre), true));
            if (text.size() <= room) {
                return text;
            }
        }
    }
    const std::vector<LedgerEntry> lines = joined(all.subspan(portion), true);
    std::size_t named = lines.size();
    std::string text;
    do {
        named /= 2;
        text = linesOf(all.first(portion)) + linesOf(Entries(lines).first(named)) +
               linesOf(joined(Entries(lines).subspan(named), false));
    } while (text.size() > room && named > 0);
    return text;
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
