#pragma once

#include "plan/DataSize.h"
#include "types/Moment.h"
#include "types/PlanKey.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

// What the user has agreed with a provider, as he puts it. docs/counting.md tells what follows from
// it, with examples.

constexpr std::size_t mostThresholds = 5;
/// Lines that a plan can name: so that they fit a line of the INI file that is read.
constexpr std::size_t mostPlanLines = 20;
constexpr std::size_t longestPlanName = 256; ///< of a plan and of a line, bytes

enum class PeriodKind : std::uint8_t {
    Month,   ///< from a day of the month, in shorter months from their last day
    Days,    ///< so many days from a date on
    Weeks,   ///< so many weeks from a date on
    Weekday, ///< a week from a day of the week
    Daily,
    Pack, ///< once, from a date until another one or until it is used up
};

/// When a period ends and the next one begins, on the user's clock.
struct PeriodRule {
    PeriodKind kind = PeriodKind::Month;
    int hour = 0;                       ///< 0 to 23, of every beginning and end
    int day = 1;                        ///< of the month, 1 to 31
    int every = 1;                      ///< days or weeks, 1 to 366
    int weekday = 1;                    ///< Monday 1 to Sunday 7
    LocalDay from{};                    ///< of days, weeks and packs
    std::optional<LocalDay> until = {}; ///< of a pack

    friend bool operator==(const PeriodRule&, const PeriodRule&) = default;
};

enum class Counted : std::uint8_t { Both, Received, Sent, Larger };

/// What happens to what was not used: it stays for the next period, never for the one after.
enum class RollOver : std::uint8_t { None, All, UpTo };

/// How what is left is dealt out to the days that are left: each the same; or each its share of the
/// whole period, with what the days before have left of theirs.
enum class DealOut : std::uint8_t { Evenly, CarryOn };

enum class HangUpRule : std::uint8_t { No, AtOnce, AfterGrace };

/// What happens when so much has been used.
struct Threshold {
    int percent = 80; ///< of all that may be used, 1 to 100
    bool note = true;
    bool window = false;
    HangUpRule hangUp = HangUpRule::No;
    DataSize grace = {};      ///< more than that
    int graceMinutes = 0;     ///< more than that, of a plan of hours; 0 to 9999
    std::string program = {}; ///< to run; empty for none

    friend bool operator==(const Threshold&, const Threshold&) = default;
};

/// What was said in one period, by the thresholds' percents.
struct SaidInPeriod {
    LocalMoment period{}; ///< its beginning
    std::vector<int> said = {};
    std::vector<int> hungUp = {};

    friend bool operator==(const SaidInPeriod&, const SaidInPeriod&) = default;
};

struct Plan {
    int number = 1; ///< 1 to `mostPlans`: under it stand its section of the INI file and its notes
    Counted counted = Counted::Both;
    RollOver rollOver = RollOver::None;
    DealOut dealOut = DealOut::Evenly;
    bool blockAfterLast = false; ///< new connections are hung up once the last one is reached
    std::string name = {};
    Moment made{}; ///< what a ledger says of an earlier plan of the same number is not this one's
    /// Names of entries, 20 at most; none for all lines that do not run inside another.
    std::vector<std::string> lines = {};
    std::optional<DataSize> allowance = {};
    std::optional<int> hours = {}; ///< 1 to 99,999
    PeriodRule period = {};
    DataSize rollOverMost = {};
    int rollOverHours = 0;                  ///< at most, 0 to 99,999
    int reservePercent = 0;                 ///< of all that may be used, 0 to 99
    std::vector<Threshold> thresholds = {}; ///< five at most
    std::vector<SaidInPeriod> said = {};    ///< of the last periods, the newest last

    PlanKey key() const { return {.number = number, .made = made}; }

    friend bool operator==(const Plan&, const Plan&) = default;
};

} // namespace tarvik
