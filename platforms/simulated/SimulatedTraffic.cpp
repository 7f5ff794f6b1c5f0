#include "simulated/SimulatedTraffic.h"

namespace tarvik {

namespace {
constexpr std::uint64_t shortestPhase = 400; // milliseconds
} // namespace

SimulatedTraffic::SimulatedTraffic(const TrafficProfile& profile, std::uint64_t seed)
    : profile_(profile), random_(seed) {
    nextPhase();
}

TrafficBytes SimulatedTraffic::at(std::uint64_t age) {
    while (age >= phase_.begin + phase_.length) {
        const TrafficBytes whole = transferred(phase_.length);
        before_ = {before_.rcvd + whole.rcvd, before_.sent + whole.sent};
        nextPhase();
    }
    const TrafficBytes now = transferred(age - phase_.begin);
    return {before_.rcvd + now.rcvd, before_.sent + now.sent};
}

void SimulatedTraffic::nextPhase() {
    burst_ = !burst_;
    phase_.begin += phase_.length;
    phase_.length =
        between(shortestPhase, burst_ ? profile_.burstMilliseconds : profile_.quietMilliseconds);
    // A burst downloads most of the time and uploads now and then; a quiet spell keeps alive.
    const std::uint64_t rcvdShare = burst_ ? between(30, 95) : between(0, 1);
    const std::uint64_t sentShare = burst_ ? between(3, between(5, 80)) : between(0, 1);
    phase_.perSecond = {profile_.rcvdPerSecond * rcvdShare / 100,
                        profile_.sentPerSecond * sentShare / 100};
}

std::uint64_t SimulatedTraffic::between(std::uint64_t least, std::uint64_t most) {
    return least + random_() % (most - least + 1);
}

TrafficBytes SimulatedTraffic::transferred(std::uint64_t milliseconds) const {
    return {phase_.perSecond.rcvd * milliseconds / 1000,
            phase_.perSecond.sent * milliseconds / 1000};
}

} // namespace tarvik
