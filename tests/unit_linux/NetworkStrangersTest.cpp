#include "BusStranger.h"
#include "NetworkNames.h"
#include "NetworkServiceTest.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <malloc.h>
#include <thread>
#include <unistd.h>

namespace tarvik {
namespace {

const std::string noLine = "/org/freedesktop/NetworkManager/ActiveConnection/99";

/// Does something on and on, as long as it lives.
class Sending {
public:
    explicit Sending(const std::function<void()>& send)
        : thread_([this, send] {
              while (!over_) {
                  try {
                      send();
                  } catch (const sdbus::Error&) {
                      // The bus holds up whoever sends more than others read.
                  }
              }
          }) {}
    ~Sending() {
        over_ = true;
        thread_.join();
    }
    Sending(const Sending&) = delete;
    Sending& operator=(const Sending&) = delete;

private:
    std::atomic<bool> over_ = false;
    std::thread thread_;
};

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

    /// Has the program ask for the lines.
    void tellOfLines() { service.tell(path, network::service + ".Connection.Active", "Something"); }

    BusStranger stranger;
    std::string path;
    std::uint32_t line = 0;
};

TEST_F(NetworkStrangersTest, TheStrangerIsAnotherUserWhereThatCanBe) {
    EXPECT_EQ(stranger.user(), geteuid() == 0 ? 65534U : geteuid());
}

TEST_F(NetworkStrangersTest, AServiceThatAStrangerTellsToBeGoneGoesOn) {
    stranger.send(bus::path, bus::service, "NameOwnerChanged", network::service,
                  std::string(":1.0"), std::string());

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AStrangerDoesNotBecomeTheService) {
    stranger.send(bus::path, bus::service, "NameOwnerChanged", network::service, std::string(),
                  stranger.name());
    stranger.send(bus::path, bus::service, "NameOwnerChanged", network::service, stranger.name(),
                  std::string());

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, SignalsThatCannotBeReadAreNoMatter) {
    const std::string text = "no number";
    stranger.send(bus::path, bus::service, "NameOwnerChanged", network::service, std::uint32_t{1});
    stranger.send(path, network::service + ".Connection.Active", "StateChanged", text, text);
    stranger.send(path, network::service + ".Device", "StateChanged", text);
    stranger.send(path, network::service + ".Settings", "NewConnection", std::uint32_t{1});
    stranger.send(path, bus::service + ".Properties", "PropertiesChanged",
                  network::service + ".Connection.Active");

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AReasonThatAStrangerMakesUpIsNotTold) {
    service.onActivate = [&](const std::string&) {
        stranger.send(noLine, network::service + ".Connection.Active", "StateChanged", deactivated,
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

TEST_F(NetworkStrangersTest, AFloodThatNobodyListensToIsLeftBehindUnderAnotherName) {
    const Names before = stranger.others();

    stranger.floodUnheard(1000);

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
    const Sending sending([this] { stranger.flood(1000); });

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AFloodThatNobodyListensToAndDoesNotEndHidesNothing) {
    const Sending sending([this] { stranger.floodUnheard(1000); });

    expectThatMonitoringGoesOn();
}

TEST_F(NetworkStrangersTest, AFloodThatNobodyListensToDoesNotFillTheProgram) {
    constexpr std::size_t most = std::size_t{32} << 20; // bytes: a quarter of what waits at the bus
    tellOfLines();
    stranger.floodUnheard(12'000);
    const std::size_t before = mallinfo2().uordblks;

    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(lines().size(), 1U);
        EXPECT_EQ(code, 0U);
        EXPECT_LT(mallinfo2().uordblks, before + most);
    }
}

TEST_F(NetworkStrangersTest, AFloodThatNobodyListensToDoesNotPutOffTheEndOfAnOperation) {
    stranger.spareOthers(); // they read nothing, and the bus would stop the flood
    service.setSilent(true);
    NetworkBus bus;
    {
        const Sending sending([this] { stranger.floodUnheard(200); });
        const auto begin = std::chrono::steady_clock::now();

        EXPECT_FALSE(bus.refresh());

        EXPECT_TRUE(bus.late());
        // Two seconds are the limit, and the library's own is 25.
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    }
    service.setSilent(false);
}

} // namespace
} // namespace tarvik
