#include "NetworkServiceTest.h"

#include "linux/network/LinuxInternetState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace tarvik {
namespace {

TEST_F(NetworkServiceTest, ProfilesOfTheDialledKindsAreTheEntries) {
    service.addProfile("zone", "wireguard");
    for (const char* type : {"gsm", "cdma", "pppoe", "adsl", "vpn", "802-3-ethernet",
                             "802-11-wireless", "tun", "bridge"}) {
        service.addProfile(type, type);
    }
    service.addProfile("phone", "bluetooth", {{"bluetooth", {{"type", sdbus::Variant("dun")}}}});
    service.addProfile("headset", "bluetooth", {{"bluetooth", {{"type", sdbus::Variant("panu")}}}});

    EXPECT_EQ(entries(), (Names{"adsl", "cdma", "gsm", "phone", "pppoe", "vpn", "zone"}));
    EXPECT_EQ(code, 0U);
}

TEST_F(NetworkServiceTest, EntriesThatComeLaterAreListedToo) {
    EXPECT_EQ(entries(), Names());

    service.addProfile("new", "gsm");

    EXPECT_TRUE(soon([&] { return entries() == Names{"new"}; }));
}

TEST_F(NetworkServiceTest, AnEntryThatIsRenamedOrRemovedIsSeen) {
    const std::string first = service.addProfile("first", "gsm");
    const std::string second = service.addProfile("second", "gsm");
    EXPECT_EQ(entries(), (Names{"first", "second"}));

    service.renameProfile(first, "third");
    EXPECT_TRUE(soon([&] { return entries() == Names{"second", "third"}; }));

    service.removeProfile(second);
    EXPECT_TRUE(soon([&] { return entries() == Names{"third"}; }));
}

TEST_F(NetworkServiceTest, ALineBearsTheNewNameOfItsProfile) {
    const std::string modem = service.addDevice("wwan0");
    const std::string profile = service.addProfile("first", "gsm");
    service.addLine(profile, activated, {sdbus::ObjectPath(modem)});
    const auto line = lines().at(0).hrasconn;

    service.renameProfile(profile, "second");

    EXPECT_TRUE(soon([&] { return lines().at(0).szEntryName == std::string("second"); }));
    EXPECT_EQ(lines().at(0).hrasconn, line);
}

TEST_F(NetworkServiceTest, ProfilesThatTakeLongerThanAnAnswerMayAreReadOneAfterTheOther) {
    makeInterface("tun0", 7, 50, 60);
    addVpn("office");
    for (int i = 1; i < 40; ++i) {
        service.addProfile("p" + std::to_string(i), "gsm");
    }
    service.slowDown(std::chrono::milliseconds(100));

    // The line is counted from the beginning, and nothing is said to have failed.
    const auto found = lines();
    EXPECT_EQ(code, 0U);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_STREQ(found[0].szEntryName, "office");
    EXPECT_EQ(statisticsOf(found[0].hrasconn).dwBytesRcved, 50U);

    const std::size_t some = entries().size();
    EXPECT_EQ(code, 0U);
    EXPECT_GT(some, 0U);
    EXPECT_LT(some, 40U);
    EXPECT_EQ(dial("no such entry, as far as is known"), 638U);

    EXPECT_TRUE(soon([&] { return entries().size() == 40; }));
    EXPECT_EQ(dial("no such entry"), 623U);
    EXPECT_EQ(lines().at(0).hrasconn, found[0].hrasconn);
}

TEST_F(NetworkServiceTest, ProfilesOfOneNameAreToldApartAndEachCanBeDialled) {
    service.addProfile("work", "gsm");
    const std::string second = service.addProfile("work", "vpn");
    EXPECT_EQ(entries(), (Names{"work", "work (2)"}));
    service.onActivate = [&](const std::string& profile) {
        EXPECT_EQ(profile, second);
        service.addDevice("tun3", "/ip/tun3");
        return service.addLine(profile, activated, {}, "/ip/tun3");
    };
    EXPECT_EQ(dial("work (2)"), 0U);
    EXPECT_STREQ(lines().at(0).szEntryName, "work (2)");
}

TEST_F(NetworkServiceTest, AProfileOfAnotherUserIsNoEntry) {
    service.hideProfile(service.addProfile("theirs", "gsm"));
    service.addProfile("ours", "gsm");

    EXPECT_EQ(entries(), Names{"ours"});
}

TEST_F(NetworkServiceTest, RoomForEveryRecordIsAskedFor) {
    addVpn("office");
    service.addProfile("home", "gsm");
    RASENTRYNAMEA entry{};
    entry.dwSize = 532;
    RASCONNA line{};
    line.dwSize = 412;
    std::uint32_t count = 0;

    std::uint32_t bytes = 532;
    EXPECT_EQ(connections.RasEnumEntriesA(nullptr, nullptr, &entry, &bytes, &count), 603U);
    EXPECT_EQ(bytes, 2U * 532);
    bytes = 0;
    EXPECT_EQ(connections.RasEnumConnectionsA(&line, &bytes, &count), 603U);
    EXPECT_EQ(bytes, 412U);
    EXPECT_EQ(count, 1U);
}

TEST_F(NetworkServiceTest, TheUsersNameIsThatOfTheProfile) {
    service.addProfile("home", "pppoe", {{"pppoe", {{"username", sdbus::Variant("me@isp")}}}});
    RASDIALPARAMSA parameters{};
    parameters.dwSize = 1052;
    std::string("home").copy(parameters.szEntryName, 5);
    bool password = true;

    EXPECT_EQ(connections.RasGetEntryDialParamsA(nullptr, &parameters, &password), 0U);
    EXPECT_STREQ(parameters.szUserName, "me@isp");
    EXPECT_FALSE(password);

    parameters.szEntryName[0] = 'H';
    EXPECT_EQ(connections.RasGetEntryDialParamsA(nullptr, &parameters, &password), 623U);
    EXPECT_EQ(dial("nothing of that name"), 623U);
}

TEST_F(NetworkServiceTest, AConnectionIsListedOnlyWhileItIsActivated) {
    const std::string modem = service.addDevice("wwan0");
    const std::string path = service.addLine(service.addProfile("mobile", "gsm"), activating,
                                             {sdbus::ObjectPath(modem)});
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(code, 0U);

    service.setLineState(path, activated, 1);

    EXPECT_TRUE(soon([&] { return lines().size() == 1; }));
    const auto after = lines();
    ASSERT_EQ(after.size(), 1U);
    EXPECT_EQ(stateOf(after[0].hrasconn), 8192U);
    EXPECT_STREQ(after[0].szDeviceType, "modem");
    EXPECT_STREQ(after[0].szDeviceName, "Mobile broadband wwan0");

    service.setLineState(path, 3, 2);
    EXPECT_TRUE(soon([&] { return lines().empty(); }));
    EXPECT_EQ(stateOf(after[0].hrasconn), 0U);
    EXPECT_EQ(code, 6U);
}

struct DeviceCase {
    const char* type;
    const char* deviceType;
    const char* deviceName;
};

class DeviceNameTest : public NetworkServiceTest, public testing::WithParamInterface<DeviceCase> {};

TEST_P(DeviceNameTest, IsWhatAPersonWouldCallIt) {
    const std::string device = service.addDevice("ppp0");
    service.addLine(service.addProfile("line", GetParam().type), activated,
                    {sdbus::ObjectPath(device)});

    const auto found = lines();

    ASSERT_EQ(found.size(), 1U);
    EXPECT_STREQ(found[0].szDeviceType, GetParam().deviceType);
    EXPECT_STREQ(found[0].szDeviceName, GetParam().deviceName);
}

INSTANTIATE_TEST_SUITE_P(Each, DeviceNameTest,
                         testing::Values(DeviceCase{"cdma", "modem", "Mobile broadband ppp0"},
                                         DeviceCase{"bluetooth", "modem", "Bluetooth phone ppp0"},
                                         DeviceCase{"pppoe", "pppoe", "DSL ppp0"},
                                         DeviceCase{"adsl", "pppoe", "DSL ppp0"},
                                         DeviceCase{"wireguard", "vpn", "WireGuard ppp0"}));

TEST_F(NetworkServiceTest, TheTunnelOfAVpnIsTheDeviceWithItsAddresses) {
    makeInterface("eth0", 2, 999'999, 999'999);
    makeInterface("tun0", 7, 50, 60);
    addVpn("office");

    const auto found = lines();

    ASSERT_EQ(found.size(), 1U);
    EXPECT_STREQ(found[0].szDeviceName, "VPN tun0");
    EXPECT_EQ(statisticsOf(found[0].hrasconn).dwBytesRcved, 50U);
}

TEST_F(NetworkServiceTest, CountersBeyondTheRecordsWidthAreGivenWhole) {
    makeInterface("tun0", 7, 4'294'967'301, 30'000'000'000);
    addVpn("office");
    const std::uint32_t line = lines().at(0).hrasconn;

    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 5U);

