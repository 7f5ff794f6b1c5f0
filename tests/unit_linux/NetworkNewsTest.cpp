#include "linux/network/NetworkNews.h"
#include "NetworkNames.h"
#include "linux/network/BusSignal.h"

#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

namespace sdbus {

/// A message that belongs to no bus. The library has it for values of any type, and declares it
/// nowhere.
PlainMessage createPlainMessage();

} // namespace sdbus

namespace tarvik {
namespace {

const std::string ownerName = ":1.5";

/// NetworkManager runs, and everything that it told has been read.
class NetworkNewsTest : public testing::Test {
protected:
    NetworkNewsTest() {
        news.takeOwner(ownerName);
        news.profilesStale = news.linesStale = false;
    }

    static BusSignal ofOwner(const std::string& from, std::vector<BusSignal::Value> values) {
        return {.sender = from,
                .path = "/org/freedesktop/DBus",
                .interface = bus::service,
                .member = "NameOwnerChanged",
                .values = std::move(values)};
    }

    static BusSignal signal(const std::string& from, const std::string& interface,
                            const std::string& member, std::vector<BusSignal::Value> values) {
        return {.sender = from,
                .path = "/line",
                .interface = interface,
                .member = member,
                .values = std::move(values)};
    }

    void expectNoChangeBy(const BusSignal& one) {
        const NetworkNews before = news;
        news.take(one);
        EXPECT_TRUE(news == before) << one.sender << ' ' << one.interface << ' ' << one.member;
    }

