#include "Machine.h"
#include "ports/Clock.h"
#include "simulated/SimulatedLink.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace {

/// A number of the environment; nothing where there is none.
std::optional<std::uint64_t> numberFrom(const char* name) {
    const char* const wish = std::getenv(name);
    const std::string_view text = wish == nullptr ? "" : wish;
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

/// The same moment at any time.
class StandingClock : public tarvik::Clock {
public:
    tarvik::Date currentDate() override { return moment_.dateOnly(); }
    tarvik::Date currentTime() override { return moment_.timeOnly(); }
    std::uint64_t steadyMilliseconds() override { return 0; }
    std::int64_t universalMilliseconds() override { return 0; }
    int minutesAhead(std::int64_t /*universal*/) override { return 0; }

private:
    tarvik::Date moment_ = tarvik::Date::fromCivil(
        {.year = 2026, .month = 11, .day = 16, .hour = 19, .minute = 14, .second = 11});
};

/// The same services with another clock.
tarvik::Platform withClock(const tarvik::Platform& other, tarvik::Clock& clock) {
    return {.connections = other.connections,
            .systemErrors = other.systemErrors,
            .internet = other.internet,
            .sockets = other.sockets,
            .profile = other.profile,
            .files = other.files,
            .instances = other.instances,
            .notificationArea = other.notificationArea,
            .dialogs = other.dialogs,
            .desktop = other.desktop,
            .clock = clock,
            .locale = other.locale,
            .program = other.program};
}

} // namespace

// In the environment TARVIK_DEMO_SEED is the seed of the simulated traffic, 1 unless told. With
// TARVIK_DEMO_AGE the time stands still: every line is that many milliseconds old, and the clock
// shows one moment. So a screenshot of the program is the same each time.
int main(int argc, char** argv) {
    tarvik::Machine machine(argc, argv);
    tarvik::SimulatedLink connections(numberFrom("TARVIK_DEMO_SEED").value_or(1));
    StandingClock standing;
    const std::optional<std::uint64_t> age = numberFrom("TARVIK_DEMO_AGE");
    if (age) {
        connections.standStillAt(*age);
    }
    const tarvik::Platform machines = machine.with(connections);
    tarvik::Platform platform = withClock(machines, age ? standing : machines.clock);
    const tarvik::World world(platform);
    tarvik::Main();
    platform.desktop.run();
    return 0;
}
