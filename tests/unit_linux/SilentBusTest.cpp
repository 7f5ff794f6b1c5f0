#include "NetworkStandIn.h"
#include "Waiting.h"
#include "linux/network/NetworkBus.h"

#include <gtest/gtest.h>

#include <chrono>
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

} // namespace
} // namespace tarvik
