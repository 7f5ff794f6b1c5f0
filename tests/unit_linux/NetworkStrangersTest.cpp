#include "BusStranger.h"
#include "NetworkServiceTest.h"

#include <algorithm>
#include <atomic>
#include <unistd.h>

namespace tarvik {
namespace {

const std::string busPath = "/org/freedesktop/DBus";
const std::string busName = "org.freedesktop.DBus";
const std::string serviceName = "org.freedesktop.NetworkManager";
const std::string noLine = "/org/freedesktop/NetworkManager/ActiveConnection/99";

/// A line is up and counted, and somebody else is on the bus.
class NetworkStrangersTest : public NetworkServiceTest {
protected:
    NetworkStrangersTest() {
        makeInterface("tun0", 7, 50, 60);
        path = addVpn("office");
        line = lines().at(0).hrasconn;
    }

    /// What the service itself tells afterwards is seen, and nothing went wrong on the way there.
    void expectThatMonitoringGoesOn() {
        write("tun0", "statistics/rx_bytes", 900);
        service.addProfile("after", "gsm");
        EXPECT_TRUE(soon([&] {
            const Names names = entries();
            EXPECT_EQ(code, 0U);
            return std::find(names.begin(), names.end(), "after") != names.end();
        }));
        const auto found = lines();
        EXPECT_EQ(code, 0U);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].hrasconn, line);
        EXPECT_EQ(statisticsOf(line).dwBytesRcved, 900U);
    }

    BusStranger stranger;
    std::string path;
    std::uint32_t line = 0;
};

TEST_F(NetworkStrangersTest, TheStrangerIsAnotherUserWhereThatCanBe) {
    EXPECT_EQ(stranger.user(), geteuid() == 0 ? 65534U : geteuid());
}

TEST_F(NetworkStrangersTest, AServiceThatAStrangerTellsToBeGoneGoesOn) {
    stranger.send(busPath, busName, "NameOwnerChanged", serviceName, std::string(":1.0"),
                  std::string());

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AStrangerDoesNotBecomeTheService) {
    stranger.send(busPath, busName, "NameOwnerChanged", serviceName, std::string(),
                  stranger.name());
    stranger.send(busPath, busName, "NameOwnerChanged", serviceName, stranger.name(),
                  std::string());

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, SignalsThatCannotBeReadAreNoMatter) {
    const std::string text = "no number";
    stranger.send(busPath, busName, "NameOwnerChanged", serviceName, std::uint32_t{1});
    stranger.send(path, serviceName + ".Connection.Active", "StateChanged", text, text);
    stranger.send(path, serviceName + ".Device", "StateChanged", text);
    stranger.send(path, serviceName + ".Settings", "NewConnection", std::uint32_t{1});
    stranger.send(path, busName + ".Properties", "PropertiesChanged",
                  serviceName + ".Connection.Active");

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AReasonThatAStrangerMakesUpIsNotTold) {
    service.onActivate = [&](const std::string&) {
        stranger.send(noLine, serviceName + ".Connection.Active", "StateChanged", deactivated,
                      std::uint32_t{9});
        return noLine;
    };

    EXPECT_EQ(dial("office"), 668U);
}

TEST_F(NetworkStrangersTest, AFloodIsLeftBehindUnderAnotherName) {
    const Names before = stranger.others();

    stranger.flood(1000);

    EXPECT_TRUE(soon([&] { return lines().size() == 1 && stranger.others() != before; }));
    EXPECT_EQ(lines().at(0).hrasconn, line);
}

TEST_F(NetworkStrangersTest, AFewSignalsAreNoReasonForAnotherName) {
    const Names before = stranger.others();
    stranger.flood(10);

    expectThatMonitoringGoesOn();

    EXPECT_EQ(stranger.others(), before);
}

TEST_F(NetworkStrangersTest, AFloodHidesNothingThatComesBehindIt) {
    stranger.flood(20'000);

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AFloodThatDoesNotEndHidesNothing) {
    std::atomic<bool> over = false;
    std::thread sending([&] {
        while (!over) {
            stranger.flood(1000);
        }
    });

    expectThatMonitoringGoesOn();

    over = true;
    sending.join();
}

} // namespace
} // namespace tarvik
