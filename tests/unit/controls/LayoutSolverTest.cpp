#include "controls/LayoutSolver.h"

#include "controls/TestForm.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <ostream>

namespace tarvik {

void PrintTo(const LayoutSize& size, std::ostream* out) {
    *out << size.width << " x " << size.height;
}

void PrintTo(const LayoutRect& rect, std::ostream* out) {
    *out << "{" << rect.left << ", " << rect.top << ", " << rect.width << ", " << rect.height
         << "}";
}

namespace {

using Rects = std::map<std::string, LayoutRect>;

/// Controls of given sizes; a character is 10 wide, a line 20 high. Gaps are 5 across and 3 down.
class LayoutSolverTest : public testing::Test {
protected:
    LayoutSolverTest() {
        metrics.measure = [this](const Control& control, int characters, int lines) {
            ++measured[control.name()];
            const LayoutSize size = sizes.at(&control);
            return LayoutSize{std::max(size.width, characters * 10),
                              std::max(size.height, lines * 20)};
        };
        metrics.horizontalGap = 5;
        metrics.verticalGap = 3;
        metrics.frameLeft = 2;
        metrics.frameTop = 12;
        metrics.frameRight = 4;
        metrics.frameBottom = 6;
    }

    LayoutNode box(const char* name, int width, int height) {
        Label& label = *labels.emplace_back(
            std::make_unique<Label>(form, name, Label::Setup{.caption = name}));
        sizes[&label] = {width, height};
        return item(label);
    }

    LayoutNode hidden(const char* name, int width, int height) {
        LayoutNode node = box(name, width, height);
        node.control->setVisible(false);
        return node;
    }

    LayoutNode framed(const char* name, int titleWidth, LayoutNode child) {
        Frame& border =
            *frames.emplace_back(std::make_unique<Frame>(form, name, Frame::Setup{name}));
        sizes[&border] = {titleWidth, 12};
        return frame(border, std::move(child));
    }

    LayoutSize least(const LayoutNode& root) { return minimumSize(root, metrics); }

    Rects solved(const LayoutNode& root, LayoutSize size = {}) {
        Rects rects;
        for (const PlacedControl& placed : solveLayout(root, metrics, size)) {
            EXPECT_TRUE(rects.emplace(placed.control->name(), placed.rect).second)
                << placed.control->name() << " is placed twice";
        }
        return rects;
    }

    BareForm form;
    std::vector<std::unique_ptr<Label>> labels;
    std::vector<std::unique_ptr<Frame>> frames;
    std::map<const Control*, LayoutSize> sizes;
    std::map<std::string, int> measured;
    LayoutMetrics metrics;
};

TEST_F(LayoutSolverTest, ARowPutsItsItemsSideBySide) {
    const LayoutNode root = row({box("a", 30, 20), box("b", 40, 20)});

    EXPECT_EQ(least(root), (LayoutSize{75, 20}));
    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 30, 20}}, {"b", {35, 0, 40, 20}}}));
}

TEST_F(LayoutSolverTest, AColumnPutsItsItemsBelowEachOtherAtFullWidth) {
    const LayoutNode root = column({box("a", 30, 20), box("b", 40, 10)});

    EXPECT_EQ(least(root), (LayoutSize{40, 33}));
    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 40, 20}}, {"b", {0, 23, 40, 10}}}));
}

TEST_F(LayoutSolverTest, AColumnFillsTheWidthItIsGiven) {
    const LayoutNode root = column({box("a", 30, 20), box("b", 40, 10)});

    EXPECT_EQ(solved(root, {100, 0}), (Rects{{"a", {0, 0, 100, 20}}, {"b", {0, 23, 100, 10}}}));
}

TEST_F(LayoutSolverTest, ALowItemStandsInTheMiddleOfItsRow) {
    const LayoutNode root = row({box("a", 30, 20), box("b", 40, 9)});

    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 30, 20}}, {"b", {35, 5, 40, 9}}}));
}

