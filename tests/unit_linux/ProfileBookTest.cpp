#include "linux/network/ProfileBook.h"
#include "linux/network/BusReplies.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarvik {
namespace {

using Names = std::vector<std::string>;

/// NetworkManager, as far as profiles go; counts what it is asked.
class ProfilesStandIn : public BusReplies {
public:
    Properties propertiesOf(const std::string&, const std::string&) override { return {}; }

    std::vector<sdbus::ObjectPath> profilePaths() override {
        if (listFails) {
            throw sdbus::Error("org.freedesktop.NetworkManager.Failed", "");
        }
        std::vector<sdbus::ObjectPath> paths;
        for (const auto& [path, name] : names) {
            paths.emplace_back(path);
        }
        return paths;
    }

    ProfileSettings settingsOf(const std::string& profile) override {
        asked.push_back(profile);
        if (profile == mute) {
            throw sdbus::Error(error, "");
        }
        const auto found = names.find(profile);
        if (found == names.end()) {
            throw sdbus::Error("org.freedesktop.DBus.Error.UnknownMethod", "");
        }
        return {{"connection",
                 {{"id", sdbus::Variant(found->second)},
                  {"uuid", sdbus::Variant(profile)},
                  {"type", sdbus::Variant(type)}}}};
    }

    std::map<std::string, std::string> names; ///< by path
    std::string type = "gsm";
    std::string mute; ///< the path of one that is answered for with the error
    std::string error = "org.freedesktop.DBus.Error.NoReply";
    bool listFails = false;
    Names asked;
};

class ProfileBookTest : public testing::Test {
protected:
    void add(const std::string& path, const std::string& name) { service.names[path] = name; }

    void addMany(int count) {
        for (int i = 0; i < count; ++i) {
            add("/" + std::to_string(i), "p" + std::to_string(i));
        }
    }

    /// Reads so many.
    void read(int count) {
        book.readOn(service, [&count] { return --count <= 0; });
    }

    void readAll() { read(1'000'000); }

    Names names() const {
        Names result;
        for (const NetworkProfile& one : book.profiles()) {
            result.push_back(one.name);
        }
        return result;
    }

