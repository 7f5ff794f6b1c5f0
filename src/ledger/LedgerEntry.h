#pragma once

#include "types/Moment.h"
#include "types/Traffic.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace tarvik {

constexpr std::chrono::minutes quarterHour{15};

/// What one line has carried in a quarter hour of universal time, or in a day that is long past.
struct LedgerEntry {
    enum class Span : std::uint8_t { Quarter, Day };

    Span span = Span::Quarter;
    bool inside = false; ///< within another line, which carried the same once more
    /// The quarter's beginning; of a day its noon, which no summer time moves to another day.
    Moment at{};
    std::chrono::minutes ahead{}; ///< the user's clock, of universal time
    std::string line = {};
    Traffic traffic = {};

    friend bool operator==(const LedgerEntry&, const LedgerEntry&) = default;
};

/// The day of the user's calendar that it belongs to.
inline LocalDay localDayOf(const LedgerEntry& entry) {
    return dayOf(localOf(entry.at, entry.ahead));
}

/// What a plan counts in.
enum class Measure : std::uint8_t { Bytes, Time };

/// "The provider says": so much was used in the plan's period, where this program had counted so
/// much; bytes or milliseconds.
struct ProvidersFigure {
    Measure measure = Measure::Bytes;
    std::uint64_t told = 0;
    std::uint64_t counted = 0;

    friend bool operator==(const ProvidersFigure&, const ProvidersFigure&) = default;
};

/// So much more may be used until the end of the user's day or of the plan's period.
struct Extension {
    std::uint64_t bytes = 0;
    std::uint64_t milliseconds = 0;
    bool today = false;

    friend bool operator==(const Extension&, const Extension&) = default;
};

/// A figure of the provider's or an extension of the same plan does not hold any more.
struct TakenBack {
    bool extension = false;
    Moment at{}; ///< when it was written

    friend bool operator==(const TakenBack&, const TakenBack&) = default;
};

/// So many plans there are at most, with numbers from 1.
constexpr int mostPlans = 9;

/// What the user has said about a plan.
struct LedgerNote {
    Moment at{};
    std::chrono::minutes ahead{}; ///< the user's clock, of universal time
    int plan = 1;                 ///< from 1 to `mostPlans`
    std::variant<ProvidersFigure, Extension, TakenBack> what = {};

    friend bool operator==(const LedgerNote&, const LedgerNote&) = default;
};

/// The first line of a ledger.
struct LedgerHead {
    int version = 0;
    Moment begun{}; ///< from here on nothing is missing
    std::chrono::minutes ahead{};

    friend bool operator==(const LedgerHead&, const LedgerHead&) = default;
};

constexpr int ledgerVersion = 1;

// One line of the file each, with its end. docs/files.md has every byte.
std::string textOf(const LedgerHead& head);
std::string textOf(const LedgerEntry& entry);
std::string textOf(const LedgerNote& note);

/// What a line of the file says; nothing where its sum is wrong or nobody can have meant it.
using LedgerLine = std::variant<std::monostate, LedgerHead, LedgerEntry, LedgerNote>;

/// The line stands without its end.
LedgerLine readLedgerLine(std::string_view line);

/// It begins as the first line of any ledger does, or was cut off before that could be told.
bool mayBeginLedger(std::string_view bytes);

/// The quarter hour that a moment lies in.
inline Moment quarterOf(Moment moment) {
    return Moment(std::chrono::floor<std::chrono::duration<std::int64_t, std::ratio<900>>>(
        moment.time_since_epoch()));
}

} // namespace tarvik
