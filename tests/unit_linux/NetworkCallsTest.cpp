#include "NetworkServiceTest.h"

#include <atomic>

namespace tarvik {
namespace {

/// Calls over an interface that outlives them, lines within lines, and services that start anew.
class NetworkCallsTest : public NetworkServiceTest {
protected:
    NetworkCallsTest() {
        makeInterface("wwan0", 3, 0, 0);
        modem = service.addDevice("wwan0");
        mobile = service.addProfile("mobile", "gsm");
    }

    std::string call(std::uint32_t state = activated) {
        std::string path = service.addLine(mobile, state, {sdbus::ObjectPath(modem)});
        // No look may come between the call and its news: what is carried then is not this call's.
        service.settle();
        return path;
    }

    /// The call ends and is not listed any more.
    void hangUp(const std::string& path) {
        service.setLineState(path, deactivated, 2);
        EXPECT_TRUE(soon([&] { return lines().empty(); }));
    }

    void carried(std::uint64_t received) { write("wwan0", "statistics/rx_bytes", received); }

    /// The service ends, is started again, and lists a call.
    void startAgainWithACall() {
        service.stop();
        EXPECT_TRUE(soon([&] { return lines().empty() && code == 711; }));
        service.start();
        modem = service.addDevice("wwan0");
        call();
    }

    /// A line of that kind that is up over a device.
    std::string lineOver(const std::string& device, const std::string& name, const char* kind,
                         const std::string& ip4 = "/") {
        return service.addLine(service.addProfile(name, kind), activated,
                               {sdbus::ObjectPath(device)}, ip4);
    }

    std::uint32_t received(std::uint32_t line) { return statisticsOf(line).dwBytesRcved; }

    std::uint32_t onlyLine() {
        EXPECT_TRUE(soon([&] { return lines().size() == 1; }));
        return lines().at(0).hrasconn;
    }

    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (const RASCONNA& one : lines()) {
            result.emplace_back(one.szEntryName);
        }
        return result;
    }

