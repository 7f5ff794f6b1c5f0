#include "linux/network/LinkSession.h"

namespace tarvik {

namespace {

LinkReading sum(const LinkReading& a, const LinkReading& b) {
    return {.index = b.index,
            .received = a.received + b.received,
            .sent = a.sent + b.sent,
            .packetsReceived = a.packetsReceived + b.packetsReceived,
            .packetsSent = a.packetsSent + b.packetsSent,
            .checksumErrors = a.checksumErrors + b.checksumErrors,
            .frameErrors = a.frameErrors + b.frameErrors,
            .overrunErrors = a.overrunErrors + b.overrunErrors,
            .missed = a.missed + b.missed,
            .aborted = a.aborted + b.aborted};
}

} // namespace

void LinkSession::sample(const LinkReading& reading) {
    // An index is not given again soon; counters that go back tell of a new interface all the same.
    const bool another =
        last_.index != 0 && (reading.index != last_.index || reading.received < last_.received ||
                             reading.sent < last_.sent);
    if (another) {
        before_ = sum(before_, last_);
    }
    last_ = reading;
    total_ = sum(before_, last_);
}

} // namespace tarvik
