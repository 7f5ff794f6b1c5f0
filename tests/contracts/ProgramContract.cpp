#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace tarvik {
namespace {

TEST(ProgramContract, TheFolderIsTheProgramsOwnWhereTheUserMayWrite) {
    const ProgramUnderTest machine = programUnderTest();

    EXPECT_EQ(machine.program->folder(), machine.folder);
    EXPECT_EQ(machine.program->pathSeparator(), machine.separator);
}

TEST(ProgramContract, AProgramIsStartedWithTheVariablesBesideTheEnvironment) {
    const ProgramUnderTest machine = programUnderTest();

    EXPECT_TRUE(machine.program->launch(machine.startable, {{"TARVIK_REPORT", machine.report},
                                                            {"TARVIK_LINE", "Bank & <Co> \"1\""},
                                                            {"TARVIK_PERCENT", "80"}}));

    std::map<std::string, std::string> reported = machine.reported();
    EXPECT_EQ(reported["TARVIK_LINE"], "Bank & <Co> \"1\"");
    EXPECT_EQ(reported["TARVIK_PERCENT"], "80");
    EXPECT_EQ(reported["PATH"], machine.path);
}

TEST(ProgramContract, OfTwoStartsEachHasItsOwnVariables) {
    const ProgramUnderTest machine = programUnderTest();
    ASSERT_TRUE(machine.program->launch(
        machine.startable, {{"TARVIK_REPORT", machine.report}, {"TARVIK_LINE", "first"}}));
    ASSERT_EQ(machine.reported()["TARVIK_LINE"], "first");

    ASSERT_TRUE(machine.program->launch(machine.startable, {{"TARVIK_REPORT", machine.report}}));

    std::map<std::string, std::string> reported = machine.reported();
    EXPECT_EQ(reported["TARVIK_REPORT"], machine.report);
    EXPECT_EQ(reported.count("TARVIK_LINE"), 0U);
}

TEST(ProgramContract, WhatIsNoFullPathOfAProgramIsRefused) {
    const ProgramUnderTest machine = programUnderTest();

    for (const std::string& path : machine.refused) {
        EXPECT_FALSE(machine.program->launch(path, {{"TARVIK_REPORT", machine.report}})) << path;
    }
    const std::string nul(1, '\0');
    EXPECT_FALSE(machine.program->launch(machine.startable + nul, {}));
    EXPECT_FALSE(machine.program->launch(machine.startable, {{"TARVIK_LINE", "a" + nul}}));
    EXPECT_FALSE(machine.program->launch(machine.startable, {{"TARVIK" + nul, "a"}}));
}

TEST(ProgramContract, ThatNothingLiesAtAFullPathIsNotWaitedFor) {
    const ProgramUnderTest machine = programUnderTest();

    EXPECT_TRUE(machine.program->launch(machine.missing, {}));
}

} // namespace
} // namespace tarvik
