#include "history/HistoryTest.h"
#include "wiring/frmHistoryEvents.h"

#include <algorithm>
#include <array>

namespace tarvik {
namespace {

using ViewsTest = HistoryTest;
using Handler = void (*)();

struct ViewCase {
    const char* name;
    const char* option; ///< null for none
    bool history;
    bool statistics;
    bool addresses;
};

const ViewCase viewCases[]{{"History", "optHistory", true, false, false},
                           {"Statistics", "optStatistics", false, true, false},
                           {"StatisticsIP", "optStatisticsIP", false, false, true},
                           {"None", nullptr, true, false, false}};

struct HandlerCase {
    const char* name;
    Handler handler;
};

const HandlerCase handlerCases[]{{"OfHistory", optHistory_Click},
                                 {"OfStatistics", optStatistics_Click},
                                 {"OfStatisticsIP", optStatisticsIP_Click}};

class ViewTest : public HistoryTest,
                 public testing::WithParamInterface<std::tuple<ViewCase, HandlerCase>> {
protected:
    /// Chooses the option, or none; the frames then stand as they never should.
    void choose(const char* option) {
        for (OptionButton* each :
             {&window().optHistory, &window().optStatistics, &window().optStatisticsIP}) {
            each->setValue(false);
        }
        if (option != nullptr) {
            static_cast<OptionButton*>(window().control(option))->setValue(true);
        }
        const ViewCase& wanted = std::get<0>(GetParam());
        window().frameHistory.setVisible(!wanted.history);
        window().frameStatistics.setVisible(!wanted.statistics);
        window().frameStatisticsIP.setVisible(!wanted.addresses);
    }
};

TEST_P(ViewTest, IsShownByEachHandlerWhicheverWasClicked) {
    const auto [view, handler] = GetParam();
    choose(view.option);

    handler.handler();

    EXPECT_EQ(window().frameHistory.visible(), view.history);
    EXPECT_EQ(window().frameStatistics.visible(), view.statistics);
    EXPECT_EQ(window().frameStatisticsIP.visible(), view.addresses);
    EXPECT_TRUE(window().frameImportSetup.visible());
}

INSTANTIATE_TEST_SUITE_P(
    Each, ViewTest, testing::Combine(testing::ValuesIn(viewCases), testing::ValuesIn(handlerCases)),
    [](const auto& given) {
        return std::string(std::get<0>(given.param).name) + std::get<1>(given.param).name;
    });

TEST_F(ViewsTest, ChoosingAnOptionShowsItsView) {
    window().optStatistics.setValue(true);
    EXPECT_TRUE(window().frameStatistics.visible());
    EXPECT_FALSE(window().frameHistory.visible());

    window().optStatisticsIP.setValue(true);
    EXPECT_TRUE(window().frameStatisticsIP.visible());
    EXPECT_FALSE(window().frameStatistics.visible());

    window().optHistory.setValue(true);

    EXPECT_TRUE(window().frameHistory.visible());
    EXPECT_FALSE(window().frameStatisticsIP.visible());
}

/// Counts how many views are visible at once, each time that one comes or goes.
class ViewCounter : public ControlView {
public:
    explicit ViewCounter(FrmHistory& window) : window_(window) {
        for (Frame* view : views()) {
            view->attach(this);
        }
    }
    ~ViewCounter() override {
        for (Frame* view : views()) {
            view->attach(nullptr);
        }
    }
    ViewCounter(const ViewCounter&) = delete;
    ViewCounter& operator=(const ViewCounter&) = delete;

    void refresh(Property) override {
        int count = 0;
        for (const Frame* view : views()) {
            count += view->visible() ? 1 : 0;
        }
        most = std::max(most, count);
    }

    int most = 0;

private:
    std::array<Frame*, 3> views() const {
        return {&window_.frameHistory, &window_.frameStatistics, &window_.frameStatisticsIP};
    }

