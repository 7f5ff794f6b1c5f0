#include "NoRoomForThreads.h"

#include "linux/services/Greeting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>

namespace tarvik {
namespace {

/// A greeting that waits, until the test is over.
class GreetingTest : public testing::Test {
protected:
    ~GreetingTest() override { end.set_value(); }

    Greeting silent(bool mayBe) {
        return Greeting([over = over, mayBe](Greeting::MayBeSilent& mayBeSilent) {
            mayBeSilent = mayBe;
            over.wait();
            return true;
        });
    }

    std::promise<void> end;
    std::shared_future<void> over = end.get_future().share();
    Patience quiet{[] { return false; }};
};

TEST_F(GreetingTest, AnAnswerIsTold) {
    EXPECT_TRUE(Greeting([](auto&) { return true; }).wentWell(quiet));
    EXPECT_FALSE(Greeting([](auto&) { return false; }).wentWell(quiet));
}

TEST_F(GreetingTest, SilenceIsAFault) {
    EXPECT_FALSE(silent(false).wentWell(quiet));
}

TEST_F(GreetingTest, SilenceThatHoldsNothingUpIsNoFault) {
    EXPECT_TRUE(silent(true).wentWell(quiet));
}

TEST_F(GreetingTest, OneThatIsKeptBusyIsLeftBehindTooInTheEnd) {
    const auto stop = std::make_shared<std::atomic<bool>>(false);
    Greeting busy([stop](auto&) {
        while (!*stop) {
            std::this_thread::yield();
        }
        return true;
    });

    EXPECT_FALSE(busy.wentWell(quiet));

    *stop = true;
}

TEST_F(GreetingTest, WithoutRoomForAThreadNothingIsKnown) {
    const NoRoomForThreads noRoom;

    EXPECT_FALSE(Greeting([](auto&) { return true; }).wentWell(quiet));
}

TEST(PatienceTest, TenTurnsAreWaitedFor) {
    Patience patience([] { return false; });
    int turns = 1;
    while (patience.lasts(true)) {
        ++turns;
    }

    EXPECT_EQ(turns, 10);
}

TEST(PatienceTest, TurnsOfABusyMachineCountApart) {
    bool isBusy = true;
    Patience patience([&] { return isBusy; });
    int turns = 1;
    while (turns < 84 && patience.lasts(true)) {
        ++turns;
    }
    isBusy = false;

    EXPECT_EQ(turns, 84);
    EXPECT_TRUE(patience.lasts(true));
}

TEST(ThreadRecordTest, AThreadThatEndsBeforeItsRecordIsReadIsNoFault) {
    std::promise<pid_t> begun;
    std::promise<void> end;
    std::thread thread([&] {
        begun.set_value(gettid());
        end.get_future().wait();
    });
    const std::filesystem::path task("/proc/self/task/" + std::to_string(begun.get_future().get()));
    std::ifstream record(task / "stat");
    end.set_value();
    thread.join();
    // The kernel wakes who joins before it takes the record away.
    while (std::filesystem::exists(task)) {
        std::this_thread::yield();
    }

    EXPECT_TRUE(tellsOfWaiting(record));
}

TEST(PatienceTest, TurnsInWhichTheGreetingDoesSomethingCountApart) {
    Patience patience([] { return false; });
    int turns = 1;
    while (patience.lasts(false)) {
        ++turns;
    }

    EXPECT_EQ(turns, 85);
}

} // namespace
} // namespace tarvik
