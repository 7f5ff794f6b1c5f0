#include "dialogs/clsDialogError.h"

#include "dialogs/clsFileDialog.h"
#include "support/WorldTest.h"

#include <array>
#include <set>

namespace tarvik {
namespace {

class DialogErrorTest : public WorldTest {
protected:
    /// Shows the dialog; the user chooses that.
    void choose(const std::string& selection) {
        machine.dialogs.chosen = selection;
        dialog.ShowOpen();
    }
    /// Shows the dialog, which fails with that code.
    void fail(std::uint32_t code) {
        machine.dialogs.extendedError = code;
        dialog.ShowOpen();
    }

    clsFileDialog dialog;
};

TEST_F(DialogErrorTest, AChosenFileIsNoError) {
    choose("C:\\a.ini");

    EXPECT_EQ(dialog.DialogError().Number(), 0U);
    EXPECT_EQ(dialog.DialogError().Description(), "");
    EXPECT_EQ(dialog.DialogError().Source(), "");
}

class CancelErrorTest : public DialogErrorTest, public testing::WithParamInterface<bool> {};

TEST_P(CancelErrorTest, ACancelledDialogHasItsOwnNumber) {
    dialog.CancelError = GetParam();

    dialog.ShowOpen();

    EXPECT_EQ(dialog.DialogError().Number(), 32755U);
    EXPECT_EQ(dialog.DialogError().Source(), "clsFileDialg.ShowFileDialog");
    EXPECT_NE(dialog.DialogError().Description(), "");
}

INSTANTIATE_TEST_SUITE_P(EitherWay, CancelErrorTest, testing::Bool(),
                         [](const auto& given) { return given.param ? "Wanted" : "Unwanted"; });

TEST_F(DialogErrorTest, ACancelledDialogForSavingHasTheSameNumber) {
    dialog.ShowSave();

    EXPECT_EQ(dialog.DialogError().Number(), 32755U);
    EXPECT_EQ(dialog.DialogError().Source(), "clsFileDialg.ShowFileDialog");
}

TEST_F(DialogErrorTest, ACancelledDialogLeavesTheProperties) {
    dialog.FileName = "C:\\Prog\\proposed.csv";
    dialog.FilterIndex = 2;

    dialog.ShowOpen();

    EXPECT_EQ(dialog.FileName, "C:\\Prog\\proposed.csv");
    EXPECT_EQ(dialog.FilterIndex, 2U);
}

TEST_F(DialogErrorTest, ASelectionThatDoesNotFitIsTold) {
    fail(0x3003);

    EXPECT_EQ(dialog.DialogError().Number(), 0x3003U);
    EXPECT_EQ(dialog.DialogError().Description(), "Buffer too small.\r\nPlease select less files.");
    EXPECT_EQ(dialog.DialogError().Source(), "clsFileDialg.ShowFileDialog");
}

constexpr std::array<std::uint32_t, 16> knownCodes{0xFFFF, 0x0001, 0x0002, 0x0003, 0x0004, 0x0005,
                                                   0x0006, 0x0007, 0x0008, 0x0009, 0x000A, 0x000B,
                                                   0x000C, 0x3001, 0x3002, 0x3003};

class DialogCodeTest : public DialogErrorTest, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(DialogCodeTest, IsTheNumberAndHasAWording) {
    fail(GetParam());

    EXPECT_EQ(dialog.DialogError().Number(), GetParam());
    EXPECT_NE(dialog.DialogError().Description(), "");
    EXPECT_EQ(dialog.DialogError().Source(), "clsFileDialg.ShowFileDialog");
}

INSTANTIATE_TEST_SUITE_P(Known, DialogCodeTest, testing::ValuesIn(knownCodes));

TEST_F(DialogErrorTest, NoTwoCodesHaveTheSameWording) {
    std::set<std::string> wordings{GetString("CMDLGDE.DLL", clsDialogError::cancelled)};

    for (const std::uint32_t code : knownCodes) {
        wordings.insert(GetString("CMDLGDE.DLL", code));
    }

    EXPECT_EQ(wordings.size(), knownCodes.size() + 1);
}

TEST_F(DialogErrorTest, ATextIsLoadedFromItsLibraryByNumber) {
    EXPECT_EQ(GetString("CMDLGDE.DLL", 0x3003), "Buffer too small.\r\nPlease select less files.");
    EXPECT_EQ(GetString("cmdlgde.dll", 0x3003), "Buffer too small.\r\nPlease select less files.");
}

TEST_F(DialogErrorTest, ATextThatTheLibraryDoesNotHoldIsEmpty) {
    EXPECT_EQ(GetString("CMDLGDE.DLL", 0x1234), "");
}

TEST_F(DialogErrorTest, ALibraryThatIsNotThereHasNoTexts) {
    EXPECT_EQ(GetString("OTHER.DLL", 0x3003), "");
    EXPECT_EQ(GetString("", 0x3003), "");
}

TEST_F(DialogErrorTest, TheDesktopsOwnCodeIsKeptBesideTheNumber) {
    fail(0x3002);
    EXPECT_EQ(dialog.DialogError().LastDllError(), 0x3002U);

    fail(0);

    EXPECT_EQ(dialog.DialogError().Number(), 32755U);
    EXPECT_EQ(dialog.DialogError().LastDllError(), 0U);
    EXPECT_EQ(dialog.DialogError().HelpContext(), 0U);
}

TEST_F(DialogErrorTest, AnUnknownCodeIsTheNumberWithoutAWording) {
    fail(0x1234);

    EXPECT_EQ(dialog.DialogError().Number(), 0x1234U);
    EXPECT_EQ(dialog.DialogError().Description(), "");
    EXPECT_EQ(dialog.DialogError().Source(), "clsFileDialg.ShowFileDialog");
}

TEST_F(DialogErrorTest, AChosenFileClearsTheErrorOfTheDialogBefore) {
    fail(0x3002);
    machine.dialogs.extendedError = 0;

    choose("C:\\a.ini");

    EXPECT_EQ(dialog.DialogError().Number(), 0U);
    EXPECT_EQ(dialog.DialogError().Description(), "");
    EXPECT_EQ(dialog.DialogError().Source(), "");
}

TEST_F(DialogErrorTest, ACancelledDialogReplacesTheErrorOfTheDialogBefore) {
    fail(0x3002);

    fail(0);

    EXPECT_EQ(dialog.DialogError().Number(), 32755U);
}

TEST_F(DialogErrorTest, HoldsWhatWasRaised) {
    clsDialogError error;

    error.Raise(17, "source", "description", 18, 19);

    EXPECT_EQ(error.Number(), 17U);
    EXPECT_EQ(error.Source(), "source");
    EXPECT_EQ(error.Description(), "description");
    EXPECT_EQ(error.LastDllError(), 18U);
    EXPECT_EQ(error.HelpContext(), 19U);
}

TEST_F(DialogErrorTest, ClearedHoldsNothing) {
    clsDialogError error;
    error.Raise(17, "source", "description", 18, 19);

    error.Clear();

    EXPECT_EQ(error.Number(), 0U);
    EXPECT_EQ(error.Source(), "");
    EXPECT_EQ(error.Description(), "");
    EXPECT_EQ(error.LastDllError(), 0U);
    EXPECT_EQ(error.HelpContext(), 0U);
}

} // namespace
} // namespace tarvik
