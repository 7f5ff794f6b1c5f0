#include "dialogs/clsFileDialog.h"

#include "settings/mdlSettingsDialog.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

class DialogPlaceTest : public WorldTest {
protected:
    DialogPlaceTest() { startQuietly(); }

    /// The window that the desktop was told to stand the dialog before.
    std::uintptr_t owner() const {
        return reinterpret_cast<std::uintptr_t>(machine.dialogs.seen.hwndOwner);
    }

    static void expectRect(const ScreenRect& actual, const ScreenRect& expected) {
        EXPECT_EQ(actual.left, expected.left);
        EXPECT_EQ(actual.top, expected.top);
        EXPECT_EQ(actual.width, expected.width);
        EXPECT_EQ(actual.height, expected.height);
    }
};

TEST_F(DialogPlaceTest, TheDialogStandsBeforeItsOwner) {
    clsFileDialog dialog;
    dialog.Owner = &frmOptions();

    dialog.ShowOpen();

    EXPECT_NE(owner(), 0U);
    EXPECT_EQ(owner(), frmOptions().hWnd());
}

TEST_F(DialogPlaceTest, TheDialogOfNobodyHasNoOwner) {
    clsFileDialog dialog;

    dialog.ShowOpen();

    EXPECT_EQ(owner(), 0U);
}

TEST_F(DialogPlaceTest, AnOwnerWithoutAWindowIsNone) {
    clsFileDialog dialog;
    dialog.Owner = &frmOptions();
    frmOptions().unload();

    dialog.ShowOpen();

    EXPECT_EQ(owner(), 0U);
}

TEST_F(DialogPlaceTest, TheShownDialogIsCentredOverItsOwner) {
    machine.dialogs.owner = {200, 300, 400, 250};
    clsFileDialog dialog;
    dialog.Owner = &frmMain();

    dialog.ShowSave();

    expectRect(machine.dialogs.placed, {350, 400, 100, 50});
}

TEST_F(DialogPlaceTest, TheShownDialogOfNobodyStaysWhereItIs) {
    machine.dialogs.owner = {};
    clsFileDialog dialog;

    dialog.ShowOpen();

    expectRect(machine.dialogs.placed, {0, 0, 100, 50});
}

struct PlaceCase {
    const char* name;
    ScreenRect dialog;
    ScreenRect owner;
    ScreenRect placed;
};

class DialogPositTest : public DialogPlaceTest, public testing::WithParamInterface<PlaceCase> {};

TEST_P(DialogPositTest, PutsItInTheMiddleAndKeepsItsSize) {
    const ScreenRect placed = DlgPosit(GetParam().dialog, GetParam().owner);

    expectRect(placed, GetParam().placed);
}

INSTANTIATE_TEST_SUITE_P(
    Each, DialogPositTest,
    testing::Values(
        PlaceCase{"Smaller", {7, 8, 100, 50}, {200, 300, 400, 250}, {350, 400, 100, 50}},
        PlaceCase{"Larger", {7, 8, 600, 450}, {200, 300, 400, 250}, {100, 200, 600, 450}},
        PlaceCase{
            "LeftOfTheFirstScreen", {7, 8, 100, 50}, {-800, -600, 300, 150}, {-700, -550, 100, 50}},
        PlaceCase{"Nobody", {7, 8, 100, 50}, {0, 0, 0, 0}, {7, 8, 100, 50}},
        PlaceCase{"NoWidth", {7, 8, 100, 50}, {200, 300, 0, 250}, {7, 8, 100, 50}},
        PlaceCase{"NoHeight", {7, 8, 100, 50}, {200, 300, 400, 0}, {7, 8, 100, 50}}),
    [](const auto& given) { return given.param.name; });

// The choice of a file of settings and records.

TEST_F(DialogPlaceTest, TheChosenFileOfSettingsIsItsFullPath) {
    machine.dialogs.chosen = "D:\\Old\\Tarvik.2026-5-3.ini";

    EXPECT_EQ(ShowIniFileDialog(), "D:\\Old\\Tarvik.2026-5-3.ini");
}

TEST_F(DialogPlaceTest, TheFileOfSettingsIsOpenedWithItsFiveOptions) {
    ShowIniFileDialog();

    EXPECT_EQ(machine.dialogs.seen.Flags, 0x8100DU);
    EXPECT_FALSE(machine.dialogs.saving);
    EXPECT_EQ(machine.dialogs.buffer, std::string(2048, '\0'));
}

TEST_F(DialogPlaceTest, ACancelledChoiceOfSettingsIsNoFile) {
    EXPECT_EQ(ShowIniFileDialog(), "");

    EXPECT_EQ(machine.dialogs.title, "Import history...");
}

class FailedIniDialogTest : public DialogPlaceTest,
                            public testing::WithParamInterface<std::uint32_t> {};

TEST_P(FailedIniDialogTest, IsToldAndIsNoFile) {
    machine.dialogs.chosen = "D:\\chosen.ini";
    machine.dialogs.extendedError = GetParam();
    expectWarning("Assertion failure in function \"ShowIniFileDialog\".");

    EXPECT_EQ(ShowIniFileDialog(), "");
}

INSTANTIATE_TEST_SUITE_P(Codes, FailedIniDialogTest,
                         testing::Values(0xFFFFU, 0x3002U, 0x3003U, 0x1234U));

TEST_F(DialogPlaceTest, TheNextChoiceDoesNotRememberTheFailureBefore) {
    machine.dialogs.extendedError = 0x3003;
    expectWarning("Assertion failure in function \"ShowIniFileDialog\".");
    ShowIniFileDialog();
    machine.dialogs.extendedError = 0;
    machine.dialogs.chosen = "D:\\chosen.ini";

    EXPECT_EQ(ShowIniFileDialog(), "D:\\chosen.ini");
}

TEST_F(DialogPlaceTest, TheChoiceOfSettingsStandsBeforeTheMainWindow) {
    ShowIniFileDialog();

    EXPECT_NE(owner(), 0U);
    EXPECT_EQ(owner(), frmMain().hWnd());
}

TEST_F(DialogPlaceTest, TheChoiceOfSettingsStandsBeforeTheHistoryThatImports) {
    FrmHistory& history = world->forms.frmHistory;
    history.setVisible(true);

    ShowIniFileDialog();

    EXPECT_EQ(owner(), history.hWnd());
}

} // namespace
} // namespace tarvik
