#include "contracts/painted/OutsideNames.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tarvik {
namespace {

/// The question about a file that is there and would be overwritten.
class OverwriteContract : public testing::Test {
protected:
    OverwriteContract() {
        data.lStructSize = OPENFILENAMEA::size;
        data.lpstrFile = file.data();
        data.nMaxFile = static_cast<std::uint32_t>(file.size());
        data.Flags = static_cast<std::uint32_t>(DialogFlag::Flag_OverwritePrompt);
    }

    /// A file of that name is there, and the user chooses it and gives that answer.
    bool saveOver(const std::string& name, MsgBoxAnswer answer) {
        path = outside.machine->path(name);
        outside.machine->makeFile(path);
        outside.machine->chooseNext(path, answer);
        return outside.machine->dialogs().GetSaveFileNameA(
            &data, [](const ScreenRect& dialog, const ScreenRect&) { return dialog; });
    }
    std::string chosen() const { return file.c_str(); }

    OutsideDialogsUnderTest outside = outsideDialogsUnderTest();
    std::string file = std::string(260, '\0');
    std::string path;
    OPENFILENAMEA data{};
};

TEST_F(OverwriteContract, AFileThatIsThereIsChosenAfterOneQuestion) {
    EXPECT_TRUE(saveOver("backup.ini", MsgBoxAnswer::Yes));

    const auto questions = outside.machine->questions();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_TRUE(questions[0].starts_with("backup.ini already exists.")) << questions[0];
    EXPECT_TRUE(questions[0].ends_with("\nDo you want to replace it?")) << questions[0];
    EXPECT_EQ(chosen(), path);
}

TEST_F(OverwriteContract, AfterNoItIsNotChosenAndTheDialogCanBeCancelled) {
    EXPECT_FALSE(saveOver("backup.ini", MsgBoxAnswer::No));

    EXPECT_EQ(outside.machine->questions().size(), 1U);
    EXPECT_EQ(outside.machine->dialogs().CommDlgExtendedError(), 0U);
}

TEST_F(OverwriteContract, ATurnOfDirectionInTheNameIsToldAndTheNameItselfIsChosen) {
    EXPECT_TRUE(saveOver(outside.turned, MsgBoxAnswer::Yes));

    const auto questions = outside.machine->questions();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_TRUE(questions[0].starts_with(outside.told + " already exists.")) << questions[0];
    EXPECT_EQ(chosen(), path);
}

} // namespace
} // namespace tarvik
