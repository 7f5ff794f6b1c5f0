#pragma once

#include "ports/Clock.h"

namespace tarvik {

/// The system's clock in the user's time zone.
class WindowsClock : public Clock {
public:
    Date currentDate() override;
    Date currentTime() override;
    std::uint64_t steadyMilliseconds() override;
    std::int64_t universalMilliseconds() override;
    int minutesAhead(std::int64_t universal) override;
};

} // namespace tarvik