    std::string modem;
    std::string mobile;
};

TEST_F(NetworkCallsTest, ACallFoundUpBeginsWhereTheInterfaceWasLastSeen) {
    const std::string first = call();
    carried(100'000'000);
    const auto line = onlyLine();
    EXPECT_EQ(received(line), 100'000'000U);
    hangUp(first);

    call();
    carried(100'000'500);

    const auto next = onlyLine();
    EXPECT_NE(next, line);
    EXPECT_EQ(received(next), 500U);
}

TEST_F(NetworkCallsTest, ACallThatFollowsBetweenTwoLooksBeginsWhereTheInterfaceWasLastSeen) {
    carried(3'000'000'000);
    EXPECT_TRUE(lines().empty());
    const std::string first = call();
    carried(3'100'000'000);
    const auto line = onlyLine();
    EXPECT_EQ(received(line), 100'000'000U);
    lines();

    service.setLineState(first, deactivated, 2);
    call();
    carried(3'100'000'500);

    EXPECT_TRUE(soon([&] { return lines().size() == 1 && lines().at(0).hrasconn != line; }));
    EXPECT_EQ(received(onlyLine()), 500U);
}

TEST_F(NetworkCallsTest, ACallFoundUpBeforeTheFirstLookIsTakenAsTheInterfaceCountsIt) {
    carried(7000);
    call();

    EXPECT_EQ(received(onlyLine()), 7000U);
}

TEST_F(NetworkCallsTest, ACallThatOutlivesTheServiceKeepsItsHandleAndItsFigures) {
    carried(5000);
    EXPECT_TRUE(lines().empty());
    call();
    carried(5400);
    const auto line = onlyLine();
    EXPECT_EQ(received(line), 400U);

    startAgainWithACall();
    carried(5430);

    EXPECT_EQ(onlyLine(), line);
    EXPECT_EQ(received(line), 430U);
}

TEST_F(NetworkCallsTest, AnotherCallAfterTheServiceWasStartedAgainIsAnotherSession) {
    call();
    carried(400);
    const auto line = onlyLine();
    EXPECT_EQ(received(line), 400U);

    startAgainWithACall();
    makeInterface("wwan0", 4, 900, 0); // plugged in again

    EXPECT_NE(onlyLine(), line);
    EXPECT_EQ(received(onlyLine()), 900U);
}

/// NetworkManager takes long over its answers, and tells of another change with each.
class SlowNetworkTest : public NetworkCallsTest {
protected:
    SlowNetworkTest() {
        makeInterface("tun0", 7, 50, 60);
        vpn = addVpn("office");
        service.settle();
        EXPECT_TRUE(bus.refresh());
        service.onLook = [this] {
            ++readings;
            if (slow) {
                std::this_thread::sleep_for(std::chrono::milliseconds(300));
                change();
            }
        };
    }

    void change() {
        service.tell(network::managerPath, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                     network::service, std::map<std::string, sdbus::Variant>(),
                     std::vector<std::string>{"ActiveConnections"});
    }

    /// The readings of so many looks, one right after the other, from a change on.
    int readingsOf(int looks) {
        change();
        const int before = readings;
        for (int look = 0; look < looks; ++look) {
            service.settle();
            EXPECT_TRUE(bus.refresh());
        }
        return readings - before;
    }

    std::atomic<bool> busy = false;
    std::atomic<bool> slow = true;
    std::atomic<int> readings = 0;
    std::string vpn;
    NetworkBus bus{[this] { return busy.load(); }};
};

TEST_F(SlowNetworkTest, AChangeThatIsToldDuringAReadingIsNotReadByTheNextLooksOfTheTick) {
    const int ofOne = readingsOf(1);
    EXPECT_GT(ofOne, 0);
    EXPECT_LT(readingsOf(4), 4 * ofOne); // where half a second has passed there is another one
}

TEST_F(SlowNetworkTest, WhatHasRestedIsReadAtLast) {
    readingsOf(1);
    slow = false;

    service.setLineState(vpn, deactivated, 0);

    EXPECT_TRUE(soon([&] { return bus.refresh() && bus.lines().empty(); }));
}

TEST_F(SlowNetworkTest, NothingRestsOnABusyMachineWhereEachReadingTakesLong) {
    busy = true;

    const int ofOne = readingsOf(1);

    EXPECT_GT(ofOne, 0);
    EXPECT_GE(readingsOf(3), 3 * ofOne);
}

TEST_F(NetworkCallsTest, TheLineThatCarriesAnotherIsTheLastOfTheList) {
    makeInterface("tun0", 7, 50, 60);
    call();
    service.addDevice("tun0", "/ip/tun0");
    lineOver(modem, "office", "vpn", "/ip/tun0");

    EXPECT_EQ(names(), (Names{"office", "mobile"}));

    const auto found = lines();
    EXPECT_EQ(connections.carrierOf(found.at(0).hrasconn), found.at(1).hrasconn);
    EXPECT_EQ(connections.carrierOf(found.at(1).hrasconn), 0U);
}

TEST_F(NetworkCallsTest, ALineBesideOnesWithinEachOtherIsListedBeforeTheCarrier) {
    const std::string wire = service.addDevice("eth0", "/ip/eth0");
    service.addDevice("tun0", "/ip/tun0");
    service.addDevice("tun1", "/ip/tun1");
    call();
    lineOver(wire, "beside", "vpn", "/ip/tun1");
    lineOver(modem, "office", "vpn", "/ip/tun0");

    EXPECT_EQ(names(), (Names{"office", "beside", "mobile"}));
    EXPECT_EQ(connections.carrierOf(lines().at(1).hrasconn), 0U);
}

TEST_F(NetworkCallsTest, ATunnelRunsOverTheOnlyConnectionThatIsThere) {
    const std::string tunnel = service.addDevice("wg0");
    call();
    lineOver(tunnel, "zone", "wireguard");

    EXPECT_EQ(names(), (Names{"zone", "mobile"}));
    EXPECT_EQ(connections.carrierOf(lines().at(0).hrasconn), lines().at(1).hrasconn);
}

TEST_F(NetworkCallsTest, ATunnelRunsOverTheConnectionWithTheDefaultRoute) {
    const std::string tunnel = service.addDevice("wg0");
    const std::string wire = service.addDevice("eth0", "/ip/eth0");
    const std::string mobileLine = call();
    const std::string wired = lineOver(wire, "wire", "802-3-ethernet");
    lineOver(tunnel, "zone", "wireguard");
    service.setPrimary(wired, "802-3-ethernet");
    EXPECT_EQ(names(), (Names{"mobile", "zone"}));
    EXPECT_EQ(connections.carrierOf(lines().at(1).hrasconn), 0U);

    service.setPrimary(mobileLine, "gsm");

    EXPECT_TRUE(soon([&] { return names() == Names{"zone", "mobile"}; }));
}

TEST_F(NetworkCallsTest, ALineThatIsBeingMadeCarriesNothingAndIsCarriedByNone) {
    call();
    service.addLine(service.addProfile("office", "vpn"), activating, {sdbus::ObjectPath(modem)});

    EXPECT_EQ(names(), Names{"mobile"});
}

class NetworkPatienceTest : public NetworkServiceTest {};

TEST_F(NetworkPatienceTest, ADialWhoseConnectionIsNowhereEnds) {
    service.addProfile("mobile", "gsm");
    service.onActivate = [](const std::string&) {
        return "/org/freedesktop/NetworkManager/ActiveConnection/99";
    };

    EXPECT_EQ(dial("mobile"), 668U);
    EXPECT_EQ(handle, 0U);
}

TEST_F(NetworkPatienceTest, ADialThatNeverComesToAnEndIsGivenUpAndTakenBack) {
    NetworkConnections hasty{LinkReader(folder.path()), {.making = std::chrono::milliseconds(300)}};
    service.addProfile("mobile", "gsm");
    std::string path;
    service.onActivate = [&](const std::string& profile) {
        path = service.addLine(profile, activating, {});
        return path;
    };

    EXPECT_EQ(dial("mobile", hasty), 638U);

    EXPECT_EQ(service.deactivated(), Names{path});
}

TEST_F(NetworkPatienceTest, ADialOverWhichTheServiceIsStartedAgainEnds) {
    NetworkConnections patient{LinkReader(folder.path()), {.reason = std::chrono::hours(1)}};
    service.addProfile("mobile", "gsm");
    std::atomic<bool> asked = false;
    service.onActivate = [&](const std::string& profile) {
        asked = true;
        return service.addLine(profile, activating, {});
    };
    std::thread restart([&] {
        while (!asked) {
            std::this_thread::yield();
        }
        service.stop();
        service.start();
    });

    EXPECT_NE(dial("mobile", patient), 0U);

    restart.join();
}

} // namespace
} // namespace tarvik
