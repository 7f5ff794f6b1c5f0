#include "controls/ControlList.h"

#include "controls/Controls.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(ControlListTest, KnowsItsControlsByNameInTheOrderOfDeclaration) {
    ControlList list("list");
    Label first(list, "lblFirst", {.caption = "First"});
    Label second(list, "lblSecond", {.caption = "Second"});

    EXPECT_EQ(list.name(), "list");
    EXPECT_EQ(list.controls(), (std::vector<Control*>{&first, &second}));
    EXPECT_EQ(list.control("lblSecond"), &second);
    EXPECT_EQ(list.control("lblThird"), nullptr);
    EXPECT_EQ(&first.list(), &list);
}

} // namespace
} // namespace tarvik
