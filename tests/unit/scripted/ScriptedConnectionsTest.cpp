#include "scripted/ScriptedConnections.h"

#include "support/RasCalls.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

class ScriptedConnectionsTest : public testing::Test {
protected:
    /// The code of an enumeration with a first record of that size and a buffer of that many bytes.
    std::uint32_t enumEntries(std::uint32_t recordSize, std::uint32_t held) {
        buffer.assign(4096, 'x');
        std::memcpy(buffer.data(), &recordSize, sizeof recordSize);
        bytes = held;
        return line.RasEnumEntriesA(nullptr, nullptr, buffer.data(), &bytes, &count);
    }

    std::uint32_t enumConnections(std::uint32_t held) {
        records = {};
        records[0].dwSize = RASCONNA::size;
        bytes = held;
        return line.RasEnumConnectionsA(records.data(), &bytes, &count);
    }

    std::uint32_t dial(const std::string& entry) { return dialEntry(line, entry, handle); }

    RAS_STATS statisticsOf(std::uint32_t asked) { return tarvik::statisticsOf(line, asked); }

    ScriptedConnections line;
    std::vector<char> buffer;
    std::array<RASCONNA, 4> records{};
    std::uint32_t bytes = 0;
    std::uint32_t count = 99;
    std::uint32_t handle = 0;
};

TEST_F(ScriptedConnectionsTest, WithoutEntriesTheEnumerationSucceedsWithNoBytes) {
    EXPECT_EQ(enumEntries(532, 532), 0U);

    EXPECT_EQ(count, 0U);
    EXPECT_EQ(bytes, 0U);
}

TEST_F(ScriptedConnectionsTest, ATooSmallBufferForEntriesTellsTheSizeNeeded) {
    line.entries = {{.name = "Harbour"}, {.name = "Ridge"}};

    EXPECT_EQ(enumEntries(264, 264), 603U);

    EXPECT_EQ(bytes, 528U);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(enumEntries(264, 528), 0U);
}

TEST_F(ScriptedConnectionsTest, AnEntrySizeThatIsNotAcceptedIsAnsweredWith632) {
    line.entries = {{.name = "Harbour"}};
    line.entrySizes = {28};

    EXPECT_EQ(enumEntries(532, 4096), 632U);
    EXPECT_EQ(enumEntries(264, 4096), 632U);
    EXPECT_EQ(enumEntries(28, 4096), 0U);
    EXPECT_EQ(enumEntries(27, 4096), 632U);
}

TEST_F(ScriptedConnectionsTest, TheNewestEntryFormCarriesFlagsAndPhoneBook) {
    line.entries = {{.name = "Harbour", .flags = 3, .phoneBookPath = "C:\\book.pbk"}};

    ASSERT_EQ(enumEntries(532, 532), 0U);

    RASENTRYNAMEA record;
    std::memcpy(&record, buffer.data(), sizeof record);
    EXPECT_STREQ(record.szEntryName, "Harbour");
    EXPECT_EQ(record.dwFlags, 3U);
    EXPECT_STREQ(record.szPhonebookPath, "C:\\book.pbk");
}

TEST_F(ScriptedConnectionsTest, ALongEntryNameIsCutToItsField) {
    line.entries = {{.name = std::string(300, 'n')}};

    ASSERT_EQ(enumEntries(28, 28), 0U);
    EXPECT_STREQ(buffer.data() + 4, "nnnnnnnnnnnnnnnnnnnn");
    ASSERT_EQ(enumEntries(264, 264), 0U);
    EXPECT_EQ(std::strlen(buffer.data() + 4), 256U);
}

TEST_F(ScriptedConnectionsTest, WithoutConnectionsTheEnumerationSucceedsWithACountOfNought) {
    EXPECT_EQ(enumConnections(0), 0U);

    EXPECT_EQ(count, 0U);
}

