// Lets the program work through years of days on a machine that is played, and holds every figure,
// box and record against a second statement of the rules:
//
//     soak [years for each seed, 1 unless told] [the only seed, else all of the fixed ones]

#include "soak/Run.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

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
    const int years = count > 1 ? std::atoi(arguments[1]) : 1;
    std::vector<std::uint32_t> seeds;
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        seeds.push_back(seed);
    }
    if (count > 2) {
        seeds = {static_cast<std::uint32_t>(std::strtoul(arguments[2], nullptr, 10))};
    }
    Counts all;
    try {
        for (const std::uint32_t seed : seeds) {
            all += spendYears(seed, years);
        }
    } catch (const std::exception& problem) {
        std::printf("soak: %s\n", problem.what());
        return EXIT_FAILURE;
    }
    std::printf("soak: %d years, %d days, %d ticks, %d sessions (%d declined), %d resets, "
                "%d backups, %d restarts, %d boxes, %d balloons\n",
                all.days / daysInYear, all.days, all.ticks, all.sessions, all.declined, all.resets,
                all.backups, all.restarts, all.boxes, all.balloons);
    return EXIT_SUCCESS;
}
