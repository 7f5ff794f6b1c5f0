#include "monkey/Monkey.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

namespace tarvik::monkey {
namespace {

int numberFrom(const char* variable, int otherwise) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? otherwise : std::atoi(text);
}

TEST(MonkeyTest, ARandomUserNeitherBreaksNorDerangesTheProgram) {
    const int steps = numberFrom("TARVIK_MONKEY_STEPS", 100'000);
    const int seed = numberFrom("TARVIK_MONKEY_SEED", 7);
    Monkey user(static_cast<std::uint32_t>(seed));

    for (int i = 0; i < steps; ++i) {
        const std::string trouble = user.step();
        ASSERT_EQ(trouble, "") << "seed " << seed << ", step " << i << ", after\n"
                               << user.lastActions();
    }

    std::cout << steps << " steps, " << user.starts() << " starts of the program, boxes shown:\n";
    for (const auto& [text, count] : user.boxes()) {
        std::cout << "  " << count << " x " << text << "\n";
    }
}

} // namespace
} // namespace tarvik::monkey
