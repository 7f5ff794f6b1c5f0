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

TEST_F(NetworkEntriesTest, TenThousandProfilesAreAllListedAndKeepNoLineFromBeingCounted) {
    constexpr std::uint32_t profiles = 10'000;
    makeInterface("tun0", 7, 50, 60);
    addVpn("office");
    for (std::uint32_t i = 1; i < profiles; ++i) {
        service.addProfile("p" + std::to_string(i), "gsm");
    }

    const auto found = lines();
    EXPECT_EQ(code, 0U);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(statisticsOf(found[0].hrasconn).dwBytesRcved, 50U);

    EXPECT_TRUE(soon([&] {
        RASENTRYNAMEA entry{};
        entry.dwSize = 532;
        std::uint32_t bytes = 532;
        std::uint32_t count = 0;
        connections.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count);
        return bytes == profiles * 532;
    }));
    EXPECT_EQ(lines().at(0).hrasconn, found[0].hrasconn);
}

} // namespace
} // namespace tarvik
