#include "monitor/mdlReadings.h"
#include "support/WorldTest.h"
#include "ui/mdlGUIStatistics.h"
#include "ui/mdlInternetState.h"

#include <cstring>

namespace tarvik {
namespace {

class StatisticsTest : public WorldTest {
protected:
    StatisticsTest() {
        startQuietly();
        machine.clock.set({2026, 11, 16, 9, 5, 7});
    }

    FrmStatistics& window() { return world->forms.frmStatistics; }

    /// Of a session whose counters have not wrapped.
    static void show(const RAS_STATS& stats) { SetStatistics(stats, totalsOf(stats)); }

    static RAS_STATS record() {
        return {.dwSize = RAS_STATS::size,
                .dwBytesXmited = 24'000,
                .dwBytesRcved = 1'000'000,
                .dwFramesXmited = 80,
                .dwFramesRcved = 120,
                .dwCrcErr = 1,
                .dwTimeoutErr = 2,
                .dwAlignmentErr = 3,
                .dwHardwareOverrunErr = 4,
                .dwFramingErr = 5,
                .dwBufferOverrunErr = 6,
                .dwCompressionRatioIn = 7,
                .dwCompressionRatioOut = 8,
                .dwBps = 56'000,
                .dwConnectDuration = 512'000};
    }
};

struct ShownCounter {
    const char* box;
    const char* label;
    const char* caption;
    const char* text;
};

class CounterTest : public StatisticsTest, public testing::WithParamInterface<ShownCounter> {};

TEST_P(CounterTest, IsShownInItsBox) {
    show(record());

    const Control* control = window().control(GetParam().box);
    ASSERT_TRUE(control != nullptr && control->kind() == ControlKind::TextBox);
    const auto& box = static_cast<const TextBox&>(*control);
    EXPECT_EQ(box.text(), GetParam().text);
    EXPECT_TRUE(box.readOnly());
}

TEST_P(CounterTest, IsNamedByItsLabel) {
    const Control* control = window().control(GetParam().label);

    ASSERT_TRUE(control != nullptr && control->kind() == ControlKind::Label);
    const auto& label = static_cast<const Label&>(*control);
    EXPECT_EQ(label.caption(), GetParam().caption);
    EXPECT_EQ(label.labelled(), window().control(GetParam().box));
}

INSTANTIATE_TEST_SUITE_P(
    All, CounterTest,
    testing::Values(
        ShownCounter{"txtFrames", "lblFrames", "Fames (rcvd/sent):", "120 / 80"},
        ShownCounter{"txtBitrate", "lblBitrate", "Bitrate (bps):", "56000"},
        ShownCounter{"txtCRCError", "lblCRCError", "CRC errors:", "1"},
        ShownCounter{"txtTimeoutError", "lblTimeoutError", "Timeout errors:", "2"},
        ShownCounter{"txtAlignmentError", "lblAlignmentError", "Alignment errors:", "3"},
        ShownCounter{"txtHWOverrunError", "lblHWOverrunError", "HW overrun errors:", "4"},
        ShownCounter{"txtFramingError", "lblFramingError", "Framing errors:", "5"},
        ShownCounter{"txtBufferOverrunError", "lblBufferOverrunError",
                     "Buffer overrun errors:", "6"},
        ShownCounter{"txtCompressionRatioIn", "lblCompressionRatioIn",
                     "Compression ration (in):", "7"},
        ShownCounter{"txtCompressionRatioOut", "lblCompressionRatioOut",
                     "Compression ratio (out):", "8"},
        ShownCounter{"txtConnectDuration", "lblConnectDuration",
                     "Connect duration (ms):", "512000"},
        ShownCounter{"txtHostName", "lblHostName", "Hostname:", "(not obtained)"},
        ShownCounter{"txtIPAddress", "lblIPAddress", "IP-adress(es):", "(not obtained)"},
        ShownCounter{"txtAverageThroughput", "lblAverageThroughput",
                     "Aver. throughput (bps):", "2.00 / 16.00"}),
    [](const auto& given) { return std::string(given.param.box); });

TEST_F(StatisticsTest, CountersAreShownUnsigned) {
    RAS_STATS stats = record();
    stats.dwFramesRcved = 4'294'967'295U;

    show(stats);

    EXPECT_EQ(window().txtFrames.text(), "4294967295 / 80");
}

TEST_F(StatisticsTest, ThroughputIsWrittenAsTheUserWritesNumbers) {
    machine.locale.conventions = germanLocale();
    RAS_STATS stats = record();
    stats.dwBytesRcved = 2'000'000'000;
    stats.dwBytesXmited = 0;
    stats.dwConnectDuration = 1000;

    show(stats);

    EXPECT_EQ(window().txtAverageThroughput.text(), "2.000.000,00 / 16.000.000,00");
}

TEST_F(StatisticsTest, BothDirectionsTogetherMayExceedACounter) {
    RAS_STATS stats = record();
    stats.dwBytesRcved = 4'000'000'000U;
    stats.dwBytesXmited = 4'000'000'000U;
    stats.dwConnectDuration = 4'000'000'000U;

    show(stats);

    EXPECT_EQ(window().txtAverageThroughput.text(), "2.00 / 16.00");
}

TEST_F(StatisticsTest, HostAndAddressAreShownWhereTheyAreLogged) {
    state().LogIPAddress = 1;
    state().HostName = "harbour";
    state().IPAddress = "10.0.0.1;10.0.0.2";

    show(record());

    EXPECT_EQ(window().txtHostName.text(), "harbour");
    EXPECT_EQ(window().txtIPAddress.text(), "10.0.0.1;10.0.0.2");
}

TEST_F(StatisticsTest, WithoutLoggingHostAndAddressAreNotShown) {
    state().LogIPAddress = 0;
    state().HostName = "harbour";
    state().IPAddress = "10.0.0.1";

    show(record());

    EXPECT_EQ(window().txtHostName.text(), "(not obtained)");
    EXPECT_EQ(window().txtIPAddress.text(), "(not obtained)");
}

TEST_F(StatisticsTest, AHostThatWasNotFoundIsNotObtained) {
    state().LogIPAddress = 1;

    show(record());

    EXPECT_EQ(window().txtHostName.text(), "(not obtained)");
    EXPECT_EQ(window().txtIPAddress.text(), "(not obtained)");
}

TEST_F(StatisticsTest, ARefreshIsStampedWithTheTimeOfDay) {
    show(record());

    EXPECT_EQ(window().lblTimeStamp.caption(), "Updated at: 09:05:07");
}

TEST_F(StatisticsTest, WithoutTimeOnlineThereIsNoThroughput) {
    show(record());
    machine.clock.advanceSeconds(60);
    RAS_STATS stats = record();
    stats.dwConnectDuration = 0;
    stats.dwBps = 1;
    expectError("11 (Division by zero)", "SetStatistics");

    show(stats);

    EXPECT_EQ(window().txtConnectDuration.text(), "0");
    EXPECT_EQ(window().txtBitrate.text(), "1");
    EXPECT_EQ(window().txtAverageThroughput.text(), "2.00 / 16.00");
    EXPECT_EQ(window().lblTimeStamp.caption(), "Updated at: 09:05:07");
}

TEST_F(StatisticsTest, TickingOrClearingEitherBoxVoidsTheTimeStamp) {
    for (CheckBox* box : {&window().chkActiveConnection, &window().chkInternetState}) {
        for (const bool ticked : {true, false}) {
            show(record());

            box->setValue(ticked ? 1 : 0);

            EXPECT_EQ(window().lblTimeStamp.caption(), "Updated at: (Not yet obtained.)")
                << box->name();
        }
    }
}

TEST_F(StatisticsTest, BeforeAnyRefreshTheTimeStampIsVoid) {
    EXPECT_EQ(window().lblTimeStamp.caption(), "Updated at: (Not yet obtained.)");
    EXPECT_EQ(window().txtConnectionName.text(), "(not obtained)");
}

TEST_F(StatisticsTest, TheButtonOfTheMainWindowOpensIt) {
    frmMain().cmdStatistics.press();

    EXPECT_TRUE(window().visible());
    EXPECT_EQ(machine.desktop.broughtToFront.back(), "frmStatistics");
}

TEST_F(StatisticsTest, CancelHidesIt) {
    frmMain().cmdStatistics.press();

    window().cmdCancel.press();

    EXPECT_FALSE(window().visible());
    EXPECT_TRUE(window().loaded());
    EXPECT_EQ(window().cancelButton(), &window().cmdCancel);
}

TEST_F(StatisticsTest, TheCloseBoxHidesIt) {
    frmMain().cmdStatistics.press();

    window().unload(UnloadMode::FormControlMenu);

    EXPECT_FALSE(window().visible());
    EXPECT_TRUE(window().loaded());
}

TEST_F(StatisticsTest, ReadsToTheLetter) {
    EXPECT_EQ(window().caption(), "Velmars Tarvik - Connection Statistics");
    EXPECT_EQ(window().frameActiveConnection.caption(), "Active connection statistics:");
    EXPECT_EQ(window().frameInternetState.caption(), "Internet connected state:");
    EXPECT_EQ(window().chkActiveConnection.caption(), "Enable");
    EXPECT_EQ(window().chkInternetState.caption(), "Enable");
    EXPECT_EQ(window().lblConnectionName.caption(), "Name of current Connection to the Internet:");
    EXPECT_EQ(window().cmdCancel.caption(), "Cancel");
    EXPECT_EQ(window().cmdCancel.toolTip(), "Close the statistics dialog");
}

struct FlagCase {
    const char* box;
    const char* caption;
    std::uint32_t flag;
};

class InternetFlagTest : public StatisticsTest, public testing::WithParamInterface<FlagCase> {
protected:
    const CheckBox& box() {
        Control* control = window().control(GetParam().box);
        EXPECT_EQ(control->kind(), ControlKind::CheckBox);
        return static_cast<const CheckBox&>(*control);
    }
};

TEST_P(InternetFlagTest, TicksItsBoxAlone) {
    machine.internet.flagWord = GetParam().flag;

    SetConnectedState();

    for (const Control* control : window().controls()) {
        if (control->kind() == ControlKind::CheckBox) {
            EXPECT_EQ(static_cast<const CheckBox*>(control)->ticked(), control == &box())
                << control->name();
        }
    }
}

TEST_P(InternetFlagTest, ThatHasGoneTakesTheTickAway) {
    machine.internet.flagWord = GetParam().flag;
    SetConnectedState();
    machine.internet.flagWord = 0;

    SetConnectedState();

    EXPECT_FALSE(box().ticked());
}

TEST_P(InternetFlagTest, HasABoxForDisplayOnly) {
    EXPECT_EQ(box().caption(), GetParam().caption);
    EXPECT_TRUE(box().readOnly());
}

INSTANTIATE_TEST_SUITE_P(
    All, InternetFlagTest,
    testing::Values(FlagCase{"chkModemUsed", "A modem is used to connect to the Internet", 1},
                    FlagCase{"chkLANUsed", "A LAN is used to connect to the Internet", 2},
                    FlagCase{"chkProxyUsed", "A proxy is used to connect to the Internet", 4},
                    FlagCase{"chkModemBusy", "The modem is currently busy", 8},
                    FlagCase{"chkRASUsed", "RAS is used to connect to the Internet", 16},
                    FlagCase{"chkOffline", "Computer is currently in offline mode", 32},
                    FlagCase{"chkConnectionConfigured", "An Internet connection is configured",
                             64}),
    [](const auto& given) { return std::string(given.param.box); });

TEST_F(StatisticsTest, ThatTheComputerIsConnectedIsTheAnswerItself) {
    machine.internet.connected = true;

    SetConnectedState();

    EXPECT_TRUE(window().chkConnected.ticked());
    EXPECT_EQ(window().chkConnected.caption(), "Computer is connected to the Internet");
    EXPECT_FALSE(window().chkModemUsed.ticked());
}

TEST_F(StatisticsTest, TheConnectionsNameIsShown) {
    machine.internet.connected = true;
    machine.internet.name = "Harbour Net";

    SetConnectedState();

    EXPECT_EQ(window().txtConnectionName.text(), "Harbour Net");
}

TEST_F(StatisticsTest, AnEmptyNameIsShownEmpty) {
    machine.internet.connected = true;

    SetConnectedState();

    EXPECT_EQ(window().txtConnectionName.text(), "");
}

TEST_F(StatisticsTest, WithoutAConnectionTheNameStays) {
    machine.internet.connected = true;
    machine.internet.name = "Harbour Net";
    SetConnectedState();
    machine.internet.connected = false;

    SetConnectedState();

    EXPECT_EQ(window().txtConnectionName.text(), "Harbour Net");
}

TEST_F(StatisticsTest, TheStateOfTheInternetIsStampedWithTheTimeOfDay) {
    SetConnectedState();

    EXPECT_EQ(window().lblTimeStamp.caption(), "Updated at: 09:05:07");
}

} // namespace
} // namespace tarvik