TEST_F(LayoutSolverTest, ItemsWithoutAShareKeepTheirSizeAlongTheRowAndTheColumn) {
    const Rects across = solved(row({box("a", 30, 20), box("b", 40, 20)}), {200, 20});
    const Rects down = solved(column({box("c", 30, 20), box("d", 40, 20)}), {40, 200});

    EXPECT_EQ(across, (Rects{{"a", {0, 0, 30, 20}}, {"b", {35, 0, 40, 20}}}));
    EXPECT_EQ(down, (Rects{{"c", {0, 0, 40, 20}}, {"d", {0, 23, 40, 20}}}));
}

TEST_F(LayoutSolverTest, SpareRoomIsSharedInProportionAndTheLastTakesTheRounding) {
    const LayoutNode root = row({box("a", 10, 20).share(1), box("b", 10, 20), //
                                 box("c", 10, 20).share(2)});

    // 40 are needed, gaps included.
    EXPECT_EQ(solved(root, {61, 20}),
              (Rects{{"a", {0, 0, 17, 20}}, {"b", {22, 0, 10, 20}}, {"c", {37, 0, 24, 20}}}));
    EXPECT_EQ(solved(root, {62, 20}),
              (Rects{{"a", {0, 0, 17, 20}}, {"b", {22, 0, 10, 20}}, {"c", {37, 0, 25, 20}}}));
}

TEST_F(LayoutSolverTest, AnItemWithAShareGrowsDownItsColumn) {
    const LayoutNode root = column({box("list", 50, 20).share(1), box("ok", 30, 10)});

    EXPECT_EQ(solved(root, {50, 133}),
              (Rects{{"list", {0, 0, 50, 120}}, {"ok", {0, 123, 50, 10}}}));
}

TEST_F(LayoutSolverTest, ASpacePushesApartWithoutAGapOfItsOwn) {
    const LayoutNode root = column({box("a", 30, 20), space(), box("b", 30, 20)});

    EXPECT_EQ(least(root), (LayoutSize{30, 43}));
    EXPECT_EQ(solved(root, {30, 100}), (Rects{{"a", {0, 0, 30, 20}}, {"b", {0, 80, 30, 20}}}));
}

TEST_F(LayoutSolverTest, AGridAlignsItsColumnsAndRows) {
    const LayoutNode root = grid(2, {
                                        box("a", 30, 20), box("b", 60, 10), //
                                        box("c", 50, 10), box("d", 20, 30), //
                                    });

    EXPECT_EQ(least(root), (LayoutSize{115, 53}));
    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 50, 20}},
                                   {"b", {55, 5, 60, 10}},
                                   {"c", {0, 33, 50, 10}},
                                   {"d", {55, 23, 60, 30}}}));
}

TEST_F(LayoutSolverTest, AGridColumnHasTheLargestShareOfItsCells) {
    const LayoutNode root = grid(2, {
                                        box("a", 30, 20), box("b", 60, 20),          //
                                        box("c", 30, 20).share(1), box("d", 60, 20), //
                                    });

    EXPECT_EQ(solved(root, {195, 0}), (Rects{{"a", {0, 0, 130, 20}},
                                             {"b", {135, 0, 60, 20}},
                                             {"c", {0, 23, 130, 20}},
                                             {"d", {135, 23, 60, 20}}}));
}

TEST_F(LayoutSolverTest, TheRowsOfAGridStayAtItsTop) {
    const LayoutNode root = grid(1, {box("a", 30, 20), box("b", 30, 20)});

    EXPECT_EQ(solved(root, {30, 500}), (Rects{{"a", {0, 0, 30, 20}}, {"b", {0, 23, 30, 20}}}));
}

TEST_F(LayoutSolverTest, AnUnfinishedLastRowOfAGridIsLeftEmpty) {
    const LayoutNode root = grid(2, {box("a", 30, 20), box("b", 60, 20), box("c", 30, 20)});

    EXPECT_EQ(least(root), (LayoutSize{95, 43}));
    EXPECT_EQ(solved(root).at("c"), (LayoutRect{0, 23, 30, 20}));
}