    const auto totals = connections.lineTotals(line);
    ASSERT_TRUE(totals.has_value());
    EXPECT_EQ(totals->rcvd, 4'294'967'301U);
    EXPECT_EQ(totals->sent, 30'000'000'000U);
    EXPECT_FALSE(connections.lineTotals(line + 1).has_value());
}

TEST_F(NetworkServiceTest, TheTunnelOfAVpnWithoutOldAddressesIsFoundByTheNewOnes) {
    makeInterface("tun6", 7, 50, 60);
    service.addDevice("tun6", "/", "/ip6/tun6");
    service.addLine(service.addProfile("six", "vpn"), activated, {}, "/", "/ip6/tun6");

    EXPECT_EQ(statisticsOf(lines().at(0).hrasconn).dwBytesXmited, 60U);
}

TEST_F(NetworkServiceTest, AVpnWithoutATunnelIsUpAndCountsNothing) {
    makeInterface("eth0", 2, 999'999, 999'999);
    const std::string wire = service.addDevice("eth0", "/ip/eth0");
    service.addProfile("policy", "vpn");
    service.onActivate = [&](const std::string& profile) {
        return service.addLine(profile, activated, {sdbus::ObjectPath(wire)}, "/ip/eth0");
    };

    EXPECT_EQ(dial("policy"), 0U);

    EXPECT_EQ(stateOf(handle), 8192U);
    EXPECT_EQ(statisticsOf(handle).dwBytesRcved, 0U);
    EXPECT_EQ(code, 0U);
}

TEST_F(NetworkServiceTest, ATunnelThatIsKnownALittleLaterIsCounted) {
    makeInterface("tun0", 7, 50, 60);
    service.addDevice("tun0", "/ip/tun0");
    const std::string path =
        service.addLine(service.addProfile("office", "vpn"), activated, {}, "/");
    const auto line = lines().at(0).hrasconn;
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 0U);

    service.setAddresses(path, "/ip/tun0"); // and no signal

    lines();
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 50U);
}

