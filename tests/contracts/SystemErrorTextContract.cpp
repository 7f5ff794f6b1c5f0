#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace tarvik {
namespace {

TEST(SystemErrorContract, AKnownNumberHasAText) {
    const ErrorTextsUnderTest machine = errorTextsUnderTest();
    std::array<char, 512> buffer{};

    const std::uint32_t length = machine.texts->FormatMessageA(
        4096, nullptr, machine.known, 0, buffer.data(), buffer.size(), nullptr);

    EXPECT_GT(length, 5U);
    EXPECT_EQ(std::strlen(buffer.data()), length);
    EXPECT_EQ(buffer.data(), machine.text.value_or(buffer.data()));
}

TEST(SystemErrorContract, AnUnknownNumberHasNone) {
    const ErrorTextsUnderTest machine = errorTextsUnderTest();
    std::array<char, 512> buffer{"before"};

    for (const std::uint32_t code : machine.unknown) {
        EXPECT_EQ(machine.texts->FormatMessageA(4096, nullptr, code, 0, buffer.data(),
                                                buffer.size(), nullptr),
                  0U)
            << code;
    }

    EXPECT_STREQ(buffer.data(), "before");
}

} // namespace
} // namespace tarvik