TEST_F(LayoutSolverTest, AGridWithoutColumnsHasOne) {
    const LayoutNode root = grid(0, {box("a", 30, 20), box("b", 30, 20)});

    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 30, 20}}, {"b", {0, 23, 30, 20}}}));
}

TEST_F(LayoutSolverTest, ABlankLeavesACellOrAWholeColumnEmpty) {
    const LayoutNode root = grid(3, {
                                        box("a", 30, 20), blank(), box("b", 60, 20), //
                                        blank(), blank(), box("c", 20, 20),          //
                                    });

    EXPECT_EQ(least(root), (LayoutSize{100, 43}));
    EXPECT_EQ(solved(root),
              (Rects{{"a", {0, 0, 30, 20}}, {"b", {40, 0, 60, 20}}, {"c", {40, 23, 60, 20}}}));
}

TEST_F(LayoutSolverTest, AFrameStandsAroundWhatItHoldsAndComesFirst) {
    const LayoutNode root = framed("title", 10, column({box("a", 30, 20)}));

    const auto placed = solveLayout(root, metrics, {});

    EXPECT_EQ(least(root), (LayoutSize{36, 38}));
    ASSERT_EQ(placed.size(), 2U);
    EXPECT_EQ(placed[0].control->name(), "title");
    EXPECT_EQ(placed[0].rect, (LayoutRect{0, 0, 36, 38}));
    EXPECT_EQ(placed[1].rect, (LayoutRect{2, 12, 30, 20}));
}

TEST_F(LayoutSolverTest, AFrameIsAsWideAsItsTitleNeeds) {
    const LayoutNode root = framed("title", 80, box("a", 30, 20));

    EXPECT_EQ(least(root), (LayoutSize{86, 38}));
    EXPECT_EQ(solved(root).at("a"), (LayoutRect{2, 12, 80, 20}));
}

TEST_F(LayoutSolverTest, AnItemWithAShareFillsItsFrame) {
    const LayoutNode root = framed("title", 10, box("a", 30, 20).share(1));

    EXPECT_EQ(solved(root, {36, 118}).at("a"), (LayoutRect{2, 12, 30, 100}));
}

TEST_F(LayoutSolverTest, TheMarginStandsAroundTheWholeForm) {
    metrics.margin = 8;
    const LayoutNode root = row({box("a", 30, 20)});

    EXPECT_EQ(least(root), (LayoutSize{46, 36}));
    EXPECT_EQ(solved(root), (Rects{{"a", {8, 8, 30, 20}}}));
}

TEST_F(LayoutSolverTest, ASizeBelowTheMinimumIsTakenAsTheMinimum) {
    metrics.margin = 8;
    const LayoutNode root = row({box("a", 30, 20).share(1)});

    EXPECT_EQ(solved(root, {45, 35}), (Rects{{"a", {8, 8, 30, 20}}}));
    EXPECT_EQ(solved(root, {47, 37}), (Rects{{"a", {8, 8, 31, 20}}}));
}

TEST_F(LayoutSolverTest, CharactersAndLinesReachTheMeasure) {
    const LayoutNode root = row({box("a", 30, 20).wide(7).tall(2)});

    EXPECT_EQ(least(root), (LayoutSize{70, 40}));
}

TEST_F(LayoutSolverTest, ARowOfTheSameSizeMakesItsItemsEquallyWide) {
    const LayoutNode root = row({box("a", 30, 20), space(), box("b", 50, 20)}).sameSize();

    EXPECT_EQ(least(root), (LayoutSize{105, 20}));
    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 50, 20}}, {"b", {55, 0, 50, 20}}}));
}

TEST_F(LayoutSolverTest, AColumnOfTheSameSizeMakesItsItemsEquallyHigh) {
    const LayoutNode root = column({box("a", 30, 10), box("b", 30, 25)}).sameSize();

    EXPECT_EQ(least(root), (LayoutSize{30, 53}));
    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 30, 25}}, {"b", {0, 28, 30, 25}}}));
}

