#pragma once

#include "BusStranger.h"
#include "NetworkNames.h"
#include "NetworkServiceTest.h"

#include <algorithm>
#include <string>

namespace tarvik {

/// A line is up and counted, and somebody else is on the bus.
class NetworkStrangersTest : public NetworkServiceTest {
protected:
    NetworkStrangersTest() {
        makeInterface("tun0", 7, 50, 60);
        path = addVpn("office");
        line = lines().at(0).hrasconn;
    }

    /// What the service itself tells afterwards is seen, and nothing went wrong on the way there.
    void expectThatMonitoringGoesOn() {
        write("tun0", "statistics/rx_bytes", 900);
        service.addProfile("after", "gsm");
        EXPECT_TRUE(soon([&] {
            const Names names = entries();
            EXPECT_EQ(code, 0U);
            return std::find(names.begin(), names.end(), "after") != names.end();
        }));
        const auto found = lines();
        EXPECT_EQ(code, 0U);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].hrasconn, line);
        EXPECT_EQ(statisticsOf(line).dwBytesRcved, 900U);
    }

    /// Has the program ask for the lines.
    void tellOfLines() { service.tell(path, network::service + ".Connection.Active", "Something"); }

    BusStranger stranger;
    std::string path;
    std::uint32_t line = 0;
};

} // namespace tarvik
