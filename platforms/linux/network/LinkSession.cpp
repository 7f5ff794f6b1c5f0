#include "linux/network/LinkSession.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

using Count = std::uint64_t LinkReading::*;

constexpr std::array counts{
    &LinkReading::received,     &LinkReading::sent,           &LinkReading::packetsReceived,
    &LinkReading::packetsSent,  &LinkReading::checksumErrors, &LinkReading::alignmentErrors,
    &LinkReading::lengthErrors, &LinkReading::overrunErrors,  &LinkReading::missed,
    &LinkReading::aborted,
};

LinkReading sum(LinkReading a, const LinkReading& b) {
    for (const Count count : counts) {
        a.*count += b.*count;
    }
    return a;
}

} // namespace

void LinkSession::sample(const LinkReading& reading) {
    // An index is not given again soon; counters that go back tell of a new interface all the same.
    if (last_.index != 0 && !countedOn(reading, last_.index, last_)) {
        before_ = total_;
        begin_ = {};
    }
    last_ = reading;
    LinkReading own = reading;
    if (reading.index == begin_.index) {
        for (const Count count : counts) {
            own.*count -= std::min(own.*count, begin_.*count);
        }
    }
    total_ = sum(own, before_);
}

} // namespace tarvik
