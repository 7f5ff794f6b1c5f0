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