    NetworkNews news;
};

TEST_F(NetworkNewsTest, ASignalWithoutASenderIsNobodys) {
    sdbus::PlainMessage message = sdbus::createPlainMessage();
    message.seal();
    const NetworkNews before = news;

    EXPECT_FALSE(news.take(message));

    EXPECT_TRUE(news == before);
}

TEST_F(NetworkNewsTest, TheBusTellsWhoTheServiceIs) {
    news.take(ofOwner(bus::service, {network::service, ownerName, std::string()}));
    EXPECT_FALSE(news.running());
    EXPECT_FALSE(news.believes(""));

    news.take(ofOwner(bus::service, {network::service, std::string(), std::string(":1.9")}));

    EXPECT_TRUE(news.running());
    EXPECT_EQ(news.starts(), 3U);
    EXPECT_TRUE(news.believes(":1.9"));
    EXPECT_FALSE(news.believes(ownerName));
    EXPECT_TRUE(news.profilesStale && news.linesStale);
}

TEST_F(NetworkNewsTest, NobodyElseTellsWhoTheServiceIs) {
    for (const std::string& sender :
         {std::string(":1.66"), ownerName, network::service, std::string()}) {
        expectNoChangeBy(ofOwner(sender, {network::service, ownerName, std::string()}));
        expectNoChangeBy(ofOwner(sender, {network::service, ownerName, std::string(":1.66")}));
    }
}

TEST_F(NetworkNewsTest, TheOwnerOfAnotherNameIsNoMatter) {
    expectNoChangeBy(ofOwner(bus::service, {network::service + "2", ownerName, std::string()}));
}

TEST_F(NetworkNewsTest, TheSameOwnerAgainIsNoOtherStart) {
    const NetworkNews before = news;

    news.takeOwner(ownerName);

    EXPECT_TRUE(news == before);
}

TEST_F(NetworkNewsTest, AStrangersSignalsChangeNothing) {
    for (const std::string& sender :
         {std::string(":1.66"), network::service, std::string(), bus::service}) {
        expectNoChangeBy(signal(sender, network::lineInterface, "StateChanged", {4U, 9U}));
        expectNoChangeBy(signal(sender, network::deviceInterface, "StateChanged", {120U, 40U, 9U}));
        expectNoChangeBy(signal(sender, network::settingsInterface, "NewConnection", {"/profile"}));
        expectNoChangeBy(signal(sender, network::settingsInterface + ".Connection", "Updated", {}));
        expectNoChangeBy(signal(sender, bus::service + ".Properties", "PropertiesChanged",
                                {network::lineInterface}));
    }
}

TEST_F(NetworkNewsTest, ASignalThatCannotBeReadChangesNothing) {
    expectNoChangeBy(ofOwner(bus::service, {}));
    expectNoChangeBy(ofOwner(bus::service, {network::service, 1U, 2U}));
    expectNoChangeBy(ofOwner(bus::service, {1U, ownerName, std::string()}));
    expectNoChangeBy(signal(ownerName, network::settingsInterface, "NewConnection", {}));
    expectNoChangeBy(signal(ownerName, network::settingsInterface, "NewConnection", {"no path"}));
    expectNoChangeBy(signal(ownerName, network::settingsInterface, "ConnectionRemoved", {1U}));
    expectNoChangeBy(signal(ownerName, network::lineInterface, "StateChanged", {}));
    expectNoChangeBy(signal(ownerName, network::lineInterface, "StateChanged", {4U}));
    expectNoChangeBy(signal(ownerName, network::lineInterface, "StateChanged", {4U, "9"}));
    expectNoChangeBy(signal(ownerName, network::deviceInterface, "StateChanged", {120U, "40", 9U}));
    expectNoChangeBy(signal(ownerName, network::deviceInterface, "StateChanged", {120U, 40U}));
    expectNoChangeBy(signal(ownerName, bus::service + ".Properties", "PropertiesChanged", {1U}));
}

TEST_F(NetworkNewsTest, TheServiceTellsWhyALineEnded) {
    news.take(signal(ownerName, network::lineInterface, "StateChanged", {4U, 9U}));

    EXPECT_EQ(news.reasonOf("/line"), 9U);
    EXPECT_FALSE(news.reasonOf("/other"));
    EXPECT_TRUE(news.linesStale);
    EXPECT_FALSE(news.profilesStale);
}

TEST_F(NetworkNewsTest, TheServiceTellsWhichProfilesCameChangedAndWent) {
    news.take(signal(ownerName, network::settingsInterface, "NewConnection", {"/new"}));
    news.take(signal(ownerName, network::settingsInterface + ".Connection", "Updated", {}));
    news.take(signal(ownerName, network::settingsInterface, "NewConnection", {"/short"}));
    news.take(signal(ownerName, network::settingsInterface, "ConnectionRemoved", {"/short"}));
    news.take(signal(ownerName, network::settingsInterface, "PropertiesChanged", {"/other"}));

    EXPECT_EQ(news.changedProfiles,
              (std::map<std::string, bool>{{"/line", true}, {"/new", true}, {"/short", false}}));
    EXPECT_FALSE(news.profilesStale || news.linesStale);

    news.take(signal(ownerName, network::settingsInterface + ".Connection", "Removed", {}));

    EXPECT_FALSE(news.changedProfiles.at("/line"));
}

TEST_F(NetworkNewsTest, OnlyADeviceThatFailedHasAReason) {
    news.take(signal(ownerName, network::deviceInterface, "StateChanged", {100U, 40U, 9U}));
    EXPECT_EQ(news.deviceReason(), 0U);

    news.take(signal(ownerName, network::deviceInterface, "StateChanged", {120U, 40U, 9U}));

    EXPECT_EQ(news.deviceReason(), 9U);
    news.forgetReasons();
    EXPECT_EQ(news.deviceReason(), 0U);
}

TEST_F(NetworkNewsTest, OnlyPropertiesThatLinesAreReadFromMakeThemStale) {
    expectNoChangeBy(signal(ownerName, bus::service + ".Properties", "PropertiesChanged",
                            {network::service + ".AccessPoint"}));

    news.take(
        signal(ownerName, bus::service + ".Properties", "PropertiesChanged", {network::service}));

    EXPECT_TRUE(news.linesStale);
}

} // namespace
} // namespace tarvik