TEST_F(NetworkServiceTest, ACallCountsFromItsOwnBeginning) {
    makeInterface("wwan0", 3, 7000, 800); // of the call before
    const std::string modem = service.addDevice("wwan0");
    const std::string path = service.addLine(service.addProfile("mobile", "gsm"), activating,
                                             {sdbus::ObjectPath(modem)});
    EXPECT_TRUE(lines().empty());
    write("wwan0", "statistics/rx_bytes", 7020);
    service.setLineState(path, activated, 1);

    EXPECT_TRUE(soon([&] { return lines().size() == 1; }));
    const auto line = lines().at(0).hrasconn;
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 20U);
    EXPECT_EQ(statisticsOf(line).dwBytesXmited, 0U);
}

TEST_F(NetworkServiceTest, AnInterfaceThatComesWithTheCallCountsFromNothing) {
    const std::string modem = service.addDevice("ppp0");
    const std::string path = service.addLine(service.addProfile("mobile", "gsm"), activating,
                                             {sdbus::ObjectPath(modem)});
    EXPECT_TRUE(lines().empty());
    makeInterface("ppp0", 9, 120, 130);
    service.setLineState(path, activated, 1);

    EXPECT_TRUE(soon([&] { return lines().size() == 1; }));
    const auto line = lines().at(0).hrasconn;
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 120U);
    EXPECT_EQ(statisticsOf(line).dwBytesXmited, 130U);
}