TEST_F(LayoutSolverTest, WhatIsHiddenKeepsItsRoomAndItsGap) {
    const LayoutNode root = row({box("a", 30, 20), hidden("x", 99, 20), box("b", 40, 20)});

    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 30, 20}}, {"b", {139, 0, 40, 20}}}));
}

TEST_F(LayoutSolverTest, AHiddenItemKeepsItsShare) {
    const LayoutNode root =
        row({box("a", 30, 20).share(1), hidden("x", 99, 20).share(1), box("b", 40, 20)});

    // 179 are needed, gaps included.
    EXPECT_EQ(solved(root, {199, 20}), (Rects{{"a", {0, 0, 40, 20}}, {"b", {159, 0, 40, 20}}}));
}

TEST_F(LayoutSolverTest, AHiddenItemMakesTheOthersAsLargeAsItself) {
    const LayoutNode root = row({box("a", 30, 20), hidden("x", 99, 20)}).sameSize();

    EXPECT_EQ(least(root), (LayoutSize{203, 20}));
}

TEST_F(LayoutSolverTest, AGridRowWithNothingVisibleKeepsItsPlace) {
    const LayoutNode root = grid(2, {
                                        box("a", 30, 20), box("b", 60, 20), //
                                        hidden("x", 99, 50), blank(),       //
                                        box("c", 30, 20), box("d", 60, 20), //
                                    });

    EXPECT_EQ(least(root), (LayoutSize{164, 96}));
    EXPECT_EQ(solved(root).at("c"), (LayoutRect{0, 76, 99, 20}));
}

TEST_F(LayoutSolverTest, AHiddenFrameHidesWhatItHoldsAndKeepsItsRoom) {
    LayoutNode border = framed("title", 10, box("a", 30, 20));
    border.control->setVisible(false);
    const LayoutNode root = row({std::move(border), box("b", 40, 38)});

    EXPECT_EQ(solved(root), (Rects{{"b", {41, 0, 40, 38}}}));
}

TEST_F(LayoutSolverTest, AVisibleFrameIsSeenEvenWhenItHoldsNothingVisible) {
    const LayoutNode root = framed("title", 10, hidden("x", 99, 20));

    EXPECT_EQ(solved(root), (Rects{{"title", {0, 0, 105, 38}}}));
}

TEST_F(LayoutSolverTest, TheSmallestSizeIsTheSameWhateverIsVisible) {
    const LayoutNode root = column({row({box("a", 30, 20), box("b", 40, 25)}),
                                    framed("title", 10, box("c", 90, 20)), box("d", 30, 20)});
    const LayoutSize whole = least(root);

    for (Control* control : controlsInOrder(root)) {
        control->setVisible(false);
        EXPECT_EQ(least(root), whole) << control->name();
    }
    EXPECT_EQ(solved(root, {500, 500}), Rects{});
}

TEST_F(LayoutSolverTest, WhatCollapsesTakesNeitherRoomNorGapWhileItIsHidden) {
    const LayoutNode root =
        column({box("a", 30, 20), box("foot", 90, 10).collapsing(), box("b", 40, 20)});
    EXPECT_EQ(least(root), (LayoutSize{90, 56}));

    root.children[1].control->setVisible(false);

    EXPECT_EQ(least(root), (LayoutSize{40, 43}));
    EXPECT_EQ(solved(root), (Rects{{"a", {0, 0, 40, 20}}, {"b", {0, 23, 40, 20}}}));
}

TEST_F(LayoutSolverTest, WhatCollapsesLeavesItsShareToTheOthers) {
    const LayoutNode root = row({box("a", 30, 20).share(1), //
                                 hidden("x", 99, 20).share(1).collapsing(), box("b", 40, 20)});

    EXPECT_EQ(solved(root, {95, 20}), (Rects{{"a", {0, 0, 50, 20}}, {"b", {55, 0, 40, 20}}}));
}

