#include "linux/face/TrayMenu.h"
#include "forms/frmSysTray.h"

#include <QAction>

#include <gtest/gtest.h>

#include <vector>

namespace tarvik {
namespace {

class TrayMenuTest : public testing::Test {
protected:
    FrmSysTray tray;
    std::vector<int> chosen;
    face::TrayMenu menu{tray.mnuPopUp, [this](int index) { chosen.push_back(index); }};
};

TEST_F(TrayMenuTest, AChosenEntryTellsItsNumber) {
    menu.actions().at(FrmSysTray::connect)->trigger();

    EXPECT_EQ(chosen, std::vector<int>{FrmSysTray::connect});
}

TEST_F(TrayMenuTest, ADisabledEntryCannotBeChosen) {
    tray.mnuPopUp.setEntryEnabled(FrmSysTray::connect, false);

    menu.actions().at(FrmSysTray::connect)->trigger();

    EXPECT_EQ(chosen, std::vector<int>{});
}

TEST_F(TrayMenuTest, EntriesAboveStandOnTopWithALineBelow) {
    tray.mnuPopUp.setEntriesAbove({"Extend"});

    EXPECT_EQ(menu.actions().size(), 9);
    EXPECT_EQ(menu.actions().at(0)->text(), QStringLiteral("Extend"));
    EXPECT_TRUE(menu.actions().at(1)->isSeparator());
    EXPECT_EQ(menu.actions().at(2)->text(), QStringLiteral("Show/Hide"));
}

TEST_F(TrayMenuTest, AChosenEntryTellsItsNumberBelowOthersToo) {
    tray.mnuPopUp.setEntriesAbove({"Extend"});

    menu.actions().at(0)->trigger();
    menu.actions().at(2 + FrmSysTray::quit)->trigger();

    EXPECT_EQ(chosen, (std::vector<int>{FrmSysTray::extendToday, FrmSysTray::quit}));
}

TEST_F(TrayMenuTest, EntriesBelowOthersFollowTheModel) {
    tray.mnuPopUp.setEntriesAbove({"Extend"});

    tray.mnuPopUp.setEntryCaption(FrmSysTray::monitoring, "Stop Monitoring");

    EXPECT_EQ(menu.actions().at(2 + FrmSysTray::monitoring)->text(),
              QStringLiteral("Stop Monitoring"));
}

TEST_F(TrayMenuTest, EntriesAboveAreTakenAwayAgain) {
    tray.mnuPopUp.setEntriesAbove({"Extend"});

    tray.mnuPopUp.setEntriesAbove({});

    EXPECT_EQ(menu.actions().size(), 7);
    EXPECT_EQ(menu.actions().at(0)->text(), QStringLiteral("Show/Hide"));
}

TEST_F(TrayMenuTest, ADetachedMenuFollowsTheModelNoMore) {
    menu.detach();

    tray.mnuPopUp.setEntryCaption(FrmSysTray::monitoring, "Stop Monitoring");
    tray.mnuPopUp.setEntryEnabled(FrmSysTray::monitoring, false);

    EXPECT_EQ(menu.actions().at(FrmSysTray::monitoring)->text(),
              QStringLiteral("Start Monitoring"));
    EXPECT_TRUE(menu.actions().at(FrmSysTray::monitoring)->isEnabled());
}

} // namespace
} // namespace tarvik