    FrmHistory& window_;
};

TEST_F(ViewsTest, NeverAreTwoViewsShownAtOnce) {
    ViewCounter counter(window());

    for (OptionButton* option :
         {&window().optStatistics, &window().optHistory, &window().optStatisticsIP,
          &window().optStatistics, &window().optStatisticsIP, &window().optHistory}) {
        option->setValue(true);
    }

    EXPECT_EQ(counter.most, 1);
}

TEST_F(ViewsTest, TheChartIsShownAtFirst) {
    EXPECT_TRUE(window().optHistory.value());
    EXPECT_TRUE(window().frameHistory.visible());
    EXPECT_FALSE(window().frameStatistics.visible());
    EXPECT_FALSE(window().frameStatisticsIP.visible());
    EXPECT_TRUE(window().frameImportSetup.visible());
}

TEST_F(ViewsTest, ViewsCanBeSwitchedBeforeAnyImport) {
    EXPECT_TRUE(window().optHistory.enabled());
    EXPECT_TRUE(window().optStatistics.enabled());
    EXPECT_TRUE(window().optStatisticsIP.enabled());
}

TEST_F(ViewsTest, AnImportDoesNotSwitchTheView) {
    window().optStatisticsIP.setValue(true);

    import(numberedLog(2));

    EXPECT_TRUE(window().optStatisticsIP.value());
    EXPECT_TRUE(window().frameStatisticsIP.visible());
    EXPECT_FALSE(window().frameHistory.visible());
}

TEST_F(ViewsTest, TheMainWindowOpensIt) {
    frmMain().cmdHistory.press();

    EXPECT_TRUE(window().visible());
    EXPECT_EQ(machine.desktop.broughtToFront.back(), "frmHistory");
}

TEST_F(ViewsTest, CancelHidesIt) {
    frmMain().cmdHistory.press();

    window().cmdCancel.press();

    EXPECT_FALSE(window().visible());
    EXPECT_TRUE(window().loaded());
    EXPECT_EQ(window().cancelButton(), &window().cmdCancel);
}

TEST_F(ViewsTest, TheCloseBoxHidesIt) {
    frmMain().cmdHistory.press();

    EXPECT_FALSE(window().unload(UnloadMode::FormControlMenu));

    EXPECT_FALSE(window().visible());
    EXPECT_TRUE(window().loaded());
}

TEST_F(ViewsTest, HidingItKeepsWhatWasImported) {
    frmMain().cmdHistory.press();
    import(numberedLog(3));
    const Texts before = everything();

    window().cmdCancel.press();
    frmMain().cmdHistory.press();

    EXPECT_EQ(everything(), before);
}

struct Wording {
    const char* control;
    ControlKind kind;
    const char* caption;
    const char* toolTip;
};

class WordingTest : public HistoryTest, public testing::WithParamInterface<Wording> {
protected:
    static std::string captionOf(const Control& control) {
        switch (control.kind()) {
        case ControlKind::Label:
            return static_cast<const Label&>(control).caption();
        case ControlKind::OptionButton:
            return static_cast<const OptionButton&>(control).caption();
        case ControlKind::CommandButton:
            return static_cast<const CommandButton&>(control).caption();
        case ControlKind::Frame:
            return static_cast<const Frame&>(control).caption();
        default:
            return {};
        }
    }
};

TEST_P(WordingTest, IsToTheLetter) {
    const Control* control = window().control(GetParam().control);

    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->kind(), GetParam().kind);
    EXPECT_EQ(captionOf(*control), GetParam().caption);
    EXPECT_EQ(control->toolTip(), GetParam().toolTip);
}

INSTANTIATE_TEST_SUITE_P(
    Each, WordingTest,
    testing::Values(
        Wording{"optHistory", ControlKind::OptionButton, "History", "Show history graph"},
        Wording{"optStatistics", ControlKind::OptionButton, "Statistics",
                "Show statistics overview"},
        Wording{"optStatisticsIP", ControlKind::OptionButton, "Statistics (IP)",
                "Show statistics overview"},
        Wording{"frameHistory", ControlKind::Frame, "", ""},
        Wording{"frameStatistics", ControlKind::Frame, "", ""},
        Wording{"frameStatisticsIP", ControlKind::Frame, "", ""},
        Wording{"frameImportSetup", ControlKind::Frame, "Import/Setup:", ""},
        Wording{"cmdImport", ControlKind::CommandButton, "Import...",
                "Import transfer from INI-file"},
        Wording{"cmdCancel", ControlKind::CommandButton, "Cancel", "Close the history dialog"},
        Wording{"txtCurrentStart", ControlKind::TextBox, "",
                "This shows the record at which the history graph starts."},
        Wording{"txtCurrentStop", ControlKind::TextBox, "",
                "This shows the record at which the history graph stops."},
        Wording{"cmdSetStart", ControlKind::CommandButton, "Set start",
                "Set history start to selected record in list."},
        Wording{"cmdSetStop", ControlKind::CommandButton, "Set stop",
                "Set history stop to selected record in list."},
        Wording{"cmdExport", ControlKind::CommandButton, "Export...",
                "Export records in list as CSV - file."},
        Wording{"lvwCompleteLog", ControlKind::ListView, "",
                "This shows the complete list off all records within the INI file."},
        Wording{"txtStatisticsIP", ControlKind::TextBox, "",
                "This is a list with different IP addresses that have been recorded."},
        Wording{"cmdSortByTime", ControlKind::CommandButton, "Time",
                "Click to sort list with IP addresses by time recorded."},
        Wording{"cmdSortByIP", ControlKind::CommandButton, "IP address",
                "Click to sort list with IP addresses by IP address."}),
    [](const auto& given) { return given.param.control; });

TEST_F(ViewsTest, ReadsToTheLetter) {
    EXPECT_EQ(window().caption(), "Velmars Tarvik - History");
    EXPECT_EQ(window().lblCurrentStart.caption(), "Current start:");
    EXPECT_EQ(window().lblCurrentStart.labelled(), &window().txtCurrentStart);
    EXPECT_EQ(window().lblCurrentStop.caption(), "Current stop:");
    EXPECT_EQ(window().lblCurrentStop.labelled(), &window().txtCurrentStop);
    EXPECT_EQ(window().lblCompleteLog.caption(), "Complete log:");
    EXPECT_EQ(window().lblCompleteLog.labelled(), &window().lvwCompleteLog);
    EXPECT_EQ(window().lblStatisticsIP.caption(),
              "This is a list with all different IP addresses that have been recorded:");
    EXPECT_EQ(window().lblStatisticsIP.labelled(), &window().txtStatisticsIP);
    EXPECT_EQ(window().lblSortBy.caption(), "Sort by:");
}

TEST_F(ViewsTest, TextsAreForReading) {
    EXPECT_TRUE(window().txtCurrentStart.readOnly());
    EXPECT_TRUE(window().txtCurrentStop.readOnly());
    EXPECT_TRUE(window().txtStatisticsIP.readOnly());
    EXPECT_TRUE(window().txtStatisticsIP.multiLine());
}

struct FrameCase {
    const char* frame;
    Texts controls;
};

class FrameTest : public HistoryTest, public testing::WithParamInterface<FrameCase> {
protected:
    static const LayoutNode* find(const LayoutNode& node, const Control* control) {
        if (node.control == control) {
            return &node;
        }
        for (const LayoutNode& child : node.children) {
            if (const LayoutNode* found = find(child, control)) {
                return found;
            }
        }
        return nullptr;
    }
};

TEST_P(FrameTest, HoldsItsControls) {
    const LayoutNode* frame = find(*window().layout(), window().control(GetParam().frame));
    ASSERT_NE(frame, nullptr);

    for (const std::string& name : GetParam().controls) {
        ASSERT_NE(window().control(name), nullptr) << name;
        EXPECT_NE(find(*frame, window().control(name)), nullptr) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, FrameTest,
    testing::Values(FrameCase{"frameHistory", {"mscHistory"}},
                    FrameCase{"frameStatistics",
                              {"lvwCompleteLog", "txtCurrentStart", "txtCurrentStop", "cmdSetStart",
                               "cmdSetStop", "cmdExport"}},
                    FrameCase{"frameStatisticsIP",
                              {"txtStatisticsIP", "cmdSortByIP", "cmdSortByTime"}},
                    FrameCase{"frameImportSetup",
                              {"cmdImport", "cboChartType", "cboDataType", "cboTransferUnit",
                               "cboDataToShow", "chkShowXLines", "chkShowYLines", "cmdCancel"}}),
    [](const auto& given) { return given.param.frame; });

} // namespace
} // namespace tarvik
