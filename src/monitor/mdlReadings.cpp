#include "monitor/mdlReadings.h"

#include "connection/mdlCode.h"

#include <cstring>

namespace tarvik {

namespace {

/// What a counter of 32 bits has gained, also when it has passed its end meanwhile.
std::uint32_t gained(std::uint32_t before, std::uint32_t now) {
    return now - before;
}

/// Frames take longer than bytes to pass their end: where both have fallen, they were counted anew.
bool anewRcvd(const RAS_STATS& before, const RAS_STATS& now) {
    return now.dwBytesRcved < before.dwBytesRcved && now.dwFramesRcved < before.dwFramesRcved;
}

bool anewSent(const RAS_STATS& before, const RAS_STATS& now) {
    return now.dwBytesXmited < before.dwBytesXmited && now.dwFramesXmited < before.dwFramesXmited;
}

/// Another program may have cleared the counters, always both directions at once.
bool cleared(const RAS_STATS& before, const RAS_STATS& now) {
    return anewRcvd(before, now) || anewSent(before, now);
}

/// The time since the connection was established never falls, but starts again at its end after
/// seven weeks. A reading that close to the end is only then the first of another session when
/// everything else was counted anew, too.
bool younger(const RAS_STATS& before, const RAS_STATS& now) {
    constexpr std::uint32_t day = 24 * 60 * 60 * 1000;
    return now.dwConnectDuration < before.dwConnectDuration &&
           (gained(before.dwConnectDuration, now.dwConnectDuration) > day ||
            (anewRcvd(before, now) && anewSent(before, now)));
}

bool tellsFrames(const RAS_STATS& statistics) {
    return statistics.dwFramesRcved != 0 || statistics.dwFramesXmited != 0;
}

/// Whether bytes that have fallen can have passed the end of their counter: in as many frames, and
/// one that was not counted yet. Without frames a gain of half the counter's range and more between
/// two looks is none: a line that fast would be looked at more often.
bool canHavePassedTheEnd(std::uint32_t bytes, std::uint32_t frames, bool framed) {
    constexpr std::uint64_t largestFrame = 65'536;
    constexpr std::uint32_t halfTheRange = 0x8000'0000;
    return framed ? bytes <= (std::uint64_t{frames} + 1) * largestFrame : bytes < halfTheRange;
}

/// Bytes have fallen, and nothing can have carried what they would have gained.
bool impossible(const RAS_STATS& before, const RAS_STATS& now) {
    const bool framed = tellsFrames(before) || tellsFrames(now);
    const bool rcvd = now.dwBytesRcved >= before.dwBytesRcved ||
                      canHavePassedTheEnd(gained(before.dwBytesRcved, now.dwBytesRcved),
                                          gained(before.dwFramesRcved, now.dwFramesRcved), framed);
    const bool sent =
        now.dwBytesXmited >= before.dwBytesXmited ||
        canHavePassedTheEnd(gained(before.dwBytesXmited, now.dwBytesXmited),
                            gained(before.dwFramesXmited, now.dwFramesXmited), framed);
    return !cleared(before, now) && !(rcvd && sent);
}

/// Whether figures under a new handle can be of the same session: none of them has fallen.
bool continues(const Traffic& before, const Traffic& now) {
    return now.milliseconds >= before.milliseconds && now.rcvd >= before.rcvd &&
           now.sent >= before.sent;
}

} // namespace

bool isConnected(std::uint32_t handle) {
    bool connected = false;
    ReadStatus(handle, connected);
    return connected;
}

std::optional<RAS_STATS> figuresOf(std::uint32_t handle, bool& failed) {
    bool connected = false;
    failed = ReadStatus(handle, connected) != ras::success;
    if (!connected) {
        return std::nullopt;
    }
    RAS_STATS statistics{};
    failed = ReadStatistics(handle, statistics) != ras::success;
    return failed ? std::nullopt : std::optional(statistics);
}

bool sameEntry(const RASCONNA& a, const RASCONNA& b) {
    return std::strncmp(a.szEntryName, b.szEntryName, sizeof a.szEntryName) == 0;
}

Traffic totalsOf(const RAS_STATS& Statistics) {
    return {.rcvd = Statistics.dwBytesRcved,
            .sent = Statistics.dwBytesXmited,
            .milliseconds = Statistics.dwConnectDuration};
}

bool isAnother(const LineSession& Session, const RAS_STATS& Now,
               const std::optional<Traffic>& Wide) {
    // After a hang-up by the program, too, any fall tells: a line that lingers does not fall.
    if (Session.renumbered || Session.hungUp) {
        return Wide ? !continues(Session.totals, *Wide)
                    : !continues(totalsOf(Session.last), totalsOf(Now));
    }
    return Wide ? Wide->milliseconds < Session.totals.milliseconds
                : younger(Session.last, Now) || impossible(Session.last, Now);
}

void addGain(Traffic& Totals, const RAS_STATS& Before, const RAS_STATS& Now) {
    const bool anew = cleared(Before, Now);
    Totals.rcvd += anew ? Now.dwBytesRcved : gained(Before.dwBytesRcved, Now.dwBytesRcved);
    Totals.sent += anew ? Now.dwBytesXmited : gained(Before.dwBytesXmited, Now.dwBytesXmited);
    Totals.milliseconds += gained(Before.dwConnectDuration, Now.dwConnectDuration);
}

} // namespace tarvik
