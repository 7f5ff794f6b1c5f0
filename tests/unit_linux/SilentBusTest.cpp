#include "NetworkStandIn.h"
#include "Waiting.h"
#include "linux/network/BusCalls.h"
#include "linux/network/NetworkBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

namespace tarvik {
namespace {

/// A system bus that takes connections and says nothing until it is let go on. NetworkManager
/// is on it.
class SilentBusTest : public testing::Test {
protected:
    SilentBusTest() { service.bus().halt(); }
    ~SilentBusTest() override { service.bus().goOn(); }

    NetworkStandIn service;
    int turns = 0;
    NetworkBus bus{[this] {
        ++turns;
        return false;
    }};
};

TEST_F(SilentBusTest, ItIsTakenForNoneAndLeftAlone) {
    EXPECT_FALSE(bus.refresh());

    EXPECT_TRUE(bus.silent());
    EXPECT_FALSE(bus.late());
}

TEST_F(SilentBusTest, ItHoldsTheProgramForATenthOfASecondAtTheMost) {
    bus.refresh();

    EXPECT_EQ(turns, 9); // of 10 ms
}

TEST_F(SilentBusTest, OnlyTheFirstLookWaitsForIt) {
    bus.refresh();
    turns = 0;

    while (bus.silent()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    bus.refresh();

    EXPECT_EQ(turns, 0);
}

TEST_F(SilentBusTest, OneThatAnswersLaterIsTakenAtTheNextLook) {
    bus.refresh();

    service.bus().goOn();

    EXPECT_TRUE(spinUntil([this] { return bus.refresh(); }));
    EXPECT_FALSE(bus.silent());
}

/// A bus that has greeted, and is halted then.
class HaltedSystemBusTest : public SilentBusTest {
protected:
    HaltedSystemBusTest() {
        service.bus().goOn();
        const std::string profile = service.addProfile("office", "vpn");
        line = service.addLine(profile, 2, {});
        EXPECT_TRUE(spinUntil([this] { return bus.refresh() && bus.lines().size() == 1; }));
        service.bus().halt();
    }

    static constexpr std::chrono::seconds ofNetworkManager = BusCalls::longest;

    std::string line;
};

TEST_F(HaltedSystemBusTest, ItIsNotWaitedForAsLongAsNetworkManager) {
    bus.doubtLines();
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_TRUE(bus.refresh());

    EXPECT_LT(std::chrono::steady_clock::now() - begin, ofNetworkManager / 2);
    EXPECT_TRUE(bus.silent());
    EXPECT_EQ(bus.lines().size(), 1U);
}

TEST_F(HaltedSystemBusTest, NorForAnOrder) {
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_THROW(bus.deactivate(line), BusFailure);

    EXPECT_LT(std::chrono::steady_clock::now() - begin, ofNetworkManager / 2);
}

} // namespace
} // namespace tarvik
