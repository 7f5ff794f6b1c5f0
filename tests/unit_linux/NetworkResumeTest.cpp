#include "NetworkServiceTest.h"

#include "linux/network/LinkMark.h"

#include <memory>

namespace tarvik {
namespace {

LinkMark someMark() {
    LinkMark mark;
    mark.boot = "f0e1";
    mark.uuid = "0-1-2";
    mark.path = "/line/7";
    mark.activeSince = 1000;
    mark.readAt = 2000;
    mark.last.index = mark.total.index = 9;
    mark.last.received = 5'000'000'000;
    mark.last.sent = 6;
    mark.last.packetsReceived = 7;
    mark.last.packetsSent = 8;
    mark.total.received = 4'000'000'000;
    mark.total.sent = 3;
    mark.total.packetsReceived = 2;
    mark.total.packetsSent = 1;
    return mark;
}

TEST(LinkMarkTest, WhatIsWrittenIsReadBack) {
    EXPECT_EQ(markOf(textOf(someMark())), someMark());
}

TEST(LinkMarkTest, AnythingElseIsNone) {
    EXPECT_FALSE(markOf(""));
    EXPECT_FALSE(markOf("link2" + textOf(someMark()).substr(5)));
    EXPECT_FALSE(markOf(textOf(someMark()).substr(0, textOf(someMark()).rfind(' '))));
    EXPECT_FALSE(markOf("link1 a b c 1 2 x"));
}

TEST(LinkMarkTest, TheMachinesRunIsToldFromOthers) {
    EXPECT_EQ(bootOfMachine(), bootOfMachine());
    EXPECT_GE(bootOfMachine().size(), 32U);
}

/// A process that has counted a line ends, and another one finds the line up.
class NetworkResumeTest : public NetworkServiceTest {
protected:
    NetworkResumeTest() {
        makeInterface("tun0", 70'007, 50, 60);
        path = addVpn("office");
        line = lines().at(0).hrasconn;
        EXPECT_EQ(statisticsOf(line).dwBytesRcved, 50U);
        write("tun0", "statistics/rx_bytes", 900);
        EXPECT_EQ(statisticsOf(line).dwBytesRcved, 900U);
        mark = connections.sessionMark(line);
        later = std::make_unique<NetworkConnections>(LinkReader(folder.path()));
    }

    /// The line in the later process.
    std::uint32_t found() {
        RASCONNA record{};
        record.dwSize = 412;
        std::uint32_t bytes = 412;
        std::uint32_t count = 0;
        EXPECT_EQ(later->RasEnumConnectionsA(&record, &bytes, &count), 0U);
        EXPECT_EQ(count, 1U);
        return record.hrasconn;
    }
    std::uint64_t receivedLater() {
        RAS_STATS statistics{};
        statistics.dwSize = 60;
        EXPECT_EQ(later->RasGetConnectionStatistics(found(), &statistics), 0U);
        return later->lineTotals(found()).value().rcvd;
    }

    std::string path;
    std::uint32_t line = 0;
    std::string mark;
    std::unique_ptr<NetworkConnections> later;
};

TEST_F(NetworkResumeTest, ALineThatWasNeverReadHasNothingToTell) {
    EXPECT_FALSE(mark.empty());
    EXPECT_TRUE(later->sessionMark(found()).empty());
    EXPECT_TRUE(connections.sessionMark(99).empty());
}

TEST_F(NetworkResumeTest, TheSameLineGoesOnWithWhatPassedMeanwhile) {
    write("tun0", "statistics/rx_bytes", 1000);

    EXPECT_TRUE(later->resume(found(), mark));

    EXPECT_EQ(receivedLater(), 1000U);
}

TEST_F(NetworkResumeTest, WhatDidNotCountDoesNotCountLater) {
    // The first process saw the line come while the interface had counted something already.
    const std::string call = service.addProfile("call", "gsm");
    makeInterface("wwan0", 70'009, 5000, 0);
    lines();
    service.setLineState(path, deactivated, 2);
    const std::string device = service.addDevice("wwan0", "/ip/wwan0");
    service.addLine(call, activated, {sdbus::ObjectPath(device)}, "/ip/wwan0");
    ASSERT_TRUE(soon([&] { return lines().size() == 1 && lines()[0].hrasconn != line; }));
    line = lines()[0].hrasconn;
    write("wwan0", "statistics/rx_bytes", 5300);
    ASSERT_EQ(statisticsOf(line).dwBytesRcved, 300U);
    mark = connections.sessionMark(line);
    write("wwan0", "statistics/rx_bytes", 5310);

    EXPECT_TRUE(later->resume(found(), mark));

    EXPECT_EQ(receivedLater(), 310U);
}

TEST_F(NetworkResumeTest, ALineWhoseCounterHasFallenIsAnother) {
    write("tun0", "statistics/rx_bytes", 899);

    EXPECT_FALSE(later->resume(found(), mark));

    EXPECT_EQ(receivedLater(), 899U);
}

TEST_F(NetworkResumeTest, ALineOverAnotherInterfaceIsAnother) {
    write("tun0", "ifindex", 70'008);

    EXPECT_FALSE(later->resume(found(), mark));
}

TEST_F(NetworkResumeTest, ALineOfAnotherProfileIsAnother) {
    auto other = markOf(mark).value();
    other.uuid = "another";

    EXPECT_FALSE(later->resume(found(), textOf(other)));
}

TEST_F(NetworkResumeTest, ALineOfAnotherRunOfTheMachineIsAnother) {
    auto other = markOf(mark).value();
    other.boot = "another";

    EXPECT_FALSE(later->resume(found(), textOf(other)));
}

TEST_F(NetworkResumeTest, AMarkOfTheFutureIsNotBelieved) {
    auto other = markOf(mark).value();
    other.readAt += 1'000'000'000;

    EXPECT_FALSE(later->resume(found(), textOf(other)));
}

TEST_F(NetworkResumeTest, WithoutAnAddressNetworkManagersObjectTells) {
    auto other = markOf(mark).value();
    other.path = "/another";

    EXPECT_FALSE(later->resume(found(), textOf(other)));
}

TEST_F(NetworkResumeTest, WhatIsNoMarkIsNoLines) {
    EXPECT_FALSE(later->resume(found(), ""));
    EXPECT_FALSE(later->resume(found(), "link1"));
    EXPECT_FALSE(later->resume(99, mark));
}

} // namespace
} // namespace tarvik
