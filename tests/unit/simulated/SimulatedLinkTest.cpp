#include "simulated/SimulatedLink.h"

#include "support/RasCalls.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace tarvik {
namespace {

constexpr const char* modem = "Harbour Net (modem)";
constexpr const char* dsl = "Ridge DSL";

class SimulatedLinkTest : public testing::Test {
protected:
    std::uint64_t now = 1'000'000;
    SimulatedLink link = linkWithSeed(7);

    SimulatedLink linkWithSeed(std::uint64_t seed) {
        return {seed, [this] { return now; },
                [this](std::uint64_t milliseconds) { now += milliseconds; }};
    }

    std::uint32_t connect(const std::string& entry) {
        std::uint32_t handle = 0;
        EXPECT_EQ(dialEntry(link, entry, handle), ras::success);
        return handle;
    }

    std::uint32_t connectionCount() {
        std::array<RASCONNA, 4> buffer{};
        buffer[0].dwSize = RASCONNA::size;
        std::uint32_t bytes = sizeof buffer;
        std::uint32_t count = 99;
        EXPECT_EQ(link.RasEnumConnectionsA(buffer.data(), &bytes, &count), ras::success);
        return count;
    }
};

TEST_F(SimulatedLinkTest, ThePhoneBookHoldsModemDslAndMobileAndTheTwoThatFail) {
    std::vector<RASENTRYNAMEA> records(5);
    records[0].dwSize = RASENTRYNAMEA::size;
    std::uint32_t bytes = 5 * RASENTRYNAMEA::size;
    std::uint32_t count = 0;

    ASSERT_EQ(link.RasEnumEntriesA(nullptr, nullptr, records.data(), &bytes, &count), 0U);

    ASSERT_EQ(count, 5U);
    EXPECT_STREQ(records[0].szEntryName, "Harbour Net (modem)");
    EXPECT_STREQ(records[1].szEntryName, "Ridge DSL");
    EXPECT_STREQ(records[2].szEntryName, "Skylark Mobile");
    EXPECT_STREQ(records[3].szEntryName, "Old Mill (wrong password)");
    EXPECT_STREQ(records[4].szEntryName, "Village Line (busy)");
}

TEST_F(SimulatedLinkTest, ASmallEntryBufferIsAnsweredWithTheSizeNeeded) {
    RASENTRYNAMEA record{};
    record.dwSize = RASENTRYNAMEA::size;
    std::uint32_t bytes = RASENTRYNAMEA::size;
    std::uint32_t count = 0;

    EXPECT_EQ(link.RasEnumEntriesA(nullptr, nullptr, &record, &bytes, &count), 603U);

    EXPECT_EQ(bytes, 2660U);
    EXPECT_EQ(count, 5U);
}

TEST_F(SimulatedLinkTest, TheMiddleEntryFormIsKnown) {
    std::vector<RASENTRYNAMEA_264> records(5);
    records[0].dwSize = RASENTRYNAMEA_264::size;
    std::uint32_t bytes = 5 * RASENTRYNAMEA_264::size;
    std::uint32_t count = 0;

    ASSERT_EQ(link.RasEnumEntriesA(nullptr, nullptr, records.data(), &bytes, &count), 0U);

    EXPECT_STREQ(records[4].szEntryName, "Village Line (busy)");
}

TEST_F(SimulatedLinkTest, TheOldestEntryFormIsNotKnown) {
    RASENTRYNAMEA_28 record{};
    record.dwSize = RASENTRYNAMEA_28::size;
    std::uint32_t bytes = RASENTRYNAMEA_28::size;
    std::uint32_t count = 0;

    EXPECT_EQ(link.RasEnumEntriesA(nullptr, nullptr, &record, &bytes, &count), 632U);
}

TEST_F(SimulatedLinkTest, NothingIsUpBeforeTheFirstDial) {
    EXPECT_EQ(connectionCount(), 0U);
}

TEST_F(SimulatedLinkTest, DiallingTakesTimeAndBringsTheLineUp) {
    const std::uint64_t before = now;

    const std::uint32_t handle = connect(modem);

    EXPECT_EQ(now - before, 2500U);
    EXPECT_GE(handle, 1U);
    EXPECT_EQ(connectionCount(), 1U);
}

TEST_F(SimulatedLinkTest, AConnectionTellsItsEntryAndDevice) {
    connect(modem);
    RASCONNA connection{};
    connection.dwSize = RASCONNA::size;
    std::uint32_t bytes = RASCONNA::size;
    std::uint32_t count = 0;

    ASSERT_EQ(link.RasEnumConnectionsA(&connection, &bytes, &count), 0U);

    EXPECT_STREQ(connection.szEntryName, "Harbour Net (modem)");
    EXPECT_STREQ(connection.szDeviceType, "modem");
    EXPECT_STREQ(connection.szDeviceName, "Simulated 56k modem");
}

TEST_F(SimulatedLinkTest, TooSmallAConnectionBufferIsAnsweredWithSizeAndCount) {
    connect(modem);
    connect(dsl);
    RASCONNA connection{};
    connection.dwSize = RASCONNA::size;
    std::uint32_t bytes = 0;
    std::uint32_t count = 0;

    EXPECT_EQ(link.RasEnumConnectionsA(&connection, &bytes, &count), 603U);

    EXPECT_EQ(bytes, 824U);
    EXPECT_EQ(count, 2U);
}

TEST_F(SimulatedLinkTest, AnUpLineIsInTheConnectedState) {
    const std::uint32_t handle = connect(dsl);
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;

    ASSERT_EQ(link.RasGetConnectStatusA(handle, &status), 0U);

    EXPECT_EQ(status.rasconnstate, 8192U);
}

TEST_F(SimulatedLinkTest, TheStoredUserNameIsFilledIn) {
    RASDIALPARAMSA parameters = parametersFor(modem);
    bool found = false;

    ASSERT_EQ(link.RasGetEntryDialParamsA(nullptr, &parameters, &found), 0U);

    EXPECT_STREQ(parameters.szUserName, "harbour");
    EXPECT_TRUE(found);
}

TEST_F(SimulatedLinkTest, AnUnknownEntryCannotBeDialled) {
    RASDIALPARAMSA parameters = parametersFor("Nowhere");
    bool found = false;
    std::uint32_t handle = 0;

    EXPECT_EQ(link.RasGetEntryDialParamsA(nullptr, &parameters, &found), 623U);
    EXPECT_EQ(dialEntry(link, "Nowhere", handle), 623U);
    EXPECT_EQ(handle, 0U);
}

TEST_F(SimulatedLinkTest, TheEntryWithAWrongPasswordFailsWith691) {
    std::uint32_t handle = 0;

    EXPECT_EQ(dialEntry(link, "Old Mill (wrong password)", handle), 691U);

    EXPECT_EQ(handle, 0U);
    EXPECT_EQ(connectionCount(), 0U);
}

TEST_F(SimulatedLinkTest, TheBusyEntryFailsWith676) {
    std::uint32_t handle = 0;

    EXPECT_EQ(dialEntry(link, "Village Line (busy)", handle), 676U);

    EXPECT_EQ(connectionCount(), 0U);
}

TEST_F(SimulatedLinkTest, DiallingALineThatIsUpGivesItsHandleAtOnce) {
    const std::uint32_t first = connect(dsl);
    const std::uint64_t before = now;

    const std::uint32_t second = connect(dsl);

    EXPECT_EQ(second, first);
    EXPECT_EQ(now, before);
    EXPECT_EQ(connectionCount(), 1U);
}

TEST_F(SimulatedLinkTest, HangingUpEndsTheConnection) {
    const std::uint32_t handle = connect(dsl);

    EXPECT_EQ(link.RasHangUpA(handle), 0U);

    EXPECT_EQ(connectionCount(), 0U);
    EXPECT_EQ(link.RasHangUpA(handle), 6U);
}

TEST_F(SimulatedLinkTest, AnEndedConnectionHasNoStateAndNoStatistics) {
    const std::uint32_t handle = connect(dsl);
    link.RasHangUpA(handle);
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;
    RAS_STATS statistics{};
    statistics.dwSize = RAS_STATS::size;

    EXPECT_EQ(link.RasGetConnectStatusA(handle, &status), 6U);
    EXPECT_EQ(link.RasGetConnectionStatistics(handle, &statistics), 6U);
}

TEST_F(SimulatedLinkTest, CountersBeginAtZeroAndNeverFall) {
    const std::uint32_t handle = connect(dsl);
    RAS_STATS last = statisticsOf(link, handle);
    EXPECT_EQ(last.dwBytesRcved, 0U);
    EXPECT_EQ(last.dwBytesXmited, 0U);
    EXPECT_EQ(last.dwConnectDuration, 0U);

    for (int tick = 0; tick < 600; ++tick) {
        now += 100;
        const RAS_STATS next = statisticsOf(link, handle);
        EXPECT_GE(next.dwBytesRcved, last.dwBytesRcved);
        EXPECT_GE(next.dwBytesXmited, last.dwBytesXmited);
        EXPECT_EQ(next.dwConnectDuration, last.dwConnectDuration + 100);
        last = next;
    }

    EXPECT_GT(last.dwBytesRcved, 1'000'000U);
}

TEST_F(SimulatedLinkTest, NoLineIsFasterThanItsKind) {
    const std::uint32_t handle = connect(modem);

    now += 600'000;

    const RAS_STATS statistics = statisticsOf(link, handle);
    EXPECT_GT(statistics.dwBytesRcved, 100'000U);
    EXPECT_LT(statistics.dwBytesRcved, 600U * 5'600U);
    EXPECT_EQ(statistics.dwBps, 50'666U);
}

TEST_F(SimulatedLinkTest, TheSameSeedGivesTheSameTrafficHoweverOftenItIsRead) {
    SimulatedLink other = linkWithSeed(7);
    std::uint32_t otherHandle = 0;
    const std::uint64_t begin = now;
    const std::uint32_t handle = connect(dsl);
    for (int tick = 0; tick < 50; ++tick) {
        now += 600;
        statisticsOf(link, handle);
    }
    const RAS_STATS often = statisticsOf(link, handle);

    now = begin;
    dialEntry(other, dsl, otherHandle);
    now += 30'000;
    const RAS_STATS once = statisticsOf(other, otherHandle);

    EXPECT_EQ(often.dwBytesRcved, once.dwBytesRcved);
    EXPECT_EQ(often.dwBytesXmited, once.dwBytesXmited);
}

TEST_F(SimulatedLinkTest, AnotherSeedGivesOtherTraffic) {
    SimulatedLink other = linkWithSeed(8);
    std::uint32_t otherHandle = 0;
    const std::uint64_t begin = now;
    const std::uint32_t handle = connect(dsl);
    now += 30'000;
    const RAS_STATS first = statisticsOf(link, handle);

    now = begin;
    dialEntry(other, dsl, otherHandle);
    now += 30'000;

    EXPECT_NE(first.dwBytesRcved, statisticsOf(other, otherHandle).dwBytesRcved);
}

TEST_F(SimulatedLinkTest, ANewSessionStartsAtZeroAgain) {
    link.RasHangUpA(connect(dsl));
    const std::uint32_t handle = connect(dsl);

    EXPECT_EQ(statisticsOf(link, handle).dwBytesRcved, 0U);
}

TEST_F(SimulatedLinkTest, ItsOwnCodesHaveTexts) {
    std::array<char, 512> buffer{};

    ASSERT_EQ(link.RasGetErrorStringA(676, buffer.data(), buffer.size()), 0U);

    EXPECT_STREQ(buffer.data(), "The phone line is busy.");
}

TEST_F(SimulatedLinkTest, AnUnknownCodeLeavesTheBufferAlone) {
    std::array<char, 4> buffer{'a', 'b', 'c', '\0'};

    EXPECT_NE(link.RasGetErrorStringA(9999, buffer.data(), buffer.size()), 0U);

    EXPECT_STREQ(buffer.data(), "abc");
}

TEST_F(SimulatedLinkTest, ATextIsCutToTheBuffer) {
    std::array<char, 4> buffer{};

    ASSERT_EQ(link.RasGetErrorStringA(676, buffer.data(), buffer.size()), 0U);

    EXPECT_STREQ(buffer.data(), "The");
}

TEST_F(SimulatedLinkTest, ALineThatStandsStillIsOfOneAge) {
    link.standStillAt(4632);
    const std::uint32_t handle = connect(dsl);
    const RAS_STATS before = statisticsOf(link, handle);

    now += 60'000;

    EXPECT_EQ(statisticsOf(link, handle).dwConnectDuration, 4632U);
    EXPECT_EQ(statisticsOf(link, handle).dwBytesRcved, before.dwBytesRcved);
    EXPECT_GT(before.dwBytesRcved, 0U);
}

} // namespace
} // namespace tarvik
