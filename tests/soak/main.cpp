// Lets the program work through years of days on a machine that is played, and holds every figure,
// box and record against a second statement of the rules:
//
//     soak [years for each seed, 5 unless told] [the only seed, else all of the fixed ones]
//
// Then come short lives in which the program hardly counts five ticks before it is killed or the
// power is cut, four for each year. Then some of both with a ledger.

#include "soak/Run.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using tarvik::soak::Counts;
using tarvik::soak::Run;

constexpr int daysInYear = 365;
/// A file that is read at each start gets long in a year.
constexpr int daysWithLedger = 10;

Counts spend(std::uint32_t seed, Run::Crashes crashes, int days, bool hasLedger = false) {
    Run run(seed, crashes, hasLedger);
    for (int day = 0; day < days; ++day) {
        run.spendDay();
    }
    return run.counts();
}

/// Each begins anew, with a first run.
Counts spendShortLives(std::uint32_t seed, int lives, bool hasLedger = false) {
    constexpr int days = 10;
    constexpr std::uint32_t seedsOfLives = 1'000;
    Counts all;
    for (int life = 0; life < lives; ++life) {
        all += spend(seed * seedsOfLives + static_cast<std::uint32_t>(life), Run::Crashes::Often,
                     days, hasLedger);
    }
    return all;
}

/// Years in which something never happens tell nothing about it.
bool metEverything(const Counts& all) {
    return std::min({all.ticks, all.failedLooks, all.knownByMark, all.joined, all.pausedAsking,
                     all.diedAsking, all.outOfReach, all.late, all.putAside, all.unwritten,
                     all.undeleted}) > 0;
}

} // namespace

int main(int count, char** arguments) {
    constexpr std::uint32_t seeds = 12;
    const int years = count > 1 ? std::atoi(arguments[1]) : 5;
    const std::uint32_t only =
        count > 2 ? static_cast<std::uint32_t>(std::strtoul(arguments[2], nullptr, 10)) : 0;
    Counts all;
    Counts ledgers;
    try {
        for (std::uint32_t seed = only == 0 ? 1 : only; seed <= (only == 0 ? seeds : only);
             ++seed) {
            all += spend(seed, Run::Crashes::Seldom, years * daysInYear);
            all += spendShortLives(seed, 4 * years);
            ledgers += spend(seed, Run::Crashes::Seldom, years * daysWithLedger, true);
            ledgers += spendShortLives(seed, 2 * years, true);
        }
    } catch (const std::exception& problem) {
        std::printf("soak: %s\n", problem.what());
        return EXIT_FAILURE;
    }
    std::printf("soak: %d years, %d days, %d ticks, %d sessions (%d declined, %d doubtful), "
                "%d resets, %d backups, %d restarts, %d crashes, %d boxes, %d balloons\n",
                all.days / daysInYear, all.days, all.ticks, all.sessions, all.declined,
                all.doubtful, all.resets, all.backups, all.restarts, all.crashes, all.boxes,
                all.balloons);
    std::printf("  %d failed looks for sessions of the run before, %d known by the service's word\n"
                "  %d dials of what was up, %d sleeps and %d deaths at the question\n"
                "  journals: %d out of reach, %d of them in time, %d put aside, %d not written, %d "
                "not deleted\n",
                all.failedLooks, all.knownByMark, all.joined, all.pausedAsking, all.diedAsking,
                all.outOfReach, all.late, all.putAside, all.unwritten, all.undeleted);
    std::printf("  with a ledger: %d days, %d sessions (%d declined), %d restarts, %d crashes\n",
                ledgers.days, ledgers.sessions, ledgers.declined, ledgers.restarts,
                ledgers.crashes);
    if (only != 0 || years < 5) {
        return EXIT_SUCCESS;
    }
    if (!metEverything(all)) {
        std::printf("soak: something that this is made for never happened\n");
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