TEST_F(LayoutSolverTest, WhatCollapsedMakesNoOtherAsLargeAsItself) {
    const LayoutNode root =
        row({box("a", 30, 20), box("b", 40, 20), hidden("x", 99, 20).collapsing()}).sameSize();

    EXPECT_EQ(least(root), (LayoutSize{85, 20}));
}

TEST_F(LayoutSolverTest, AGroupCollapsesWhenNothingOfItIsVisible) {
    const LayoutNode root =
        column({box("a", 30, 20), row({hidden("x", 40, 10), box("y", 40, 10)}).collapsing()});
    EXPECT_EQ(least(root), (LayoutSize{85, 33}));
    EXPECT_EQ(solved(root).at("y"), (LayoutRect{45, 23, 40, 10}));

    root.children[1].children[1].control->setVisible(false);

    EXPECT_EQ(least(root), (LayoutSize{30, 20}));
}

TEST_F(LayoutSolverTest, AFrameCollapsesWithWhatItHolds) {
    LayoutNode border = framed("title", 10, box("c", 30, 20));
    border.control->setVisible(false);
    const LayoutNode root = row({std::move(border).collapsing(), box("b", 40, 38)});

    EXPECT_EQ(least(root), (LayoutSize{40, 38}));
    EXPECT_EQ(solved(root), (Rects{{"b", {0, 0, 40, 38}}}));
}

TEST_F(LayoutSolverTest, AGridRowOfWhatCollapsedTakesNeitherRoomNorGap) {
    const LayoutNode root = grid(2, {
                                        box("a", 30, 20), box("b", 60, 20),        //
                                        hidden("x", 20, 50).collapsing(), blank(), //
                                        box("c", 30, 20), box("d", 60, 20),        //
                                    });

    EXPECT_EQ(least(root), (LayoutSize{95, 43}));
}

TEST_F(LayoutSolverTest, ADeckIsAsLargeAsTheLargestOfItsChildrenWhicheverIsVisible) {
    const LayoutNode root =
        column({deck({hidden("x", 30, 90), box("a", 70, 20), hidden("y", 50, 50)}), //
                box("b", 20, 10)});

    EXPECT_EQ(least(root), (LayoutSize{70, 103}));
    EXPECT_EQ(solved(root).at("b"), (LayoutRect{0, 93, 70, 10}));
}

TEST_F(LayoutSolverTest, TheVisibleChildOfADeckHasTheWholeRoom) {
    const LayoutNode root =
        deck({hidden("x", 30, 90).share(1), framed("title", 10, box("a", 30, 20).share(1))});

    EXPECT_EQ(solved(root, {100, 120}),
              (Rects{{"title", {0, 0, 100, 120}}, {"a", {2, 12, 94, 102}}}));
}

TEST_F(LayoutSolverTest, AnItemWithAShareFillsItsDeck) {
    const LayoutNode root = deck({box("a", 30, 20).share(1)});

    EXPECT_EQ(solved(root, {100, 120}), (Rects{{"a", {0, 0, 100, 120}}}));
}

TEST_F(LayoutSolverTest, EachControlIsMeasuredOnceHoweverDeepItStands) {
    LayoutNode root = row({box("a", 30, 20), hidden("x", 99, 99)});
    for (int i = 0; i < 12; ++i) {
        root = column({std::move(root)});
    }

    solveLayout(root, metrics, {});

    EXPECT_EQ(measured, (std::map<std::string, int>{{"a", 1}, {"x", 1}}));
}

TEST_F(LayoutSolverTest, NestedGroupsShareTheRoomOfTheirGroup) {
    const LayoutNode root = row({column({box("a", 30, 20), box("b", 30, 20), space()}).share(1),
                                 column({box("c", 20, 10), space(), box("d", 20, 10)})});

    EXPECT_EQ(solved(root, {85, 60}), (Rects{{"a", {0, 0, 60, 20}},
                                             {"b", {0, 23, 60, 20}},
                                             {"c", {65, 0, 20, 10}},
                                             {"d", {65, 50, 20, 10}}}));
}

} // namespace
} // namespace tarvik