TEST_F(NetworkServiceTest, EveryCounterHasItsPlace) {
    addVpn("office");
    makeInterface("tun0", 7, 1, 2);
    write("tun0", "statistics/rx_packets", 3);
    write("tun0", "statistics/tx_packets", 4);
    write("tun0", "statistics/rx_crc_errors", 5);
    write("tun0", "statistics/tx_aborted_errors", 6);
    write("tun0", "statistics/rx_frame_errors", 7);
    write("tun0", "statistics/rx_over_errors", 8);
    write("tun0", "statistics/rx_fifo_errors", 7);
    write("tun0", "statistics/rx_length_errors", 9);
    write("tun0", "statistics/rx_missed_errors", 10);
    write("tun0", "speed", 100);

    const RAS_STATS statistics = statisticsOf(lines().at(0).hrasconn);

    EXPECT_EQ(statistics.dwBytesRcved, 1U);
    EXPECT_EQ(statistics.dwBytesXmited, 2U);
    EXPECT_EQ(statistics.dwFramesRcved, 3U);
    EXPECT_EQ(statistics.dwFramesXmited, 4U);
    EXPECT_EQ(statistics.dwCrcErr, 5U);
    EXPECT_EQ(statistics.dwTimeoutErr, 6U);
    EXPECT_EQ(statistics.dwAlignmentErr, 7U);
    EXPECT_EQ(statistics.dwHardwareOverrunErr, 8U);
    EXPECT_EQ(statistics.dwFramingErr, 9U);
    EXPECT_EQ(statistics.dwBufferOverrunErr, 10U);
    EXPECT_EQ(statistics.dwCompressionRatioIn, 0U);
    EXPECT_EQ(statistics.dwCompressionRatioOut, 0U);
    EXPECT_EQ(statistics.dwBps, 100'000'000U);
}

TEST_F(NetworkServiceTest, ATunnelThatIsGoneKeepsWhatItCountedUntilAnotherOneComes) {
    addVpn("office");
    makeInterface("tun0", 7, 1000, 100);
    const auto line = lines().at(0).hrasconn;
    statisticsOf(line);

    std::filesystem::remove_all(folder.path() + "/tun0");
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 1000U);

    makeInterface("tun0", 8, 30, 3);
    lines();
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 1030U);
    EXPECT_EQ(statisticsOf(line).dwBytesXmited, 103U);
}

TEST_F(NetworkServiceTest, AConnectionThatGoesWhileItIsReadIsLeftOut) {
    service.loseLine(addVpn("office"));

    EXPECT_TRUE(soon([&] { return lines().empty(); }));
    EXPECT_EQ(code, 0U);
}

TEST_F(NetworkServiceTest, TheReasonOfTheDeviceIsToldWhereItSaysMore) {
    const std::string modem = service.addDevice("wwan0");
    service.addProfile("mobile", "gsm");
    service.onActivate = [&](const std::string& profile) {
        const std::string path = service.addLine(profile, activating, {sdbus::ObjectPath(modem)});
        service.failDevice(modem, 23);
        service.setLineState(path, deactivated, 3);
        return path;
    };

    EXPECT_EQ(dial("mobile"), 676U);
    EXPECT_EQ(handle, 0U);
}

TEST_F(NetworkServiceTest, ADialIsNotToldTheReasonOfTheOneBefore) {
    const std::string modem = service.addDevice("wwan0");
    service.addProfile("mobile", "gsm");
    bool busy = true;
    service.onActivate = [&](const std::string& profile) {
        const std::string path = service.addLine(profile, activating, {sdbus::ObjectPath(modem)});
        if (std::exchange(busy, false)) {
            service.failDevice(modem, 23);
        }
        service.setLineState(path, deactivated, 9);
        return path;
    };

    EXPECT_EQ(dial("mobile"), 676U);
    EXPECT_EQ(dial("mobile"), 691U);
}

TEST_F(NetworkServiceTest, WhatTheServiceRefusesIsTold) {
    addVpn("office");
    const auto line = lines().at(0).hrasconn;
    service.failure = "org.freedesktop.NetworkManager.PermissionDenied";

    EXPECT_EQ(dial("office"), 691U);
    EXPECT_EQ(connections.RasHangUpA(line), 691U);
    EXPECT_TRUE(service.deactivated().empty());
}

TEST_F(NetworkServiceTest, AHangUpDeactivatesThatConnection) {
    const std::string path = addVpn("office");

    EXPECT_EQ(connections.RasHangUpA(lines().at(0).hrasconn), 0U);

    EXPECT_EQ(service.deactivated(), Names{path});
    EXPECT_EQ(connections.RasHangUpA(99), 6U);
}

