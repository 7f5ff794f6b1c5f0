#include "contracts/FaceUnderTest.h"
#include "contracts/painted/PaintedFace.h"

#include "forms/frmHistory.h"
#include "forms/frmMain.h"
#include "forms/frmOptions.h"
#include "forms/frmPlan.h"
#include "forms/frmPlanWarning.h"
#include "forms/frmStatistics.h"
#include "forms/frmWarning.h"
#include "support/FormOn.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

namespace tarvik {
namespace {

/// The forms of the program, each in a real window.
class FormLooksContract : public testing::TestWithParam<int> {
protected:
    void open(Form& shown) {
        shown.setVisible(true);
        face->settle();
        moveToResolution(shown, GetParam());
        face->settle();
    }
    void close(Form& shown) {
        shown.unload();
        face->settle();
    }

    template <class Shown>
    void hideAndShowEverything() {
        FormOn<Shown> shown{face->desktop()};
        open(shown);
        const auto before = sizeOf(shown);
        for (Control* control : controlsInOrder(*shown.layout())) {
            if (control->name() == "lblPlan") {
                continue; // its line takes room only while it is seen
            }
            for (int i = 0; i < 2; ++i) {
                control->setVisible(!control->visible());
                face->settle();
                EXPECT_EQ(sizeOf(shown), before) << shown.name() << " " << control->name();
            }
        }
        close(shown);
    }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
};

TEST_P(FormLooksContract, NoWindowChangesItsSizeByWhatIsShownOrHidden) {
    hideAndShowEverything<FrmMain>();
    hideAndShowEverything<FrmHistory>();
    hideAndShowEverything<FrmOptions>();
    hideAndShowEverything<FrmPlan>();
    hideAndShowEverything<FrmPlanWarning>();
    hideAndShowEverything<FrmStatistics>();
    hideAndShowEverything<FrmWarning>();
}

TEST_P(FormLooksContract, TheHistoryKeepsItsSizeInEveryOrderOfItsViews) {
    FormOn<FrmHistory> history{face->desktop()};
    open(history);
    const auto before = sizeOf(history);
    const std::array<Frame*, 3> frames{&history.frameHistory, &history.frameStatistics,
                                       &history.frameStatisticsIP};
    for (const std::size_t next : {1U, 0U, 2U, 0U, 1U, 2U, 1U, 0U}) {
        frames.at(next)->setVisible(true); // for a moment there are two
        face->settle();
        EXPECT_EQ(sizeOf(history), before);
        for (Frame* other : frames) {
            other->setVisible(other == frames.at(next));
        }
        face->settle();
        EXPECT_EQ(sizeOf(history), before);
    }
    close(history);
}

TEST_P(FormLooksContract, ARecordOfManyDigitsIsNotCut) {
    FormOn<FrmHistory> history{face->desktop()};
    open(history);
    history.frameHistory.setVisible(false);
    history.frameStatistics.setVisible(true);

    history.txtCurrentStop.setText("10000.) 22.11.2026/23:59:59 (00:12:40:000) S:987654321; "
                                   "R:987654321 (IP: 10.0.1.30)");
    face->settle();

    EXPECT_TRUE(showsWholeText(history.txtCurrentStop));
    close(history);
}

INSTANTIATE_TEST_SUITE_P(At, FormLooksContract, testing::ValuesIn(resolutions()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace tarvik
