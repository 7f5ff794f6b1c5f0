#pragma once

#include "linux/network/BusReplies.h"

#include <chrono>
#include <memory>

namespace tarvik {

/// Calls to NetworkManager that have a time limit together.
class BusCalls : public BusReplies {
public:
    explicit BusCalls(sdbus::IConnection& bus) : bus_(bus) {}

    /// The object on that path; a call to it may take what is left of the time.
    std::unique_ptr<sdbus::IProxy> object(const std::string& path);

    Properties propertiesOf(const std::string& path, const std::string& interface) override;
    std::vector<sdbus::ObjectPath> profilePaths() override;
    ProfileSettings settingsOf(const std::string& profile) override;

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds longest{2};

    sdbus::IConnection& bus_;
    Clock::time_point end_ = Clock::now() + longest;
};

} // namespace tarvik
