#include "forms/frmPlan.h"

#include <array>

namespace tarvik {

namespace {
constexpr int listWidth = 20;
constexpr int listLines = 8;
constexpr int sizeWidth = 14;
constexpr int numberWidth = 7;
constexpr int dateWidth = 12;
constexpr int textWidth = 52;
// Room for the longest choice.
constexpr int choiceWidth = 36;
constexpr int periodWidth = 20;
constexpr int standingLines = 2;
constexpr int periodsShown = 3;
} // namespace

Frame& FrmPlan::frameOf(int page) {
    return *std::array{&frameNow, &frameAllowance, &framePeriod, &frameLines, &frameThresholds}.at(
        static_cast<std::size_t>(page));
}

LayoutNode FrmPlan::nowPage() {
    // clang-format off
    return frame(frameNow, column({
        item(lblNow).wide(textWidth).tall(standingLines),
        grid(3, {
            item(lblUsed),   item(prgUsed).share(1),   item(lblUsedPercent),
            item(lblPassed), item(prgPassed).share(1), item(lblPassedPercent),
        }),
        grid(4, {
            item(lblProvider), item(txtProvider).wide(sizeWidth), blank(),                           item(cmdProvider),
            item(lblExtend),   item(txtExtend).wide(sizeWidth),   item(cboExtend).wide(periodWidth), item(cmdExtend),
        }),
        item(lblNowReason),
        row({item(lstNotes).tall(3).share(1), column({item(cmdTakeBack), space()})}).share(1),
        row({item(lblLedger).tall(2).share(1), item(cmdLedger)}),
    }));
    // clang-format on
}

LayoutNode FrmPlan::allowancePage() {
    // clang-format off
    return frame(frameAllowance, column({
        grid(3, {
            item(lblAllowance), item(txtAllowance).wide(sizeWidth), item(lblAllowanceReason).share(1),
            item(lblHours),     item(txtHours).wide(numberWidth),   item(lblHoursReason),
            item(lblCounted),   item(cboCounted).wide(choiceWidth), blank(),
            item(lblRollOver),  item(cboRollOver).wide(choiceWidth), blank(),
            item(lblRollOverMost),  item(txtRollOverMost),          item(lblRollOverMostReason),
            item(lblRollOverHours), item(txtRollOverHours),         item(lblRollOverHoursReason),
            item(lblReserve),   item(txtReserve),                   item(lblReserveReason),
            item(lblDealOut),   item(cboDealOut).wide(choiceWidth), blank(),
        }),
        space(),
    }));
    // clang-format on
}

LayoutNode FrmPlan::periodPage() {
    // clang-format off
    return frame(framePeriod, column({
        grid(3, {
            item(lblPeriod),  item(cboPeriod).wide(periodWidth), blank(),
            item(lblDay),     item(txtDay).wide(numberWidth),   item(lblDayReason).share(1),
            item(lblEvery),   item(txtEvery).wide(numberWidth), item(lblEveryReason),
            item(lblWeekday), item(cboWeekday).wide(periodWidth), blank(),
            item(lblFrom),    item(txtFrom).wide(dateWidth),    item(lblFromReason),
            item(lblUntil),   item(txtUntil).wide(dateWidth),   item(lblUntilReason),
            item(lblHour),    item(cboHour),                    blank(),
        }),
        item(txtPreview).tall(periodsShown).share(1),
    }));
    // clang-format on
}

LayoutNode FrmPlan::linesPage() {
    return frame(frameLines,
                 column({
                     item(optAllLines),
                     item(optTheseLines),
                     row({item(lstLines).share(1), column({item(cmdLine), space()})}).share(1),
                     item(lblLinesReason),
                 }));
}

LayoutNode FrmPlan::thresholdsPage() {
    // clang-format off
    return frame(frameThresholds, column({
        row({item(lstThresholds).tall(5).share(1),
             column({item(cmdAddThreshold), item(cmdRemoveThreshold), space()}).sameSize()}).share(1),
        row({item(chkNote), item(chkWindow).share(1)}),
        grid(3, {
            item(lblPercent),      item(txtPercent).wide(numberWidth), item(lblPercentReason).share(1),
            item(lblHangUp),       item(cboHangUp),                    blank(),
            item(lblGrace),        item(txtGrace).wide(sizeWidth),     item(lblGraceReason),
            item(lblGraceMinutes), item(txtGraceMinutes),              item(lblGraceMinutesReason),
        }),
        row({item(lblProgram), item(txtProgram).share(1), item(lblProgramReason)}),
        item(chkBlock),
    }));
    // clang-format on
}

std::vector<Control*> FrmPlan::standingControls() {
    return {&txtProvider, &cmdProvider, &txtExtend,   &cboExtend, &cmdExtend,
            &lstNotes,    &cmdTakeBack, &lblProvider, &lblExtend};
}

FrmPlan::FrmPlan() : Form("frmPlan", "Velmars Tarvik - Plan") {
    for (int page = now + 1; page < pageCount; ++page) {
        frameOf(page).setVisible(false);
    }
    LayoutNode plans = column({
        item(lstPlans).wide(listWidth).tall(listLines).share(1),
        column({item(cmdNew), item(cmdCopy), item(cmdDelete)}).sameSize(),
    });
    LayoutNode plan = column({
        grid(3, {item(lblName), item(txtName).share(1), item(lblNameReason), item(lblPage),
                 item(cboPage), blank()}),
        deck({nowPage(), allowancePage(), periodPage(), linesPage(), thresholdsPage()}).share(1),
    });
    setLayout(column({
        row({std::move(plans), std::move(plan).share(1)}).share(1),
        row({space(), item(cmdOK), item(cmdCancel)}).sameSize(),
    }));
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setInitialFocus(lstPlans);
}

} // namespace tarvik
