#pragma once

#include "NetworkNames.h"
#include "support/TemporaryFolder.h"

#include <string>
#include <sys/types.h>

namespace tarvik {

/// A system bus of its own, which the program finds while this lives. The service's name may be had
/// by the user of the tests.
class SystemBusStandIn {
public:
    explicit SystemBusStandIn(std::string service = network::service);
    ~SystemBusStandIn();
    SystemBusStandIn(const SystemBusStandIn&) = delete;
    SystemBusStandIn& operator=(const SystemBusStandIn&) = delete;

    std::string address() const;

    /// From now on it takes connections and does nothing, or goes on.
    void halt() const;
    void goOn() const;

private:
    std::string busConfiguration(const std::string& socket) const;
    void start();

    std::string service_;
    TemporaryFolder folder_;
    pid_t bus_ = 0;
};

} // namespace tarvik