    ProfilesStandIn service;
    ProfileBook book;
};

TEST_F(ProfileBookTest, ThousandsAreReadInPartsAndEachOnlyOnce) {
    addMany(10'000);

    for (int part = 1; part < 10; ++part) {
        read(1000);
        EXPECT_EQ(book.profiles().size(), 1000U * static_cast<unsigned>(part));
        EXPECT_TRUE(book.listed());
        EXPECT_FALSE(book.complete());
    }
    read(1000);

    EXPECT_TRUE(book.complete());
    EXPECT_EQ(book.profiles().size(), 10'000U);
    EXPECT_EQ(service.asked.size(), 10'000U);
    readAll();
    EXPECT_EQ(service.asked.size(), 10'000U);
}

TEST_F(ProfileBookTest, OneIsReadHoweverLittleTimeThereIs) {
    addMany(2);

    book.readOn(service, [] { return true; });

    EXPECT_EQ(book.profiles().size(), 1U);
}

TEST_F(ProfileBookTest, OnlyWhatChangedIsReadAgain) {
    addMany(3);
    readAll();
    service.asked.clear();
    add("/1", "another");
    add("/7", "new");

    book.change("/1");
    book.change("/1");
    book.change("/7");
    readAll();

    EXPECT_EQ(names(), (Names{"another", "new", "p0", "p2"}));
    EXPECT_EQ(service.asked, (Names{"/1", "/7"}));
}

TEST_F(ProfileBookTest, WhatIsRemovedGoesAndIsNotAskedFor) {
    addMany(3);
    read(1);

    book.remove("/0");
    book.remove("/1");
    readAll();

    EXPECT_EQ(names(), Names{"p2"});
    EXPECT_EQ(service.asked, (Names{"/0", "/2"}));
}

TEST_F(ProfileBookTest, WhatIsRemovedAndComesAgainIsReadOnce) {
    addMany(2);
    read(1);

    book.remove("/1");
    book.change("/1");
    readAll();

    EXPECT_EQ(names(), (Names{"p0", "p1"}));
    EXPECT_EQ(service.asked, (Names{"/0", "/1"}));
}

TEST_F(ProfileBookTest, WhatWasReadStaysWhileAllIsReadAgain) {
    addMany(4);
    readAll();
    service.names.erase("/3");
    add("/0", "another");
    add("/9", "new");

    book.doubt();
    read(1);

    // First the one that nothing is known of.
    EXPECT_EQ(names(), (Names{"new", "p0", "p1", "p2"}));
    readAll();
    EXPECT_EQ(names(), (Names{"another", "new", "p1", "p2"}));
}

TEST_F(ProfileBookTest, DoubtAgainAndAgainDoesNotKeepAnyFromBeingRead) {
    addMany(5);

    for (int i = 0; i < 5; ++i) {
        book.doubt();
        read(1);
    }

    EXPECT_EQ(book.profiles().size(), 5U);
    add("/4", "another");
    for (int i = 0; i < 5; ++i) {
        book.doubt();
        read(1);
    }
    EXPECT_EQ(names().front(), "another");
}

TEST_F(ProfileBookTest, OneThatIsNotAnsweredForKeepsNothingElseBack) {
    addMany(3);
    service.mute = "/0";

    EXPECT_THROW(readAll(), sdbus::Error);
    EXPECT_THROW(readAll(), sdbus::Error);

    EXPECT_EQ(names(), (Names{"p1", "p2"}));
    EXPECT_FALSE(book.complete());
    service.mute.clear();
    readAll();
    EXPECT_TRUE(book.complete());
    EXPECT_EQ(names().size(), 3U);
}

class NoAnswerTest : public ProfileBookTest, public testing::WithParamInterface<const char*> {};

TEST_P(NoAnswerTest, IsToldAndTheProfileReadLater) {
    addMany(2);
    service.mute = "/0";
    service.error = std::string("org.freedesktop.DBus.Error.") + GetParam();

    EXPECT_THROW(readAll(), sdbus::Error);

    EXPECT_FALSE(book.complete());
    service.mute.clear();
    readAll();
    EXPECT_EQ(names(), (Names{"p0", "p1"}));
}

INSTANTIATE_TEST_SUITE_P(All, NoAnswerTest,
                         testing::Values("NoReply", "Timeout", "TimedOut", "Disconnected",
                                         "ServiceUnknown", "NameHasNoOwner"));

/// One is answered for, but with an error that does not say that it is gone.
class OddProfileTest : public ProfileBookTest {
protected:
    OddProfileTest() {
        addMany(3);
        service.error = "org.freedesktop.NetworkManager.Settings.Failed";
    }
};

TEST_F(OddProfileTest, IsLeftOutAndTheOthersAreRead) {
    service.mute = "/0";

    readAll();
    readAll();

    EXPECT_EQ(names(), (Names{"p1", "p2"}));
    EXPECT_TRUE(book.complete());
    EXPECT_EQ(service.asked.size(), 3U);
}

TEST_F(OddProfileTest, StaysAsItWasKnown) {
    readAll();
    service.mute = "/0";

    book.change("/0");
    readAll();

    EXPECT_EQ(names(), (Names{"p0", "p1", "p2"}));
}

TEST_F(OddProfileTest, IsReadAgainWhenAnyHasChanged) {
    service.mute = "/0";
    readAll();
    service.mute.clear();

    book.change("/1");
    readAll();

    EXPECT_EQ(names(), (Names{"p0", "p1", "p2"}));
    EXPECT_EQ(service.asked.size(), 5U);
}

TEST_F(OddProfileTest, IsReadAgainWhenAnyHasGone) {
    service.mute = "/0";
    readAll();
    service.mute.clear();

    book.remove("/1");
    readAll();

    EXPECT_EQ(names(), (Names{"p0", "p2"}));
}

TEST_F(OddProfileTest, IsNotAskedForAgainWhenItIsGoneItself) {
    service.mute = "/0";
    readAll();
    service.asked.clear();

    book.remove("/0");
    book.change("/1");
    readAll();

    EXPECT_EQ(service.asked, Names{"/1"});
}

TEST_F(ProfileBookTest, WhatWasListedStaysWhileItCannotBeListedAnew) {
    addMany(2);
    readAll();
    service.listFails = true;

    book.doubt();
    EXPECT_THROW(readAll(), sdbus::Error);

    EXPECT_TRUE(book.listed());
    EXPECT_FALSE(book.complete());
    EXPECT_EQ(names(), (Names{"p0", "p1"}));
}

TEST_F(ProfileBookTest, OneThatIsGoneWhenItIsReadIsLeftOut) {
    addMany(2);

    book.change("/9");
    readAll();

    EXPECT_EQ(names(), (Names{"p0", "p1"}));
    EXPECT_TRUE(book.complete());
}

TEST_F(ProfileBookTest, KindsThatAreNotDialledAreNotReadAgainEither) {
    addMany(3);
    service.type = "802-11-wireless";

    readAll();
    readAll();

    EXPECT_TRUE(names().empty());
    EXPECT_EQ(service.asked.size(), 3U);
}

TEST_F(ProfileBookTest, ThousandsOfOneNameAreToldApart) {
    for (int i = 0; i < 10'000; ++i) {
        add("/" + std::to_string(i), "same");
    }
    add("/x", "same (3)");

    readAll();

    const Names all = names();
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), 10'001U);
    EXPECT_EQ(std::count(all.begin(), all.end(), "same (10000)"), 1);
}

TEST_F(ProfileBookTest, AnotherStartOfTheServiceBeginsAnew) {
    addMany(3);
    readAll();

    book.clear();

    EXPECT_FALSE(book.listed());
    EXPECT_TRUE(names().empty());
    readAll();
    EXPECT_EQ(names().size(), 3U);
}

} // namespace
} // namespace tarvik
