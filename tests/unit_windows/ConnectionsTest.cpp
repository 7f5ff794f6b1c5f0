#include "connection/mdlCode.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlCodeMonitor.h"
#include "scripted/ScriptedPlatform.h"
#include "standin/StandIn.h"
#include "startup/mdlStartUp.h"
#include "windows/services/WindowsConnections.h"
#include "wiring/World.h"

#include "state/mdlTransfers.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tarvik {
namespace {

/// A record with nothing but its size.
template <class Record>
Record sized(std::uint32_t size) {
    Record record{};
    record.dwSize = size;
    return record;
}

/// The program on the system's remote access library, which a stand-in takes the place of: the call
/// path is the real one, from the rules through the library's functions and its records.
class ConnectionsTest : public testing::Test {
protected:
    void SetUp() override {
        Library library("rasapi32.dll");
        StandInService* const mark = library.function<StandInService>(standInMark);
        ASSERT_NE(mark, nullptr) << "The system's own remote access library answers. The stand-in "
                                    "must lie in the system's folder and be preferred.";
        service = mark();
        *service = StandIn();
    }

    void expectBox(const std::string& text) {
        machine.desktop.expect({.text = text, .icon = MsgBoxIcon::Critical});
    }

    ~ConnectionsTest() override { machine.desktop.verify(); }

