#include "ProgramTest.h"

#include "ui/mdlGUIFigures.h"

#include <algorithm>
#include <vector>

namespace tarvik {
namespace {

/// A window is as large after whatever it shows or hides as it was before.
class WindowSizeTest : public ProgramTest {
protected:
    struct View {
        Qt::Key mnemonic;
        const Frame* frame;
    };

    View history() { return {Qt::Key_H, &frmHistory().frameHistory}; }
    View statistics() { return {Qt::Key_S, &frmHistory().frameStatistics}; }
    View addresses() { return {Qt::Key_I, &frmHistory().frameStatisticsIP}; }

    /// Goes from view to view by their keys, and back to each from every other.
    void walkViews(const QWidget& shown) {
        const QSize before = shown.size();
        for (const View& view : {statistics(), history(), addresses(), statistics(), addresses(),
                                 history(), statistics(), history()}) {
            press(frmHistory(), view.mnemonic, Qt::AltModifier);
            EXPECT_TRUE(widget(*view.frame).isVisible()) << view.frame->name();
            EXPECT_EQ(shown.size(), before) << "at " << view.frame->name();
        }
    }

    static void hide(Control& control, bool hidden) {
        control.setVisible(!hidden);
        takeQueued();
    }

    /// Hides all of them one after the other and shows them again in the order given.
    static void hideAndShow(const std::vector<Control*>& hidden,
                            const std::vector<Control*>& shown) {
        QWidget& whole = window(hidden.front()->list());
        const QSize before = whole.size();
        for (Control* control : hidden) {
            hide(*control, true);
            EXPECT_EQ(whole.size(), before) << "without " << control->name();
        }
        for (Control* control : shown) {
            hide(*control, false);
            EXPECT_EQ(whole.size(), before) << "with " << control->name();
        }
    }

    static std::vector<Control*> framesOf(const Form& form) {
        std::vector<Control*> frames = controlsInOrder(*form.layout());
        std::erase_if(frames,
                      [](const Control* each) { return each->kind() != ControlKind::Frame; });
        std::sort(frames.begin(), frames.end());
        return frames;
    }
};

TEST_F(WindowSizeTest, StaysWhicheverViewIsChosenBeforeAnyImport) {
    walkViews(open(frmHistory()));
}

TEST_F(WindowSizeTest, StaysWhicheverViewIsChosenAfterAnImport) {
    QWidget& shown = open(frmHistory());
    const QSize before = shown.size();

    importRecords(30);

    EXPECT_EQ(shown.size(), before);
    walkViews(shown);
}

TEST_F(WindowSizeTest, StaysAsTheUserMadeIt) {
    QWidget& shown = open(frmHistory());
    shown.resize(shown.width() + 60, shown.height() + 40);
    takeQueued();

    walkViews(shown);
}

TEST_F(WindowSizeTest, IsTheSmallestInWhichEveryViewFits) {
    QWidget& shown = open(frmHistory());

    EXPECT_EQ(shown.size(), shown.sizeHint());
    for (const View& view : {history(), statistics(), addresses()}) {
        press(frmHistory(), view.mnemonic, Qt::AltModifier);
        const QWidget& frame = widget(*view.frame);
        EXPECT_GE(frame.width(), frame.minimumSizeHint().width()) << view.frame->name();
        EXPECT_GE(frame.height(), frame.minimumSizeHint().height()) << view.frame->name();
    }
}

TEST_F(WindowSizeTest, StaysInWhateverOrderFramesComeAndGo) {
    for (Form* form : windows()) {
        std::vector<Control*> order = framesOf(*form);
        if (order.empty()) {
            continue;
        }
        open(*form);
        const std::vector<Control*> first = order;
        do {
            hideAndShow(first, order);
            hideAndShow(order, first);
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST_F(WindowSizeTest, StaysWhateverTheCaptionsOfTheMainWindowSay) {
    QWidget& shown = open(frmMain());
    const QSize before = shown.size();

    for (const TransferUnit unit : {TransferUnit::KiloBytes, TransferUnit::MegaBytes,
                                    TransferUnit::GigaBytes, TransferUnit::Bytes}) {
        SetLabelUnitTransfer(frmMain().lblTransferCurrent, "current ", unit);
        SetLabelUnitTransfer(frmMain().lblTransferTotal, "total ", unit);
        takeQueued();
        EXPECT_EQ(shown.size(), before) << frmMain().lblTransferCurrent.caption();
    }
    press(frmMain(), Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(frmMain().cmdMonitor.caption(), "Stop Monitoring");
    EXPECT_EQ(shown.size(), before);
}

TEST_F(WindowSizeTest, StaysTheSmallestWhicheverCaptionAButtonHas) {
    QWidget& shown = open(frmMain());
    shown.resize(1, 1);
    takeQueued();
    const QSize smallest = shown.size();

    press(frmMain(), Qt::Key_M, Qt::AltModifier);
    ASSERT_EQ(frmMain().cmdMonitor.caption(), "Stop Monitoring");
    EXPECT_EQ(shown.size(), smallest);
    EXPECT_EQ(shown.minimumSizeHint(), smallest);

    press(frmMain(), Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(shown.size(), smallest);
    EXPECT_EQ(shown.minimumSizeHint(), smallest);
}

} // namespace
} // namespace tarvik
