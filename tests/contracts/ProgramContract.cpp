#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(ProgramContract, TheFolderIsTheProgramsOwnWhereTheUserMayWrite) {
    const ProgramUnderTest machine = programUnderTest();

    EXPECT_EQ(machine.program->folder(), machine.folder);
    EXPECT_EQ(machine.program->pathSeparator(), machine.separator);
}

} // namespace
} // namespace tarvik
