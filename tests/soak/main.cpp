// Lets the program work through years of days on a machine that is played, and holds every figure,
// box and record against a second statement of the rules:
//
//     soak [years for each seed, 5 unless told] [the only seed, else all of the fixed ones]

#include "soak/Run.h"

#include <cstdio>
#include <cstdlib>

namespace {

using tarvik::soak::Counts;

constexpr int daysInYear = 365;

Counts spendYears(std::uint32_t seed, int years) {
    tarvik::soak::Run run(seed);
    for (int day = 0; day < years * daysInYear; ++day) {
        run.spendDay();
    }
    return run.counts();
}

} // namespace

int main(int count, char** arguments) {
    constexpr std::uint32_t seeds = 12;
    const int years = count > 1 ? std::atoi(arguments[1]) : 5;
    const std::uint32_t only =
        count > 2 ? static_cast<std::uint32_t>(std::strtoul(arguments[2], nullptr, 10)) : 0;
    Counts all;
    try {
        for (std::uint32_t seed = only == 0 ? 1 : only; seed <= (only == 0 ? seeds : only);
             ++seed) {
            all += spendYears(seed, years);
        }
    } catch (const std::exception& problem) {
        std::printf("soak: %s\n", problem.what());
        return EXIT_FAILURE;
    }
    std::printf("soak: %d years, %d days, %d ticks, %d sessions (%d declined, %d doubtful), "
                "%d resets, %d backups, %d restarts, %d boxes, %d balloons\n",
                all.days / daysInYear, all.days, all.ticks, all.sessions, all.declined,
                all.doubtful, all.resets, all.backups, all.restarts, all.boxes, all.balloons);
    return all.ticks > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
