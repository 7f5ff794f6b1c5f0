#include "NetworkNames.h"
#include "NetworkServiceTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace tarvik {
namespace {

/// What a signal may say in place of what it should.
struct OddBody {
    const char* name;
    std::function<void(NetworkStandIn&, const std::string& path, const std::string& interface,
                       const std::string& member)>
        tell;
};

template <class... Values>
OddBody oddBody(const char* name, const Values&... values) {
    return {name,
            [=](NetworkStandIn& service, const std::string& path, const std::string& interface,
                const std::string& member) { service.tell(path, interface, member, values...); }};
}

std::vector<OddBody> oddBodies() {
    using Struct = sdbus::Struct<std::uint32_t, std::string>;
    const std::string text = "no number";
    return {
        oddBody("nothing"),
        oddBody("texts", text, text, text),
        oddBody("aTextAfterANumber", std::uint32_t{4}, text, std::uint32_t{9}),
        oddBody("signedNumbers", std::int32_t{4}, std::int32_t{9}, std::int32_t{9}),
        oddBody("wideNumbers", std::uint64_t{4}, std::uint64_t{9}, std::uint64_t{9}),
        oddBody("anArray", std::vector<std::uint32_t>{4, 9, 9}),
        oddBody("anEmptyArray", std::vector<std::string>{}),
        oddBody("aStruct", Struct{4U, text}),
        oddBody("aVariant", sdbus::Variant(std::uint32_t{4}), sdbus::Variant(text)),
        oddBody("aDictionary",
                std::map<std::string, sdbus::Variant>{{"State", sdbus::Variant(Struct{4U, text})}}),
        oddBody("theLineWithOddProperties", network::lineInterface,
                std::map<std::string, sdbus::Variant>{{"State", sdbus::Variant(text)},
                                                      {"Devices", sdbus::Variant(Struct{})}}),
        oddBody("theLineWithoutADictionary", network::lineInterface, std::uint32_t{1}),
        oddBody("theManagerWithATextForNames", network::service, text, text)};
}

/// A line is up and counted, and whoever has NetworkManager's name tells what cannot be read.
class OddSignalsTest : public NetworkServiceTest, public testing::WithParamInterface<std::size_t> {
protected:
    OddSignalsTest() {
        makeInterface("tun0", 7, 50, 60);
        path = addVpn("office");
        line = lines().at(0).hrasconn;
        EXPECT_EQ(entries(), Names{"office"});
    }

    void tellAll(const OddBody& body) {
        for (const char* member : {"StateChanged", "VpnStateChanged"}) {
            body.tell(service, path, network::lineInterface, member);
        }
        body.tell(service, path, network::deviceInterface, "StateChanged");
        for (const char* member : {"NewConnection", "ConnectionRemoved", "NothingKnown"}) {
            body.tell(service, network::settingsPath, network::settingsInterface, member);
        }
        for (const std::string& about : {path, network::settingsPath, std::string("/")}) {
            body.tell(service, about, bus::properties, "PropertiesChanged");
        }
        body.tell(service, path, network::settingsInterface + ".Connection", "Updated");
        body.tell(service, path, network::settingsInterface + ".Connection", "Removed");
    }

    /// What can be read afterwards is seen, and nothing went wrong on the way there.
    void expectThatMonitoringGoesOn() {
        write("tun0", "statistics/rx_bytes", 900);
        service.addProfile("after", "gsm");
        EXPECT_TRUE(soon([&] {
            const auto found = lines();
            EXPECT_EQ(code, 0U);
            EXPECT_EQ(found.size(), 1U);
            const Names names = entries();
            EXPECT_EQ(code, 0U);
            EXPECT_EQ(std::count(names.begin(), names.end(), "office"), 1);
            return names.size() == 2;
        }));
        EXPECT_EQ(lines().at(0).hrasconn, line);
        EXPECT_EQ(statisticsOf(line).dwBytesRcved, 900U);
    }

    std::string path;
    std::uint32_t line = 0;
};

TEST_P(OddSignalsTest, EndNothing) {
    tellAll(oddBodies()[GetParam()]);

    expectThatMonitoringGoesOn();
}

TEST_P(OddSignalsTest, TellNoReason) {
    service.onActivate = [&](const std::string&) {
        std::string none = "/org/freedesktop/NetworkManager/ActiveConnection/99";
        const OddBody body = oddBodies()[GetParam()];
        body.tell(service, none, network::lineInterface, "StateChanged");
        body.tell(service, none, network::deviceInterface, "StateChanged");
        return none;
    };

    EXPECT_EQ(dial("office"), 668U);
}

INSTANTIATE_TEST_SUITE_P(Each, OddSignalsTest, testing::Range(std::size_t{0}, oddBodies().size()),
                         [](const auto& one) { return oddBodies()[one.param].name; });

} // namespace
} // namespace tarvik
