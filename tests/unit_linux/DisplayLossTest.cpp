#include "linux/face/DisplayLoss.h"

#include <QEventLoop>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace tarvik {
namespace {

constexpr const char* waylandBroke =
    "The Wayland connection broke. Did the Wayland compositor die?";

void save() {
    constexpr std::string_view told = "everything saved";
    EXPECT_EQ(write(STDERR_FILENO, told.data(), told.size()), static_cast<ssize_t>(told.size()));
}

/// Each in a process of its own, which has to end.
class DisplayLossTest : public testing::Test {
protected:
    DisplayLossTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(DisplayLossTest, WhenTheToolkitExitsTheWorkIsFinishedAndTheProcessEndsOrderly) {
    EXPECT_EXIT(
        {
            face::DisplayLoss loss;
            loss.finishWith(save);
            std::exit(1);
        },
        testing::ExitedWithCode(0), "everything saved");
}

TEST_F(DisplayLossTest, WhenTheToolkitTellsOfALostConnectionTheWorkIsFinishedAtOnce) {
    EXPECT_EXIT(
        {
            face::DisplayLoss loss;
            loss.finishWith(save);
            qWarning("%s", waylandBroke);
            _exit(1);
        },
        testing::ExitedWithCode(0), "everything saved");
}

TEST_F(DisplayLossTest, WhenAnotherThreadTellsTheUserInterfaceFinishesTheWork) {
    EXPECT_EXIT(
        {
            const std::thread::id own = std::this_thread::get_id();
            face::DisplayLoss loss;
            loss.finishWith([own] {
                if (std::this_thread::get_id() == own) {
                    save();
                }
            });
            std::thread other([] {
                qWarning("%s", waylandBroke);
                _exit(1);
            });
            QEventLoop().exec();
            other.join();
        },
        testing::ExitedWithCode(0), "everything saved");
}

TEST_F(DisplayLossTest, ALossAfterTheWorkIsDoneIsAnOrderlyEnd) {
    EXPECT_EXIT(
        {
            face::DisplayLoss loss;
            loss.finishWith([] { _exit(9); });
            loss.workIsDone();
            qWarning("%s", waylandBroke);
            _exit(1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DisplayLossTest, ALossThatAnotherThreadTellsWhileTheApplicationIsPutAwayHoldsNobody) {
    EXPECT_EXIT(
        {
            face::DisplayLoss loss;
            loss.finishWith([] { _exit(9); });
            std::thread other([] {
                qWarning("%s", waylandBroke);
                _exit(1);
            });
            loss.workIsDone();
            other.join(); // as the toolkit waits for its own thread
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DisplayLossTest, OtherMessagesAndAnOrderlyEndAreLeftAlone) {
    EXPECT_EXIT(
        {
            {
                face::DisplayLoss loss;
                loss.finishWith([] { _exit(9); });
                qWarning("Something else is not as it should be.");
            }
            std::exit(3);
        },
        testing::ExitedWithCode(3), "not as it should be");
}

} // namespace
} // namespace tarvik
