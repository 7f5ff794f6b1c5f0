#pragma once

#include <cstdint>
#include <random>

namespace tarvik {

/// How a simulated line is used: bursts of transfer between quiet spells.
struct TrafficProfile {
    std::uint32_t rcvdPerSecond = 0;     ///< bytes per second that the line can receive
    std::uint32_t sentPerSecond = 0;     ///< bytes per second that the line can send
    std::uint32_t burstMilliseconds = 0; ///< longest burst
    std::uint32_t quietMilliseconds = 0; ///< longest quiet spell
};

/// Bytes in both directions.
struct TrafficBytes {
    std::uint64_t rcvd = 0;
    std::uint64_t sent = 0;
};

/// The transfer of one session, as a function of its age: the same seed gives the same figures,
/// however often they are asked for.
class SimulatedTraffic {
public:
    SimulatedTraffic(const TrafficProfile& profile, std::uint64_t seed);

    /// Bytes since the session began. The age in milliseconds must not fall from call to call.
    TrafficBytes at(std::uint64_t age);

private:
    struct Phase {
        std::uint64_t begin = 0;
        std::uint64_t length = 0;
        TrafficBytes perSecond;
    };

    void nextPhase();
    std::uint64_t between(std::uint64_t least, std::uint64_t most);
    TrafficBytes transferred(std::uint64_t milliseconds) const;

    TrafficProfile profile_;
    std::mt19937_64 random_;
    Phase phase_;
    TrafficBytes before_; ///< of all phases before this one
    bool burst_ = false;
};

} // namespace tarvik
