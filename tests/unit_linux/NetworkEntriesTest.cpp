#include "NetworkServiceTest.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tarvik {
namespace {

using NetworkEntriesTest = NetworkServiceTest;

TEST_F(NetworkEntriesTest, ProfilesReadSinceTheRoomWasToldDoNotMakeItTooSmall) {
    constexpr int profiles = 40;
    for (int i = 0; i < profiles; ++i) {
        service.addProfile("p" + std::to_string(i), "gsm");
    }
    service.slowDown(std::chrono::milliseconds(100));
    RASENTRYNAMEA entry{};
    entry.dwSize = 532;
    std::uint32_t bytes = 532;
    std::uint32_t count = 0;
    connections.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count);
    const std::uint32_t told = bytes / 532;
    ASSERT_LT(told, static_cast<std::uint32_t>(profiles));

    std::vector<RASENTRYNAMEA> records(told);
    records.front().dwSize = 532;

    EXPECT_EQ(connections.RasEnumEntriesA(nullptr, nullptr, records.data(), &bytes, &count), 0U);
    EXPECT_EQ(count, told);
    EXPECT_STRNE(records.back().szEntryName, "");
    service.slowDown({});
    EXPECT_TRUE(soon([&] { return entries().size() == profiles; }));
}

} // namespace
} // namespace tarvik