TEST_F(ScriptedConnectionsTest, ATooSmallBufferForConnectionsTellsSizeAndCount) {
    line.connect("Harbour");
    line.connect("Ridge");
    line.connect("Tower");

    EXPECT_EQ(enumConnections(0), 603U);
    EXPECT_EQ(bytes, 1236U);
    EXPECT_EQ(count, 3U);

    EXPECT_EQ(enumConnections(1236), 0U);
    EXPECT_STREQ(records[2].szEntryName, "Tower");
    EXPECT_EQ(records[2].hrasconn, 3U);
    EXPECT_STREQ(records[2].szDeviceType, "modem");
}

TEST_F(ScriptedConnectionsTest, AServiceMayAskForOneRecordMoreAtATime) {
    line.connect("Harbour");
    line.connect("Ridge");
    line.asksForOneMore = true;

    EXPECT_EQ(enumConnections(0), 603U);
    EXPECT_EQ(bytes, 412U);
    EXPECT_EQ(enumConnections(412), 603U);
    EXPECT_EQ(bytes, 824U);
    EXPECT_EQ(enumConnections(824), 0U);
}

TEST_F(ScriptedConnectionsTest, AServiceMayNeverBeSatisfied) {
    line.neverSatisfied = true;

    EXPECT_EQ(enumConnections(1648), 603U);
}

TEST_F(ScriptedConnectionsTest, NamesMayFillTheirFieldsWithoutANul) {
    line.connect("Harbour");
    line.namesWithoutNul = true;

    ASSERT_EQ(enumConnections(412), 0U);

    EXPECT_EQ(std::memchr(records[0].szEntryName, '\0', 257), nullptr);
    EXPECT_EQ(std::string(records[0].szEntryName, 8), "Harbourx");
}

TEST_F(ScriptedConnectionsTest, TheStateOfAConnectionIsTold) {
    line.connect("Harbour");
    line.connections[0].state = 4;
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;

    EXPECT_EQ(line.RasGetConnectStatusA(1, &status), 0U);
    EXPECT_EQ(status.rasconnstate, 4U);
    EXPECT_EQ(line.RasGetConnectStatusA(2, &status), 6U);
}

TEST_F(ScriptedConnectionsTest, AConnectionThatCannotBeReadFailsEachTime) {
    line.connect("Harbour");
    line.connections[0].statusFailure = 668;
    line.connections[0].statisticsFailure = 619;
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;
    RAS_STATS statistics{};
    statistics.dwSize = RAS_STATS::size;

    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(line.RasGetConnectStatusA(1, &status), 668U);
        EXPECT_EQ(line.RasGetConnectionStatistics(1, &statistics), 619U);
    }
}

TEST_F(ScriptedConnectionsTest, TransferAddsToTheCountersWhichWrap) {
    line.connect("Harbour");
    line.transfer(1, 5000, 200, 3000);
    line.transfer(1, 1, 4294967295U, 10);

    const RAS_STATS statistics = statisticsOf(1);

    EXPECT_EQ(statistics.dwSize, 60U);
    EXPECT_EQ(statistics.dwBytesRcved, 5001U);
    EXPECT_EQ(statistics.dwBytesXmited, 199U);
    EXPECT_EQ(statistics.dwConnectDuration, 3010U);
}

TEST_F(ScriptedConnectionsTest, StatisticsNeedAConnection) {
    line.connect("Harbour");
    RAS_STATS statistics{};
    statistics.dwSize = RAS_STATS::size;

    EXPECT_EQ(line.RasGetConnectionStatistics(9, &statistics), 6U);
}

TEST_F(ScriptedConnectionsTest, ADialConnectsWithCountersAtNought) {
    line.entries = {{.name = "Harbour"}};

    EXPECT_EQ(dial("Harbour"), 0U);

    EXPECT_EQ(handle, 1U);
    ASSERT_EQ(line.connections.size(), 1U);
    EXPECT_EQ(line.connections[0].state, 8192U);
    EXPECT_EQ(statisticsOf(1).dwBytesRcved, 0U);
    EXPECT_STREQ(line.dialled.at(0).szEntryName, "Harbour");
}

