#include "contracts/DialogsUnderTest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tarvik {
namespace {

class CommonDialogsContract : public testing::Test {
protected:
    CommonDialogsContract() {
        data.lStructSize = OPENFILENAMEA::size;
        data.lpstrFile = file.data();
        data.nMaxFile = static_cast<std::uint32_t>(file.size());
    }

    bool open() { return machine->dialogs().GetOpenFileNameA(&data, place); }
    bool save() { return machine->dialogs().GetSaveFileNameA(&data, place); }
    std::string chosen() const { return file.c_str(); }

    std::unique_ptr<DialogsUnderTest> machine = dialogsUnderTest();
    std::string file = std::string(260, '\0');
    OPENFILENAMEA data{};
    DialogPlacement place = [](const ScreenRect& dialog, const ScreenRect&) { return dialog; };
};

TEST_F(CommonDialogsContract, ACancelledDialogIsNoErrorAndLeavesTheProposedName) {
    file.replace(0, 8, "data.csv");
    machine->cancelNext();

    EXPECT_FALSE(open());

    EXPECT_EQ(machine->dialogs().CommDlgExtendedError(), 0U);
    EXPECT_EQ(chosen(), "data.csv");
}

TEST_F(CommonDialogsContract, TheDialogHasTheRecordsTitle) {
    data.lpstrTitle = "Title of its own";
    machine->cancelNext();

    open();

    EXPECT_EQ(machine->title(), "Title of its own");
}

TEST_F(CommonDialogsContract, AFileToOpenComesAsItsFullPath) {
    const std::string path = machine->path("data.csv");
    machine->makeFile(path);
    machine->chooseNext(path, MsgBoxAnswer::No);

    EXPECT_TRUE(open());

    EXPECT_EQ(chosen(), path);
}

TEST_F(CommonDialogsContract, ANewFileToSaveComesAsItsFullPathUnasked) {
    data.Flags = static_cast<std::uint32_t>(DialogFlag::Flag_OverwritePrompt);
    machine->chooseNext(machine->path("new.csv"), MsgBoxAnswer::No);

    EXPECT_TRUE(save());

    EXPECT_TRUE(machine->questions().empty());
    EXPECT_EQ(chosen(), machine->path("new.csv"));
}

TEST_F(CommonDialogsContract, WithoutTheOptionAFileIsOverwrittenUnasked) {
    const std::string path = machine->path("data.csv");
    machine->makeFile(path);
    machine->chooseNext(path, MsgBoxAnswer::No);

    EXPECT_TRUE(save());

    EXPECT_TRUE(machine->questions().empty());
    EXPECT_EQ(chosen(), path);
}

} // namespace
} // namespace tarvik