    StandIn* service = nullptr;
    WindowsConnections connections;
    ScriptedPlatform machine;
    Platform platform{
        connections,     machine.systemErrors, machine.internet,  machine.sockets,
        machine.profile, machine.files,        machine.instances, machine.notificationArea,
        machine.dialogs, machine.desktop,      machine.clock,     machine.locale,
        machine.program};
    World world{platform};
};

TEST_F(ConnectionsTest, EntriesAreListedInEachFormThatASystemKnows) {
    service->entries = {{.name = "Harbour", .flags = 1, .phoneBookPath = "C:\\book.pbk"},
                        {.name = "Ridge"}};
    for (const std::uint32_t size : {532U, 264U, 28U}) {
        service->entrySizes = {size};
        std::vector<PhoneBookEntry> entries;

        RasGetAllEntries(entries, "");

        ASSERT_EQ(entries.size(), 2U) << size;
        EXPECT_EQ(entries[0].name, "Harbour") << size;
        EXPECT_EQ(entries[1].name, "Ridge") << size;
        EXPECT_EQ(entries[0].flags, size == 532 ? 1U : 0U);
        EXPECT_EQ(entries[0].phoneBookPath, size == 532 ? "C:\\book.pbk" : "");
    }
}

TEST_F(ConnectionsTest, WithoutEntriesTheListIsEmpty) {
    std::vector<PhoneBookEntry> entries;

    EXPECT_FALSE(RasGetAllEntries(entries, ""));

    EXPECT_TRUE(entries.empty());
}

TEST_F(ConnectionsTest, ThreeConnectionsAreFoundWithTheirNamesAndDevices) {
    for (const char* name : {"One", "Two", "Three"}) {
        service->connect(name);
    }
    service->asksForOneMore = true;
    std::uint32_t count = 0;

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(count, 3U);
    const auto& found = world.state.RasConnections;
    ASSERT_GE(found.size(), 3U);
    EXPECT_STREQ(found[2].szEntryName, "Three");
    EXPECT_STREQ(found[2].szDeviceType, "modem");
    EXPECT_STREQ(found[2].szDeviceName, "Line 1");
    EXPECT_EQ(found[2].hrasconn, 3U);
}

TEST_F(ConnectionsTest, AServiceThatWantsRoomForOneHasNoConnections) {
    service->countsWhatItWrote = true;
    std::uint32_t count = 9;

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(count, 0U);
}

TEST_F(ConnectionsTest, ACountFromBeforeIsNotTakenForTheServices) {
    service->countsWhatItWrote = true;
    auto line = sized<RASCONNA>(412);
    std::uint32_t bytes = 0;
    std::uint32_t count = 9;

    EXPECT_EQ(connections.RasEnumConnectionsA(&line, &bytes, &count), 0U);

    EXPECT_EQ(count, 0U);
    EXPECT_EQ(bytes, 0U);
}

TEST_F(ConnectionsTest, ConnectionsThatWereNotCountedAreFoundAllTheSame) {
    for (const char* name : {"One", "Two", "Three"}) {
        service->connect(name);
    }
    service->countsWhatItWrote = true;
    std::uint32_t count = 0;

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(count, 3U);
    ASSERT_GE(world.state.RasConnections.size(), 3U);
    EXPECT_STREQ(world.state.RasConnections[2].szEntryName, "Three");
}

TEST_F(ConnectionsTest, AConnectionThatIsBeingMadeIsNotListed) {
    service->connect("One");
    service->connection(service->connect("Two"))->state = 3;
    service->connect("Three");
    std::uint32_t count = 0;

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_EQ(count, 2U);
    EXPECT_STREQ(world.state.RasConnections[0].szEntryName, "One");
    EXPECT_STREQ(world.state.RasConnections[1].szEntryName, "Three");
}

TEST_F(ConnectionsTest, ATunnelIsListedBeforeTheLineThatItRunsThrough) {
    const std::uint32_t line = service->connect("Line");
    const std::uint32_t tunnel = service->connect("Office");
    service->connection(tunnel)->deviceType = "VPN";
    std::uint32_t count = 0;

    EXPECT_EQ(InitRas(0, count), 0U);

    EXPECT_STREQ(world.state.RasConnections[0].szEntryName, "Office");
    EXPECT_STREQ(world.state.RasConnections[1].szEntryName, "Line");
    EXPECT_EQ(connections.carrierOf(tunnel), line);
    EXPECT_EQ(connections.carrierOf(line), 0U);
    service->disconnect(line);
    EXPECT_EQ(InitRas(0, count), 0U);
    EXPECT_EQ(connections.carrierOf(tunnel), 0U);
}

TEST_F(ConnectionsTest, ATunnelThroughTheLineIsNotCountedTwice) {
    world.state.DialInStarted = true;
    const std::uint32_t line = service->connect("Line");
    const std::uint32_t tunnel = service->connect("Office");
    service->connection(tunnel)->deviceType = "vpn";
    service->transfer(line, 5100, 0, 1000);
    service->transfer(tunnel, 5000, 0, 1000);
    UpdateStats();
    service->disconnect(tunnel);
    UpdateStats();
    service->disconnect(line);

    UpdateStats();

    EXPECT_EQ(world.state.BytesRcvdTotal, Currency(5100));
}

TEST_F(ConnectionsTest, FewerBytesInMoreFramesUnderTheSameHandleAreNoPassOfTheEnd) {
    world.state.DialInStarted = true;
    const std::uint32_t handle = service->connect("Line");
    service->transfer(handle, 5000, 300, 60'000);
    service->connection(handle)->statistics.dwFramesRcved = 20;
    UpdateStats();
    service->connection(handle)->statistics.dwBytesRcved = 3000;
    service->connection(handle)->statistics.dwFramesRcved = 45;
    service->connection(handle)->statistics.dwConnectDuration = 90'000;

    UpdateStats();

    EXPECT_EQ(Rcvd().overall(), Currency(8000));
}

TEST_F(ConnectionsTest, ARedialByTheProgramIsAnotherSessionWhateverItsFigures) {
    service->entries = {{.name = "Line"}};
    DialIn("Line", "");
    service->transfer(service->connections[0].handle, 5000, 300, 60'000);
    UpdateStats();
    HangUp();
    DialIn("Line", "");
    service->transfer(service->connections[0].handle, 9000, 400, 61'000);

    UpdateStats();

    EXPECT_EQ(Rcvd().overall(), Currency(14'000));
}

TEST_F(ConnectionsTest, StateAndStatisticsComeInTheirRecords) {
    const std::uint32_t handle = service->connect("One");
    service->transfer(handle, 5000, 200, 3000);
    service->connections[0].statistics.dwBps = 56'000;
    auto status = sized<RASCONNSTATUSA>(160);
    auto statistics = sized<RAS_STATS>(60);

    EXPECT_EQ(connections.RasGetConnectStatusA(handle, &status), 0U);
    EXPECT_EQ(connections.RasGetConnectionStatistics(handle, &statistics), 0U);

    EXPECT_EQ(status.rasconnstate, 8192U);
    EXPECT_STREQ(status.szDeviceType, "modem");
    EXPECT_STREQ(status.szDeviceName, "Line 1");
    EXPECT_EQ(statistics.dwBytesRcved, 5000U);
    EXPECT_EQ(statistics.dwBytesXmited, 200U);
    EXPECT_EQ(statistics.dwConnectDuration, 3000U);
    EXPECT_EQ(statistics.dwBps, 56'000U);
}

TEST_F(ConnectionsTest, AnEndedConnectionHasAnInvalidHandle) {
    auto status = sized<RASCONNSTATUSA>(160);

    EXPECT_EQ(connections.RasGetConnectStatusA(77, &status), 6U);
}

TEST_F(ConnectionsTest, TheReservedTextAndThePhoneBookKeepTheirPlaces) {
    constexpr const char* reserved = "reserved";
    constexpr const char* phoneBook = "C:\\book.pbk";
    auto entry = sized<RASENTRYNAMEA>(532);
    std::uint32_t bytes = sizeof entry;
    std::uint32_t count = 0;

    connections.RasEnumEntriesA(reserved, phoneBook, &entry, &bytes, &count);

    EXPECT_EQ(service->reserved, reserved);
    EXPECT_EQ(service->phoneBook, phoneBook);
}

TEST_F(ConnectionsTest, TheStoredDialDataAreAskedOfTheGivenPhoneBook) {
    constexpr const char* phoneBook = "C:\\book.pbk";
    auto parameters = sized<RASDIALPARAMSA>(1052);
    bool found = false;

    connections.RasGetEntryDialParamsA(phoneBook, &parameters, &found);

    EXPECT_EQ(service->phoneBook, phoneBook);
}

TEST_F(ConnectionsTest, ADialPassesThePhoneBookAndTheNotifierOn) {
    constexpr const char* phoneBook = "C:\\book.pbk";
    auto extensions = sized<RASDIALEXTENSIONS>(16);
    auto parameters = sized<RASDIALPARAMSA>(1052);
    std::uint32_t handle = 0;

    connections.RasDialA(&extensions, phoneBook, &parameters, 2, this, &handle);

    EXPECT_EQ(service->phoneBook, phoneBook);
    EXPECT_EQ(service->notifierType, 2U);
    EXPECT_EQ(service->notifier, this);
}

TEST_F(ConnectionsTest, TheProgramDialsInTheDefaultPhoneBookAndWaits) {
    service->entries = {{.name = "One"}};
    service->phoneBook = "another";
    service->notifierType = 9;
    service->notifier = this;

    DialIn("One", "");

    EXPECT_EQ(service->phoneBook, nullptr);
    EXPECT_EQ(service->notifierType, 0U);
    EXPECT_EQ(service->notifier, nullptr);
}

TEST_F(ConnectionsTest, ADialHandsOverRecordsOfTheirExactSizes) {
    const std::string name(300, 'n');
    service->entries = {{.name = name.substr(0, 256)}};

    EXPECT_EQ(DialIn(name, ""), 1);

    ASSERT_EQ(service->dialled.size(), 1U);
    const RASDIALPARAMSA& dialled = service->dialled[0];
    EXPECT_EQ(dialled.dwSize, 1052U);
    EXPECT_EQ(std::strlen(dialled.szEntryName), 256U);
    EXPECT_STREQ(dialled.szUserName, "user");
    EXPECT_STREQ(dialled.szPassword, "secret");
    EXPECT_EQ(service->extensionsSeen[0].dwSize, 16U);
    EXPECT_TRUE(world.state.DialInStarted);
}

TEST_F(ConnectionsTest, AStoredPasswordIsToldAsSuch) {
    service->entries = {{.name = "One"}};
    auto parameters = sized<RASDIALPARAMSA>(1052);
    std::strcpy(parameters.szEntryName, "One");
    bool found = false;

    EXPECT_EQ(connections.RasGetEntryDialParamsA(nullptr, &parameters, &found), 0U);
    EXPECT_TRUE(found);
    std::strcpy(parameters.szEntryName, "Other");
    EXPECT_EQ(connections.RasGetEntryDialParamsA(nullptr, &parameters, &found), 623U);
    EXPECT_FALSE(found);
}

TEST_F(ConnectionsTest, AWrongPasswordIsToldWithTheServicesText) {
    service->entries = {{.name = "One"}};
    service->failNext("RasDialA", 691);
    expectBox("Error: RasDial failed with 691:\rAccess was denied because the user name or the "
              "password was not valid on the domain.");

    DialIn("One", "");

    EXPECT_FALSE(world.state.DialInStarted);
}

TEST_F(ConnectionsTest, TheLineOfAFailedDialIsFreed) {
    service->entries = {{.name = "One"}};
    service->failNext("RasDialA", 676);
    service->handleOfFailedDial = service->connect("One");
    auto parameters = sized<RASDIALPARAMSA>(1052);
    std::strcpy(parameters.szEntryName, "One");
    auto extensions = sized<RASDIALEXTENSIONS>(16);
    std::uint32_t handle = 0;

    EXPECT_EQ(connections.RasDialA(&extensions, nullptr, &parameters, 0, nullptr, &handle), 676U);

    EXPECT_TRUE(service->connections.empty());
    EXPECT_EQ(handle, 1U);
}

TEST_F(ConnectionsTest, AFailedDialThatTookNoLineHangsNoneUp) {
    service->entries = {{.name = "One"}};
    service->failNext("RasDialA", 676);
    const std::uint32_t other = service->connect("Other");
    auto parameters = sized<RASDIALPARAMSA>(1052);
    auto extensions = sized<RASDIALEXTENSIONS>(16);
    std::uint32_t handle = other;

    EXPECT_EQ(connections.RasDialA(&extensions, nullptr, &parameters, 0, nullptr, &handle), 676U);

    EXPECT_EQ(service->countOf("RasHangUpA"), 0);
    EXPECT_EQ(service->connections.size(), 1U);
}

TEST_F(ConnectionsTest, HangingUpEndsEveryConnectionThatIsUp) {
    service->connect("One");
    service->connect("Two");
    service->connections[1].state = 5; // being made

    HangUp();

    ASSERT_EQ(service->connections.size(), 1U);
    EXPECT_EQ(service->connections[0].entryName, "Two");
}

TEST_F(ConnectionsTest, TextsComeFromTheServiceAboveSixHundred) {
    EXPECT_EQ(RasErrorMessage(676), "The phone line is busy.");
    char buffer[16] = {};
    EXPECT_EQ(connections.RasGetErrorStringA(676, buffer, sizeof buffer), 0U);
    EXPECT_STREQ(buffer, "The phone line ");
    EXPECT_EQ(connections.RasGetErrorStringA(599, buffer, sizeof buffer), 87U);
}

struct FailureCase {
    const char* function;
    std::uint32_t (*call)(ConnectionProvider& connections);
};

class FailureTest : public ConnectionsTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(FailureTest, TheLibrarysCodeComesThrough) {
    service->failNext(GetParam().function, 651);

    EXPECT_EQ(GetParam().call(connections), 651U);

    EXPECT_EQ(service->calls, std::vector<std::string>{GetParam().function});
}

INSTANTIATE_TEST_SUITE_P(
    Each, FailureTest,
    testing::Values(FailureCase{"RasEnumEntriesA",
                                [](ConnectionProvider& connections) {
                                    auto entry = sized<RASENTRYNAMEA>(532);
                                    std::uint32_t bytes = sizeof entry;
                                    std::uint32_t count = 0;
                                    return connections.RasEnumEntriesA(nullptr, nullptr, &entry,
                                                                       &bytes, &count);
                                }},
                    FailureCase{"RasEnumConnectionsA",
                                [](ConnectionProvider& connections) {
                                    auto line = sized<RASCONNA>(412);
                                    std::uint32_t bytes = sizeof line;
                                    std::uint32_t count = 0;
                                    return connections.RasEnumConnectionsA(&line, &bytes, &count);
                                }},
                    FailureCase{"RasGetConnectStatusA",
                                [](ConnectionProvider& connections) {
                                    auto status = sized<RASCONNSTATUSA>(160);
                                    return connections.RasGetConnectStatusA(1, &status);
                                }},
                    FailureCase{"RasGetConnectionStatistics",
                                [](ConnectionProvider& connections) {
                                    auto statistics = sized<RAS_STATS>(60);
                                    return connections.RasGetConnectionStatistics(1, &statistics);
                                }},
                    FailureCase{"RasGetEntryDialParamsA",
                                [](ConnectionProvider& connections) {
                                    auto parameters = sized<RASDIALPARAMSA>(1052);
                                    bool found = false;
                                    return connections.RasGetEntryDialParamsA(nullptr, &parameters,
                                                                              &found);
                                }},
                    FailureCase{"RasDialA",
                                [](ConnectionProvider& connections) {
                                    auto extensions = sized<RASDIALEXTENSIONS>(16);
                                    auto parameters = sized<RASDIALPARAMSA>(1052);
                                    std::uint32_t handle = 0;
                                    return connections.RasDialA(&extensions, nullptr, &parameters,
                                                                0, nullptr, &handle);
                                }},
                    FailureCase{
                        "RasHangUpA",
                        [](ConnectionProvider& connections) { return connections.RasHangUpA(1); }}),
    [](const auto& given) { return std::string(given.param.function); });

} // namespace
} // namespace tarvik