TEST_F(ScriptedConnectionsTest, AnUnknownEntryIsAnsweredWith623) {
    line.entries = {{.name = "Harbour"}};
    RASDIALPARAMSA parameters = parametersFor("Nowhere");
    bool found = false;

    EXPECT_EQ(line.RasGetEntryDialParamsA(nullptr, &parameters, &found), 623U);
    EXPECT_EQ(dial("Nowhere"), 623U);

    EXPECT_FALSE(found);
    EXPECT_TRUE(line.connections.empty());
}

TEST_F(ScriptedConnectionsTest, StoredNamesAreFilledInForAnEntryEvenWhenItsNameIsCut) {
    line.entries = {{.name = std::string(300, 'n')}};
    RASDIALPARAMSA parameters = parametersFor(std::string(256, 'n'));
    bool found = false;

    EXPECT_EQ(line.RasGetEntryDialParamsA(nullptr, &parameters, &found), 0U);

    EXPECT_STREQ(parameters.szUserName, "user");
    EXPECT_STREQ(parameters.szPassword, "secret");
    EXPECT_TRUE(found);
}

TEST_F(ScriptedConnectionsTest, AFailedDialMakesNoConnectionAndMayLeaveAHandle) {
    line.entries = {{.name = "Harbour"}};
    line.failNext("RasDialA", 691);
    handle = 42;
    EXPECT_EQ(dial("Harbour"), 691U);
    EXPECT_EQ(handle, 42U);

    line.failNext("RasDialA", 676);
    line.handleOfFailedDial = 7;
    EXPECT_EQ(dial("Harbour"), 676U);

    EXPECT_EQ(handle, 7U);
    EXPECT_TRUE(line.connections.empty());
}

TEST_F(ScriptedConnectionsTest, SomethingMayHappenWhileDialling) {
    line.entries = {{.name = "Harbour"}};
    std::size_t upMeanwhile = 99;
    line.whileDialling = [&] { upMeanwhile = line.connections.size(); };

    dial("Harbour");

    EXPECT_EQ(upMeanwhile, 0U);
}

TEST_F(ScriptedConnectionsTest, HangingUpEndsTheConnectionAndItsHandle) {
    line.connect("Harbour");
    line.connect("Ridge");

    EXPECT_EQ(line.RasHangUpA(1), 0U);

    ASSERT_EQ(line.connections.size(), 1U);
    EXPECT_EQ(line.connections[0].entryName, "Ridge");
    EXPECT_EQ(line.RasHangUpA(1), 6U);
    EXPECT_EQ(line.connect("Tower"), 3U);
}

TEST_F(ScriptedConnectionsTest, ScriptedCodesComeOneByOneForTheirOperationOnly) {
    line.connect("Harbour");
    line.failNext("RasHangUpA", 668);
    line.failNext("RasHangUpA", 600);

    EXPECT_EQ(enumConnections(412), 0U);
    EXPECT_EQ(line.RasHangUpA(1), 668U);
    EXPECT_EQ(line.RasHangUpA(1), 600U);
    EXPECT_EQ(line.RasHangUpA(1), 0U);

    EXPECT_EQ(line.calls, (Texts{"RasEnumConnectionsA", "RasHangUpA", "RasHangUpA", "RasHangUpA"}));
    EXPECT_EQ(line.countOf("RasHangUpA"), 3);
}

TEST_F(ScriptedConnectionsTest, ErrorTextsAreCutToTheBufferAndUnknownCodesLeaveItAlone) {
    line.errorTexts[691] = "Access denied.";
    char text[7] = "before";

    EXPECT_NE(line.RasGetErrorStringA(9999, text, sizeof text), 0U);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(line.RasGetErrorStringA(691, text, sizeof text), 0U);

    EXPECT_STREQ(text, "Access");
}

} // namespace
} // namespace tarvik
