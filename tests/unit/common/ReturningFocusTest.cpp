#include "common/ReturningFocus.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvik::face {
namespace {

/// Controls by their names; an empty name is none.
using Focus = ReturningFocus<std::string>;

TEST(ReturningFocusTest, AControlThatLostTheFocusGetsItBack) {
    Focus focus;
    focus.disabled("import", "import", "cancel");

    EXPECT_TRUE(focus.enabled("import", "cancel"));
}

TEST(ReturningFocusTest, AlsoWhenNobodyHadItMeanwhile) {
    Focus focus;
    focus.disabled("import", "import", "");

    EXPECT_TRUE(focus.enabled("import", ""));
}

TEST(ReturningFocusTest, ItComesBackOnce) {
    Focus focus;
    focus.disabled("import", "import", "cancel");
    focus.enabled("import", "cancel");

    EXPECT_FALSE(focus.enabled("import", "cancel"));
}

TEST(ReturningFocusTest, AControlWithoutTheFocusGetsNone) {
    Focus focus;
    focus.disabled("list", "import", "import");

    EXPECT_FALSE(focus.enabled("list", "import"));
}

TEST(ReturningFocusTest, AnotherControlThatIsEnabledGetsNone) {
    Focus focus;
    focus.disabled("list", "import", "import");
    focus.disabled("import", "import", "cancel");

    EXPECT_FALSE(focus.enabled("list", "cancel"));
    EXPECT_TRUE(focus.enabled("import", "cancel"));
}

TEST(ReturningFocusTest, TheUsersMoveMeanwhileStands) {
    Focus focus;
    focus.disabled("import", "import", "cancel");

    EXPECT_FALSE(focus.enabled("import", "stop"));
}

TEST(ReturningFocusTest, ItComesBackThroughAllThatHeldItInTurn) {
    Focus focus;
    focus.disabled("import", "import", "lines");
    focus.disabled("lines", "lines", "stop");

    EXPECT_FALSE(focus.enabled("lines", "stop"));
    EXPECT_TRUE(focus.enabled("import", "stop"));
}

TEST(ReturningFocusTest, AControlThatTheUserCameToIsTheNextOwner) {
    Focus focus;
    focus.disabled("import", "import", "cancel");
    focus.disabled("option", "option", "stop");

    EXPECT_FALSE(focus.enabled("import", "stop"));
    EXPECT_TRUE(focus.enabled("option", "stop"));
}

} // namespace
} // namespace tarvik::face
