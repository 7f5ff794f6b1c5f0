#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class SingleInstanceContract : public testing::Test {
protected:
    InstancesUnderTest machine = instancesUnderTest();
    std::unique_ptr<SingleInstance> first = machine.newProgram();
    std::unique_ptr<SingleInstance> second = machine.newProgram();
    std::uint32_t error = 99;
};

TEST_F(SingleInstanceContract, TheSecondHolderIsToldThatTheNameIsTaken) {
    const std::int32_t held = first->CreateMutexA("{tarvik-test}", &error);
    EXPECT_GE(held, 1);
    EXPECT_EQ(error, 0U);

    const std::int32_t other = second->CreateMutexA("{tarvik-test}", &error);
    EXPECT_GE(other, 1);
    EXPECT_EQ(error, 183U);

    EXPECT_TRUE(second->CloseHandle(other));
    EXPECT_TRUE(first->CloseHandle(held));
}

TEST_F(SingleInstanceContract, AnotherNameIsAnotherObject) {
    const std::int32_t held = first->CreateMutexA("{tarvik-test}", &error);

    const std::int32_t other = first->CreateMutexA("{tarvik-other}", &error);

    EXPECT_GE(other, 1);
    EXPECT_EQ(error, 0U);
    EXPECT_TRUE(first->CloseHandle(held));
    EXPECT_TRUE(first->CloseHandle(other));
}

TEST_F(SingleInstanceContract, AReleasedNameIsFree) {
    const std::int32_t held = first->CreateMutexA("{tarvik-test}", &error);
    EXPECT_TRUE(first->CloseHandle(held));

    const std::int32_t again = second->CreateMutexA("{tarvik-test}", &error);

    EXPECT_EQ(error, 0U);
    EXPECT_TRUE(second->CloseHandle(again));
}

TEST_F(SingleInstanceContract, ANameThatCannotBeHeldIsAnErrorWithoutAHandle) {
    error = 0;

    EXPECT_EQ(machine.unable->CreateMutexA(machine.impossible, &error), 0);

    EXPECT_NE(error, 0U);
    EXPECT_NE(error, 183U);
    EXPECT_FALSE(machine.unable->CloseHandle(0));
}

} // namespace
} // namespace tarvik
