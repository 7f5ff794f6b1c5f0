#include "FullBus.h"
#include "NetworkStrangersTest.h"
#include "NoRoomForThreads.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>

namespace tarvik {
namespace {

constexpr const char* busVariable = "DBUS_SYSTEM_BUS_ADDRESS";

/// A line is up and counted, and somebody else floods the bus, or does more against the program.
class NetworkFloodTest : public NetworkStrangersTest {
protected:
    std::uint32_t hangUp() { return connections.RasHangUpA(line); }

    void expectThatTheLineIsCounted(std::uint64_t received) {
        write("tun0", "statistics/rx_bytes", received);
        const auto found = lines();
        EXPECT_EQ(code, 0U);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].hrasconn, line);
        EXPECT_EQ(statisticsOf(line).dwBytesRcved, received);
    }
};

TEST_F(NetworkFloodTest, ABusThatTakesNobodyElseLeavesTheLineAndItsCounting) {
    const FullBus full(service.bus().address());

    for (std::uint64_t look = 1; look <= 5; ++look) {
        stranger.flood(200);
        expectThatTheLineIsCounted(60 + look);
    }

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkFloodTest, ALineIsHungUpThoughTheBusTakesNobodyElse) {
    const FullBus full(service.bus().address());
    stranger.flood(200);

    EXPECT_EQ(hangUp(), 0U);

    EXPECT_EQ(service.deactivated(), std::vector<std::string>{path});
}

TEST_F(NetworkFloodTest, ABusThatRefusesTheNextConnectionLeavesTheLineAndItsCounting) {
    const std::string address = service.bus().address();
    setenv(busVariable, "unix:path=/nonexistent/bus", 1);
    for (std::uint64_t look = 1; look <= 3; ++look) {
        stranger.flood(200);
        expectThatTheLineIsCounted(60 + look);
    }
    setenv(busVariable, address.c_str(), 1);

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkFloodTest, ALineIsHungUpThoughTheBusRefusesTheNextConnection) {
    const std::string address = service.bus().address();
    setenv(busVariable, "unix:path=/nonexistent/bus", 1);
    stranger.flood(200);

    EXPECT_EQ(hangUp(), 0U);

    setenv(busVariable, address.c_str(), 1);
}

TEST_F(NetworkFloodTest, ALineIsHungUpInAFloodThatDoesNotEnd) {
    const Sending sending([this] { stranger.flood(1000); });

    EXPECT_EQ(hangUp(), 0U);

    EXPECT_EQ(service.deactivated(), std::vector<std::string>{path});
}

TEST_F(NetworkFloodTest, ALineIsDialledInAFloodThatDoesNotEnd) {
    service.onActivate = [this](const std::string&) { return path; };
    const Sending sending([this] { stranger.flood(1000); });

    EXPECT_EQ(dial("office"), 0U);

    EXPECT_EQ(handle, line);
}

TEST_F(NetworkFloodTest, LooksInAFloodThatDoesNotEndTakeLittleTimeTogether) {
    stranger.spareOthers(); // they read nothing, and the bus would stop the flood
    NetworkBus bus;
    ASSERT_TRUE(bus.refresh());
    const Sending sending([this] { stranger.floodUnheard(200); });
    ASSERT_TRUE(soon([&] {
        bus.doubtLines();
        bus.refresh();
        return bus.flooded();
    }));
    const auto begin = std::chrono::steady_clock::now();

    for (int look = 0; look < 200; ++look) {
        bus.doubtLines();
        EXPECT_TRUE(bus.refresh());
    }

    // Each by itself may take a tenth of a second, which made twenty.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
}

/// Large signals, of which the socket holds few at a time while the bus keeps the others.
struct LargeFlood {
    const char* name;
    std::size_t bytes;
    int count; ///< of one burst
};

/// The window looks once a second, and no more: each look takes some of what waits away.
class LargeFloodTest : public NetworkFloodTest, public testing::WithParamInterface<LargeFlood> {
protected:
    LargeFloodTest() { stranger.spare(network::service); }

    void send() { stranger.floodUnheard(GetParam().count, GetParam().bytes); }

    /// Who reads one filling of the socket with each look, 219 KB, needs more than 50 of them.
    void expectThatANewLineIsSeenSoon() {
        service.addLine(service.addProfile("second", "gsm"), activated,
                        {sdbus::ObjectPath(service.addDevice("wwan0"))});
        int looks = 1;
        while (lines().size() < 2 && looks < 15) {
            std::this_thread::sleep_for(std::chrono::seconds(1));
            ++looks;
        }
        EXPECT_LT(looks, 15);
    }
};

TEST_P(LargeFloodTest, ALineThatComesUpBehindABurstIsSeenSoon) {
    send();

    expectThatANewLineIsSeenSoon();
}

TEST_P(LargeFloodTest, ALineThatComesUpInAFloodThatDoesNotEndIsSeenSoon) {
    std::atomic<int> sent = 0;
    const Sending sending([&] {
        send();
        ++sent;
    });
    ASSERT_TRUE(soon([&] { return sent > 0; })); // and it goes on

    expectThatANewLineIsSeenSoon();
}

INSTANTIATE_TEST_SUITE_P(Sizes, LargeFloodTest,
                         testing::Values(LargeFlood{"SignalsOf30KB", 30'000, 400},
                                         LargeFlood{"SignalsOf100KB", 100'000, 120},
                                         LargeFlood{"SignalsOf2MB", 2'000'000, 20}),
                         [](const auto& flood) { return std::string(flood.param.name); });

TEST_F(NetworkFloodTest, WithoutRoomForAThreadTheBusIsTakenForNone) {
    NetworkBus bus;
    {
        const NoRoomForThreads noRoom;

        EXPECT_FALSE(bus.refresh());
    }
    EXPECT_TRUE(bus.silent());

    EXPECT_TRUE(soon([&] { return bus.refresh(); }));
}

TEST_F(NetworkFloodTest, WithoutRoomForAThreadTheLineIsCountedInAFlood) {
    const NoRoomForThreads noRoom;
    stranger.flood(200);

    expectThatTheLineIsCounted(900);
}

} // namespace
} // namespace tarvik
