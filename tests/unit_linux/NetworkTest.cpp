#include "linux/network/LinkFiles.h"
#include "linux/network/LinkSession.h"
#include "linux/network/LinuxInternetState.h"
#include "linux/network/NetworkConnections.h"
#include "linux/network/ReasonCodes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace tarvik {
namespace {

struct ReasonCase {
    std::uint32_t reason;
    std::uint32_t code;
};

class ActiveReasonTest : public testing::TestWithParam<ReasonCase> {};

TEST_P(ActiveReasonTest, BecomesTheNearestCode) {
    EXPECT_EQ(codeOfActiveReason(GetParam().reason), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(All, ActiveReasonTest,
                         testing::Values(ReasonCase{0, 651}, ReasonCase{2, 631}, ReasonCase{3, 668},
                                         ReasonCase{4, 668}, ReasonCase{5, 717}, ReasonCase{6, 678},
                                         ReasonCase{7, 638}, ReasonCase{8, 711}, ReasonCase{9, 691},
                                         ReasonCase{10, 691}, ReasonCase{11, 623},
                                         ReasonCase{12, 651}, ReasonCase{13, 692},
                                         ReasonCase{14, 692}, ReasonCase{99, 651}));

class DeviceReasonTest : public testing::TestWithParam<ReasonCase> {};

TEST_P(DeviceReasonTest, BecomesTheNearestCode) {
    EXPECT_EQ(codeOfDeviceReason(GetParam().reason, 668), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(All, DeviceReasonTest,
                         testing::Values(ReasonCase{0, 668}, ReasonCase{7, 691},
                                         ReasonCase{23, 676}, ReasonCase{24, 680},
                                         ReasonCase{25, 679}, ReasonCase{26, 678},
                                         ReasonCase{43, 692}, ReasonCase{45, 651},
                                         ReasonCase{99, 668}));

TEST(BusErrorTest, AnErrorOfTheBusBecomesTheNearestCode) {
    EXPECT_EQ(codeOfBusError("org.freedesktop.NetworkManager.UnknownConnection"), 623U);
    EXPECT_EQ(codeOfBusError("org.freedesktop.NetworkManager.UnknownDevice"), 692U);
    EXPECT_EQ(codeOfBusError("org.freedesktop.NetworkManager.PermissionDenied"), 691U);
    EXPECT_EQ(codeOfBusError("org.freedesktop.DBus.Error.ServiceUnknown"), 711U);
    EXPECT_EQ(codeOfBusError("org.freedesktop.DBus.Error.NoReply"), 638U);
    EXPECT_EQ(codeOfBusError("org.freedesktop.NetworkManager.Failed"), 651U);
}

class LinkFilesTest : public testing::Test {
protected:
    void write(const std::string& name, const std::string& text) {
        const std::filesystem::path path = std::filesystem::path(folder.path()) / "tun0" / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text << '\n';
    }

    TemporaryFolder folder;
};

TEST_F(LinkFilesTest, ReadsWhatTheKernelCounts) {
    write("ifindex", "7");
    write("statistics/rx_bytes", "5000000000");
    write("statistics/tx_bytes", "12");
    write("statistics/rx_packets", "3");
    write("statistics/rx_crc_errors", "4");

    const auto reading = readLink(folder.path(), "tun0");

    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->index, 7U);
    EXPECT_EQ(reading->received, 5'000'000'000U);
    EXPECT_EQ(reading->sent, 12U);
    EXPECT_EQ(reading->packetsReceived, 3U);
    EXPECT_EQ(reading->checksumErrors, 4U);
    EXPECT_EQ(reading->packetsSent, 0U);
}

TEST_F(LinkFilesTest, AnInterfaceThatIsNotThereHasNoReading) {
    EXPECT_FALSE(readLink(folder.path(), "tun0"));
    EXPECT_FALSE(readLink("/sys/class/net", ""));
}

TEST_F(LinkFilesTest, EveryInterfaceIsRead) {
    write("ifindex", "7");

    EXPECT_EQ(readLinks(folder.path()).size(), 1U);
    EXPECT_TRUE(readLinks(folder.path() + "/none").empty());
}

TEST_F(LinkFilesTest, TheBitRateIsWhatTheDeviceTells) {
    EXPECT_EQ(bitRateOf(folder.path(), "tun0"), 0U);
    write("speed", "100");
    EXPECT_EQ(bitRateOf(folder.path(), "tun0"), 100'000'000U);
    write("speed", "4294");
    EXPECT_EQ(bitRateOf(folder.path(), "tun0"), 4'294'000'000U);
    write("speed", "10000");
    EXPECT_EQ(bitRateOf(folder.path(), "tun0"), 4'294'967'295U);
    write("speed", "-1");
    EXPECT_EQ(bitRateOf(folder.path(), "tun0"), 0U);
}

TEST_F(LinkFilesTest, ATunnelsMadeUpBitRateIsNotTold) {
    write("speed", "10");
    write("tun_flags", "0x1001");

    EXPECT_EQ(bitRateOf(folder.path(), "tun0"), 0U);
}

TEST(LinkSessionTest, WhatAnInterfaceCountedBeforeIsLeftOutUntilItIsMadeAnew) {
    LinkSession session;
    session.beginAt({.index = 4, .received = 1000, .sent = 10});
    session.sample({.index = 4, .received = 1000, .sent = 12});
    EXPECT_EQ(session.total().received, 0U);
    EXPECT_EQ(session.total().sent, 2U);

    session.sample({.index = 5, .received = 70, .sent = 1});

    EXPECT_EQ(session.total().received, 70U);
    EXPECT_EQ(session.total().sent, 3U);
}

TEST(LinkSessionTest, AnotherInterfacesBeginningIsNoMatter) {
    LinkSession session;
    session.beginAt({.index = 3, .received = 1000, .sent = 10});
    session.sample({.index = 4, .received = 50, .sent = 2});

    EXPECT_EQ(session.total().received, 50U);
}

TEST(LinkSessionTest, ATunnelMadeAnewIsAddedToTheOneBefore) {
    LinkSession session;
    session.sample({.index = 4, .received = 1000, .sent = 10});
    session.sample({.index = 4, .received = 1500, .sent = 20});

    session.sample({.index = 5, .received = 0, .sent = 0});
    EXPECT_EQ(session.total().received, 1500U);
    session.sample({.index = 5, .received = 70, .sent = 1});

    EXPECT_EQ(session.total().received, 1570U);
    EXPECT_EQ(session.total().sent, 21U);
}

TEST(LinkSessionTest, CountersThatGoBackAreThoseOfANewTunnel) {
    LinkSession session;
    session.sample({.index = 4, .received = 1000, .sent = 10});
    session.sample({.index = 4, .received = 5, .sent = 2});

    EXPECT_EQ(session.total().received, 1005U);
    EXPECT_EQ(session.total().sent, 12U);
}

TEST(LinkSessionTest, TheFirstReadingCountsFromTheStartOfTheTunnel) {
    LinkSession session;
    session.sample({.index = 4, .received = 1000, .sent = 10});

    EXPECT_EQ(session.total().received, 1000U);
}

NetworkLine lineOf(const std::string& type, std::uint32_t state) {
    NetworkLine line;
    line.type = type;
    line.state = state;
    return line;
}

TEST(InternetFlagsTest, AWiredMachineIsConnectedThroughANetwork) {
    const InternetFlags found = internetFlags(
        {.state = 70, .connectivity = 4, .primaryType = "802-3-ethernet", .primaryName = "wire"},
        {}, true, false);

    EXPECT_TRUE(found.connected);
    EXPECT_EQ(found.flags, 2U | 16U | 64U);
}

TEST(InternetFlagsTest, AModemAndAProxyAreTold) {
    const InternetFlags found =
        internetFlags({.state = 60, .connectivity = 4, .primaryType = "gsm", .primaryName = "m"},
                      {lineOf("gsm", 2)}, false, true);

    EXPECT_TRUE(found.connected);
    EXPECT_EQ(found.flags, 1U | 4U | 16U);
}

TEST(InternetFlagsTest, AMachineThatIsAsleepOrDiallingIsNotConnected) {
    const InternetFlags offline = internetFlags(
        {.state = 10, .connectivity = 1, .primaryType = "", .primaryName = ""}, {}, true, true);
    const InternetFlags dialling =
        internetFlags({.state = 40, .connectivity = 1, .primaryType = "", .primaryName = ""},
                      {lineOf("gsm", 1)}, true, true);

    EXPECT_FALSE(offline.connected);
    EXPECT_EQ(offline.flags, 16U | 32U | 64U);
    EXPECT_FALSE(dialling.connected);
    EXPECT_EQ(dialling.flags, 8U | 16U | 64U);
}

TEST(InternetFlagsTest, ANetworkOrATunnelThatIsBeingConnectedKeepsNoModemBusy) {
    const NetworkState connecting{
        .state = 40, .connectivity = 1, .primaryType = "", .primaryName = ""};

    EXPECT_EQ(internetFlags(connecting, {}, true, false).flags, 16U | 64U);
    EXPECT_EQ(internetFlags(connecting, {lineOf("vpn", 1), lineOf("gsm", 2)}, true, false).flags,
              16U | 64U);
}

TEST(InternetFlagsTest, AModemIsBusyWhileItDialsBesideANetwork) {
    const NetworkState wired{
        .state = 70, .connectivity = 4, .primaryType = "802-3-ethernet", .primaryName = "wire"};

    for (const char* type : {"gsm", "cdma", "pppoe", "adsl", "bluetooth"}) {
        EXPECT_EQ(internetFlags(wired, {lineOf(type, 1)}, true, false).flags & 8U, 8U) << type;
    }
}

/// A machine whose bus is not there.
class WithoutBusTest : public testing::Test {
protected:
    WithoutBusTest() { setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1); }
    ~WithoutBusTest() override { unsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

    NetworkConnections connections;
};

TEST_F(WithoutBusTest, EveryOperationSaysThatTheServiceDoesNotRun) {
    RASENTRYNAMEA entry{};
    entry.dwSize = 532;
    RASCONNA line{};
    line.dwSize = 412;
    RASDIALPARAMSA parameters{};
    parameters.dwSize = 1052;
    RASDIALEXTENSIONS extensions{};
    extensions.dwSize = 16;
    std::uint32_t bytes = sizeof entry;
    std::uint32_t count = 9;
    std::uint32_t handle = 0;
    bool password = false;

    EXPECT_EQ(connections.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 711U);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(bytes, 0U);
    bytes = sizeof line;
    EXPECT_EQ(connections.RasEnumConnectionsA(&line, &bytes, &count), 711U);
    EXPECT_EQ(connections.RasGetEntryDialParamsA(nullptr, &parameters, &password), 711U);
    EXPECT_EQ(connections.RasDialA(&extensions, nullptr, &parameters, 0, nullptr, &handle), 711U);
    EXPECT_EQ(connections.RasHangUpA(1), 6U);
}

TEST_F(WithoutBusTest, TheMachineIsNotConnected) {
    LinuxInternetState internet;
    std::uint32_t flags = 9;
    char name[8] = "before";

    EXPECT_FALSE(internet.InternetGetConnectedStateExA(&flags, name, sizeof name, 0));

    EXPECT_EQ(flags, 0U);
    EXPECT_STREQ(name, "before");
}

TEST_F(WithoutBusTest, TheOldestEntryFormIsNotKnown) {
    RASENTRYNAMEA_28 entry{};
    entry.dwSize = RASENTRYNAMEA_28::size;
    std::uint32_t bytes = sizeof entry;
    std::uint32_t count = 0;

    EXPECT_EQ(connections.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 632U);
}

} // namespace
} // namespace tarvik
