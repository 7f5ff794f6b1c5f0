#include "controls/Layout.h"

#include "controls/TestForm.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Type = LayoutNode::Type;

class LayoutTest : public testing::Test {
protected:
    BareForm form;
    Label first{form, "lblFirst", {.caption = "First"}};
    TextBox second{form, "txtSecond", {}};
    CommandButton third{form, "cmdThird", {.caption = "Third"}};
    Frame border{form, "fraBorder", {"Border"}};
};

TEST_F(LayoutTest, AnItemHoldsItsControlAndAsksForNothingMore) {
    const LayoutNode node = item(first);

    EXPECT_EQ(node.type, Type::Item);
    EXPECT_EQ(node.control, &first);
    EXPECT_EQ(node.characters, 0);
    EXPECT_EQ(node.lines, 0);
    EXPECT_EQ(node.stretch, 0);
}

TEST_F(LayoutTest, AnItemsSizeAndShareCanBeSaidInOneExpression) {
    const LayoutNode node = item(second).wide(20).tall(3).share(2);

    EXPECT_EQ(node.control, &second);
    EXPECT_EQ(node.characters, 20);
    EXPECT_EQ(node.lines, 3);
    EXPECT_EQ(node.stretch, 2);
}

TEST_F(LayoutTest, ANodeCollapsesOnlyIfItIsSaidAndNothingOfItIsVisible) {
    const LayoutNode fixed = item(first);
    const LayoutNode whole = row({item(first), item(second)}).collapsing();

    EXPECT_FALSE(isCollapsed(whole));
    first.setVisible(false);
    EXPECT_FALSE(isCollapsed(whole));
    second.setVisible(false);

    EXPECT_TRUE(isCollapsed(whole));
    EXPECT_FALSE(isCollapsed(fixed));
}

TEST_F(LayoutTest, TheNodesThatTakeNoRoomAreFoundAtEveryDepth) {
    const LayoutNode root = column({row({item(first).collapsing(), item(second)}),
                                    column({item(third).collapsing()}).collapsing()});
    first.setVisible(false);
    third.setVisible(false);

    const std::vector<const LayoutNode*> found = collapsedNodes(root);

    EXPECT_EQ(found,
              (std::vector<const LayoutNode*>{&root.children[0].children[0], &root.children[1]}));
}

TEST_F(LayoutTest, ARowAndAColumnKeepTheirChildrenInOrder) {
    const LayoutNode across = row({item(first), item(second)});
    const LayoutNode down = column({item(second), item(first)}).sameSize();

    EXPECT_EQ(across.type, Type::Row);
    EXPECT_EQ(across.children.at(1).control, &second);
    EXPECT_FALSE(across.alike);
    EXPECT_EQ(down.type, Type::Column);
    EXPECT_EQ(down.children.at(1).control, &first);
    EXPECT_TRUE(down.alike);
}

TEST_F(LayoutTest, AGridKnowsItsColumns) {
    const LayoutNode node = grid(2, {item(first), item(second), blank(), item(third)});

    EXPECT_EQ(node.type, Type::Grid);
    EXPECT_EQ(node.columns, 2);
    EXPECT_EQ(node.children.size(), 4U);
}

TEST_F(LayoutTest, AFrameStandsAroundItsOnlyChild) {
    const LayoutNode node = frame(border, row({item(first)}));

    EXPECT_EQ(node.type, Type::Frame);
    EXPECT_EQ(node.control, &border);
    ASSERT_EQ(node.children.size(), 1U);
    EXPECT_EQ(node.children[0].type, Type::Row);
}

TEST_F(LayoutTest, ADeckKeepsItsChildrenInOrder) {
    const LayoutNode node = deck({item(first), item(second)});

    EXPECT_EQ(node.type, Type::Deck);
    ASSERT_EQ(node.children.size(), 2U);
    EXPECT_EQ(node.children[1].control, &second);
}

TEST_F(LayoutTest, ASpaceTakesOneShareAndABlankNone) {
    EXPECT_EQ(space().type, Type::Space);
    EXPECT_EQ(space().stretch, 1);
    EXPECT_EQ(blank().type, Type::Space);
    EXPECT_EQ(blank().stretch, 0);
}

TEST_F(LayoutTest, TreeOrderGoesRowByRowAndFramesBeforeWhatTheyHold) {
    const LayoutNode tree =
        column({frame(border, grid(2, {item(second), blank(), item(first)})), item(third)});

    EXPECT_EQ(controlsInOrder(tree), (std::vector<Control*>{&border, &second, &first, &third}));
}

} // namespace
} // namespace tarvik