TEST_F(NetworkServiceTest, AServiceThatStopsIsToldAndItsReturnSeen) {
    addVpn("office");
    EXPECT_EQ(lines().size(), 1U);

    service.stop();
    EXPECT_TRUE(soon([&] { return lines().empty() && code == 711; }));
    EXPECT_TRUE(entries().empty());
    EXPECT_EQ(code, 711U);

    service.start();
    EXPECT_TRUE(soon([&] { return entries() == Names{"office"}; }));
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(code, 0U);
}

TEST_F(NetworkServiceTest, AServiceThatDoesNotAnswerKeepsWhatItSaidAndIsLeftAlone) {
    makeInterface("tun0", 7, 50, 60);
    addVpn("office");
    const auto line = lines().at(0).hrasconn;
    service.addProfile("new", "gsm");
    service.setSilent(true);
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_TRUE(soon([&] { return entries() == Names{"office"}; }));
    EXPECT_EQ(lines().size(), 1U);
    EXPECT_EQ(stateOf(line), 8192U);
    EXPECT_EQ(statisticsOf(line).dwBytesRcved, 50U);

    // One call waited its two seconds; without a limit it were 25.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    service.setSilent(false);
}

TEST_F(NetworkServiceTest, AnOrderThatIsNotAnsweredHasTheServiceLeftAlone) {
    const std::string path = addVpn("office");
    NetworkBus bus;
    ASSERT_TRUE(bus.refresh());
    service.setSilent(true);
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_THROW(bus.deactivate(path), BusFailure);

    EXPECT_TRUE(bus.late());
    EXPECT_TRUE(bus.refresh());
    EXPECT_EQ(bus.lines().size(), 1U);
    EXPECT_EQ(bus.profiles().size(), 1U);
    // The next one is tried all the same: it may be the one that ends a call.
    EXPECT_THROW(bus.deactivate(path), BusFailure);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    service.setSilent(false);
    bus.deactivate(path);
    EXPECT_EQ(service.deactivated().back(), path);
}

TEST_F(NetworkServiceTest, AnOrderThatIsRefusedChangesNothingElse) {
    const std::string path = addVpn("office");
    NetworkBus bus;
    ASSERT_TRUE(bus.refresh());
    service.failure = "org.freedesktop.NetworkManager.PermissionDenied";

    EXPECT_THROW(bus.deactivate(path), BusFailure);

    EXPECT_FALSE(bus.silent());
    EXPECT_TRUE(bus.refresh());
    EXPECT_EQ(bus.lines().size(), 1U);
}

TEST_F(NetworkServiceTest, AnOrderToAServiceThatIsGoneFindsItGone) {
    const std::string path = addVpn("office");
    NetworkBus bus;
    ASSERT_TRUE(bus.refresh());
    service.stop();

    EXPECT_THROW(bus.deactivate(path), BusFailure);

    EXPECT_FALSE(bus.silent());
    EXPECT_FALSE(bus.refresh());
    EXPECT_TRUE(bus.lines().empty());
}

TEST_F(NetworkServiceTest, AServiceThatHasNeverAnsweredIsTooLateAndNotAbsent) {
    service.addProfile("office", "vpn");
    service.setSilent(true);

    EXPECT_TRUE(entries().empty());
    EXPECT_EQ(code, 638U);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(code, 638U);
    EXPECT_EQ(dial("office"), 638U);

    service.setSilent(false);
}

TEST_F(NetworkServiceTest, TheInternetStateIsThatOfThePrimaryConnection) {
    LinuxInternetState internet;
    const std::string modem = service.addDevice("wwan0");
    const std::string path =
        service.addLine(service.addProfile("mobile", "gsm"), activated, {sdbus::ObjectPath(modem)});
    service.setPrimary(path, "gsm");
    std::uint32_t flags = 0;
    char name[32] = {};

    EXPECT_TRUE(internet.InternetGetConnectedStateExA(&flags, name, sizeof name, 0));

    EXPECT_STREQ(name, "mobile");
    EXPECT_EQ(flags & 3U, 1U);
    EXPECT_EQ(flags & 64U, 64U);

    char few[4] = {};
    EXPECT_TRUE(internet.InternetGetConnectedStateExA(&flags, few, sizeof few, 0));
    EXPECT_STREQ(few, "mob");
}

} // namespace
} // namespace tarvik
