#include "NetworkStrangersTest.h"

#include <chrono>
#include <malloc.h>
#include <unistd.h>

namespace tarvik {
namespace {

const std::string noLine = "/org/freedesktop/NetworkManager/ActiveConnection/99";

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
