#include "linux/network/NetworkNews.h"
#include "linux/network/BusSignal.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

const std::string busName = "org.freedesktop.DBus";
const std::string service = "org.freedesktop.NetworkManager";
const std::string owner = ":1.5";
const std::string lineInterface = service + ".Connection.Active";
const std::string settings = service + ".Settings";
const std::string deviceInterface = service + ".Device";

/// NetworkManager runs, and everything that it told has been read.
class NetworkNewsTest : public testing::Test {
protected:
    NetworkNewsTest() {
        news.takeOwner(owner);
        news.profilesStale = news.linesStale = false;
    }

    static BusSignal ofOwner(const std::string& from, std::vector<BusSignal::Value> values) {
        return {.sender = from,
                .path = "/org/freedesktop/DBus",
                .interface = busName,
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

TEST_F(NetworkNewsTest, TheBusTellsWhoTheServiceIs) {
    news.take(ofOwner(busName, {service, owner, std::string()}));
    EXPECT_FALSE(news.running());
    EXPECT_FALSE(news.believes(""));

    news.take(ofOwner(busName, {service, std::string(), std::string(":1.9")}));

    EXPECT_TRUE(news.running());
    EXPECT_EQ(news.starts(), 3U);
    EXPECT_TRUE(news.believes(":1.9"));
    EXPECT_FALSE(news.believes(owner));
    EXPECT_TRUE(news.profilesStale && news.linesStale);
}

TEST_F(NetworkNewsTest, NobodyElseTellsWhoTheServiceIs) {
    for (const std::string& sender : {std::string(":1.66"), owner, service, std::string()}) {
        expectNoChangeBy(ofOwner(sender, {service, owner, std::string()}));
        expectNoChangeBy(ofOwner(sender, {service, owner, std::string(":1.66")}));
    }
}

TEST_F(NetworkNewsTest, TheOwnerOfAnotherNameIsNoMatter) {
    expectNoChangeBy(ofOwner(busName, {service + "2", owner, std::string()}));
}

TEST_F(NetworkNewsTest, TheSameOwnerAgainIsNoOtherStart) {
    const NetworkNews before = news;

    news.takeOwner(owner);

    EXPECT_TRUE(news == before);
}

TEST_F(NetworkNewsTest, AStrangersSignalsChangeNothing) {
    for (const std::string& sender : {std::string(":1.66"), service, std::string(), busName}) {
        expectNoChangeBy(signal(sender, lineInterface, "StateChanged", {4U, 9U}));
        expectNoChangeBy(signal(sender, deviceInterface, "StateChanged", {120U, 40U, 9U}));
        expectNoChangeBy(signal(sender, settings, "NewConnection", {"/profile"}));
        expectNoChangeBy(signal(sender, settings + ".Connection", "Updated", {}));
        expectNoChangeBy(
            signal(sender, busName + ".Properties", "PropertiesChanged", {lineInterface}));
    }
}

TEST_F(NetworkNewsTest, ASignalThatCannotBeReadChangesNothing) {
    expectNoChangeBy(ofOwner(busName, {}));
    expectNoChangeBy(ofOwner(busName, {service, 1U, 2U}));
    expectNoChangeBy(ofOwner(busName, {1U, owner, std::string()}));
    expectNoChangeBy(signal(owner, settings, "NewConnection", {}));
    expectNoChangeBy(signal(owner, settings, "NewConnection", {"no path"}));
    expectNoChangeBy(signal(owner, settings, "ConnectionRemoved", {1U}));
    expectNoChangeBy(signal(owner, lineInterface, "StateChanged", {}));
    expectNoChangeBy(signal(owner, lineInterface, "StateChanged", {4U}));
    expectNoChangeBy(signal(owner, lineInterface, "StateChanged", {4U, "9"}));
    expectNoChangeBy(signal(owner, deviceInterface, "StateChanged", {120U, "40", 9U}));
    expectNoChangeBy(signal(owner, deviceInterface, "StateChanged", {120U, 40U}));
    expectNoChangeBy(signal(owner, busName + ".Properties", "PropertiesChanged", {1U}));
}

TEST_F(NetworkNewsTest, TheServiceTellsWhyALineEnded) {
    news.take(signal(owner, lineInterface, "StateChanged", {4U, 9U}));

    EXPECT_EQ(news.reasonOf("/line"), 9U);
    EXPECT_FALSE(news.reasonOf("/other"));
    EXPECT_TRUE(news.linesStale);
    EXPECT_FALSE(news.profilesStale);
}

TEST_F(NetworkNewsTest, TheServiceTellsWhichProfilesCameChangedAndWent) {
    news.take(signal(owner, settings, "NewConnection", {"/new"}));
    news.take(signal(owner, settings + ".Connection", "Updated", {}));
    news.take(signal(owner, settings, "NewConnection", {"/short"}));
    news.take(signal(owner, settings, "ConnectionRemoved", {"/short"}));
    news.take(signal(owner, settings, "PropertiesChanged", {"/other"}));

    EXPECT_EQ(news.changedProfiles,
              (std::map<std::string, bool>{{"/line", true}, {"/new", true}, {"/short", false}}));
    EXPECT_FALSE(news.profilesStale || news.linesStale);

    news.take(signal(owner, settings + ".Connection", "Removed", {}));

    EXPECT_FALSE(news.changedProfiles.at("/line"));
}

TEST_F(NetworkNewsTest, OnlyADeviceThatFailedHasAReason) {
    news.take(signal(owner, deviceInterface, "StateChanged", {100U, 40U, 9U}));
    EXPECT_EQ(news.deviceReason(), 0U);

    news.take(signal(owner, deviceInterface, "StateChanged", {120U, 40U, 9U}));

    EXPECT_EQ(news.deviceReason(), 9U);
    news.forgetReasons();
    EXPECT_EQ(news.deviceReason(), 0U);
}

TEST_F(NetworkNewsTest, OnlyPropertiesThatLinesAreReadFromMakeThemStale) {
    expectNoChangeBy(
        signal(owner, busName + ".Properties", "PropertiesChanged", {service + ".AccessPoint"}));

    news.take(signal(owner, busName + ".Properties", "PropertiesChanged", {service}));

    EXPECT_TRUE(news.linesStale);
}

} // namespace
} // namespace tarvik
