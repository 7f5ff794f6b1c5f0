#include "contracts/FaceContract.h"

namespace tarvik {
namespace {

class MessageBoxContract : public FaceContract {
protected:
    MessageBoxContract() { show(); }
};

TEST_F(MessageBoxContract, ABoxShowsItsTextInLinesAndGivesTheAnswer) {
    using Lines = std::vector<std::string>;
    Lines lines;
    face->atNextBox([&](ShownBox& box) {
        lines = box.lines;
        EXPECT_EQ(box.caption, "Title");
        EXPECT_EQ(box.icon.value_or(MsgBoxIcon::Question), MsgBoxIcon::Question);
        box.press(MsgBoxAnswer::No);
    });

    EXPECT_EQ(face->desktop().messageBox({.text = "one\rtwo\r\nthree <b>",
                                          .buttons = MsgBoxButtons::YesNo,
                                          .icon = MsgBoxIcon::Question,
                                          .caption = "Title"}),
              MsgBoxAnswer::No);
    EXPECT_EQ(lines, (Lines{"one", "two", "three <b>"}));
}

struct AnswerCase {
    MsgBoxButtons buttons;
    MsgBoxAnswer answer;
};

class AnswerContract : public FaceContract, public testing::WithParamInterface<AnswerCase> {};

TEST_P(AnswerContract, EachButtonGivesItsAnswer) {
    face->atNextBox([](ShownBox& box) { box.press(GetParam().answer); });

    EXPECT_EQ(ask(GetParam().buttons), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(All, AnswerContract,
                         testing::Values(AnswerCase{MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok},
                                         AnswerCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Ok},
                                         AnswerCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Cancel},
                                         AnswerCase{MsgBoxButtons::YesNo, MsgBoxAnswer::Yes},
                                         AnswerCase{MsgBoxButtons::YesNo, MsgBoxAnswer::No},
                                         AnswerCase{MsgBoxButtons::YesNoCancel, MsgBoxAnswer::Yes},
                                         AnswerCase{MsgBoxButtons::YesNoCancel, MsgBoxAnswer::No},
                                         AnswerCase{MsgBoxButtons::YesNoCancel,
                                                    MsgBoxAnswer::Cancel}));

class ClosedBoxContract : public FaceContract, public testing::WithParamInterface<AnswerCase> {};

TEST_P(ClosedBoxContract, ClosingABoxDeclines) {
    if (!face->canClose(GetParam().buttons)) {
        GTEST_SKIP() << "this desktop gives such a box no way to be closed";
    }
    face->atNextBox([](ShownBox& box) { box.close(); });

    EXPECT_EQ(ask(GetParam().buttons), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(All, ClosedBoxContract,
                         testing::Values(AnswerCase{MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok},
                                         AnswerCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Cancel},
                                         AnswerCase{MsgBoxButtons::YesNo, MsgBoxAnswer::No},
                                         AnswerCase{MsgBoxButtons::YesNoCancel,
                                                    MsgBoxAnswer::Cancel}));

TEST_F(MessageBoxContract, WhileABoxIsOpenNoTimerTicks) {
    int ticks = 0;
    int rounds = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.timTick.setInterval(10'000);
    form.timTick.setEnabled(true);
    face->atNextBox([&](ShownBox& box) {
        ++rounds;
        face->tickLate(form.timTick);
        box.press(MsgBoxAnswer::Ok);
    });

    ask(MsgBoxButtons::OkOnly);

    EXPECT_EQ(rounds, 1);
    EXPECT_EQ(ticks, 0);
}

} // namespace
} // namespace tarvik
