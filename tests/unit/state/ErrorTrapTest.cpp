#include "settings/mdlSettings.h"
#include "settings/mdlSettingsDialog.h"
#include "settings/mdlSettingsLoad.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlArguments.h"
#include "startup/mdlSingleInstance.h"
#include "startup/mdlStartUp.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "support/WorldTest.h"
#include "wiring/frmMainEvents.h"

#include <stdexcept>

namespace tarvik {
namespace {

/// What a faulty service raises.
constexpr const char* permissionDenied = "70 (Permission denied)";

class FaultyProfile : public ScriptedProfile {
public:
    using ScriptedProfile::ScriptedProfile;

    std::uint32_t GetPrivateProfileStringA(std::string_view, std::string_view, std::string_view,
                                           char*, std::uint32_t, const std::string&) override {
        raise(ErrorNumber::PermissionDenied);
    }
    std::int32_t GetPrivateProfileIntA(std::string_view, std::string_view, std::int32_t,
                                       const std::string&) override {
        raise(ErrorNumber::PermissionDenied);
    }
    bool WritePrivateProfileStringA(std::string_view, std::string_view, std::string_view,
                                    const std::string&) override {
        raise(ErrorNumber::PermissionDenied);
    }
};

class FaultyInstances : public ScriptedInstances {
public:
    std::int32_t CreateMutexA(const std::string&, std::uint32_t*) override {
        raise(ErrorNumber::PermissionDenied);
    }
    bool CloseHandle(std::int32_t) override { raise(ErrorNumber::PermissionDenied); }
};

class FaultyProgram : public ScriptedProgram {
public:
    std::string folder() override { raise(ErrorNumber::PermissionDenied); }
    std::string commandLine() override { raise(ErrorNumber::PermissionDenied); }
};

class FaultyClock : public ScriptedClock {
public:
    Date currentTime() override { raise(ErrorNumber::PermissionDenied); }
};

/// An error of the library, which no conversion swallows.
class FaultyLocale : public ScriptedLocale {
public:
    const LocaleData& data() override { throw std::out_of_range("locale"); }
};

class ErrorTrapTest : public WorldTest {
protected:
    /// From here on the named services fail at every call.
    void breakServices(PrivateProfile* profile, SingleInstance* instances, Program* program,
                       Clock* clock, Locale* locale) {
        const Platform& whole = machine.platform;
        broken_.emplace(Platform{whole.connections, whole.systemErrors, whole.internet,
                                 whole.sockets, profile != nullptr ? *profile : whole.profile,
                                 whole.files, instances != nullptr ? *instances : whole.instances,
                                 whole.notificationArea, whole.dialogs, whole.desktop,
                                 clock != nullptr ? *clock : whole.clock,
                                 locale != nullptr ? *locale : whole.locale,
                                 program != nullptr ? *program : whole.program});
        scope_.emplace(*broken_);
    }
    void breakProfile() { breakServices(&faultyProfile_, nullptr, nullptr, nullptr, nullptr); }
    void breakInstances() { breakServices(nullptr, &faultyInstances_, nullptr, nullptr, nullptr); }
    void breakProgram() { breakServices(nullptr, nullptr, &faultyProgram_, nullptr, nullptr); }
    void breakClock() { breakServices(nullptr, nullptr, nullptr, &faultyClock_, nullptr); }
    void breakLocale() { breakServices(nullptr, nullptr, nullptr, nullptr, &faultyLocale_); }

    /// Announces a box during which an overflow is raised, and the report of that.
    void expectOverflowWithin(const std::string& text, MsgBoxButtons buttons, MsgBoxIcon icon,
                              const std::string& procedure) {
        expectBox(text, buttons, icon, MsgBoxAnswer::Ok, [] { raise(ErrorNumber::Overflow); });
        expectError("6 (Overflow)", procedure);
    }

private:
    FaultyProfile faultyProfile_{machine.files, "\r\n"};
    FaultyInstances faultyInstances_;
    FaultyProgram faultyProgram_;
    FaultyClock faultyClock_;
    FaultyLocale faultyLocale_;
    std::optional<Platform> broken_;
    std::optional<PlatformScope> scope_;
};

TEST_F(ErrorTrapTest, MainEndsWithItsWindowHidden) {
    phoneBook({"Harbour"});
    setIni("[Settings]\r\n");
    world->forms.frmOptions.Initialize.connect([] { raise(ErrorNumber::FileNotFound); });
    expectError("53 (File not found)", "Main");

    start("/run");

    EXPECT_FALSE(frmMain().visible());
    EXPECT_FALSE(state().ArgRun);
}

TEST_F(ErrorTrapTest, RegisterAppAnswersFalse) {
    state().InstanceMutex = 7;
    breakInstances();
    expectError(permissionDenied, "RegisterApp");

    EXPECT_FALSE(RegisterApp());

    EXPECT_EQ(state().InstanceMutex, 0);
}

TEST_F(ErrorTrapTest, ReleaseAppReportsItself) {
    state().InstanceMutex = 7;
    breakInstances();
    expectError(permissionDenied, "ReleaseApp");

    ReleaseApp();
}

TEST_F(ErrorTrapTest, ParseArgsGivesNoArgumentsAndItsCallerGoesOn) {
    breakProgram();
    expectError(permissionDenied, "ParseArgs");

    InitArgs();

    EXPECT_FALSE(state().ArgHelp);
}

TEST_F(ErrorTrapTest, InitArgsKeepsWhatItHadSet) {
    machine.program.arguments = "/run /x";
    expectOverflowWithin(
        "Warning:\rInvalid command-line switches detected:\r/x\rTry /? or /h for help.",
        MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, "InitArgs");

    InitArgs();

    EXPECT_TRUE(state().ArgRun);
}

TEST_F(ErrorTrapTest, OperateArgsReportsItself) {
    state().ArgHelp = true;
    expectOverflowWithin("Available command-line arguments:\r\r/?, /h, /help\r\t- Show this "
                         "help\r/m, /min\r\t- Minmise after startup\r/r, /run\r\t- Run after "
                         "startup",
                         MsgBoxButtons::OkOnly, MsgBoxIcon::Information, "OperateArgs");

    OperateArgs();
}

TEST_F(ErrorTrapTest, InitApplicationAnswersFalse) {
    setIni("[Settings]\r\n");
    expectOverflowWithin(
        "Error: The following errors occured during initialisation:\r- Obtaining available "
        "connections failed.\r  (No RAS connections seem to be setup on this system.)\r\rA lot of "
        "functionality will not work therefore.\rThe program maybe in an inoperatable "
        "state.\r\rPress OK to shutdown the application or Cancel to run anyway.",
        MsgBoxButtons::OkCancel, MsgBoxIcon::Critical, "InitApplication");

    EXPECT_FALSE(InitApplication());

    EXPECT_FALSE(state().AppInitialised);
}

TEST_F(ErrorTrapTest, InitApplicationStatusKeepsTheDefaultsAndItsCallerGoesOn) {
    phoneBook({"Harbour"});
    expectOverflowWithin("Warning: Old settings could not be loaded.\rAssuming first run.",
                         MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, "InitApplicationStatus");

    EXPECT_TRUE(InitApplication());

    EXPECT_EQ(state().RefreshInterval, Long(1000));
}

TEST_F(ErrorTrapTest, ShutDownLeavesTheRestUndoneAndTheWindowStillGoes) {
    startQuietly();
    machine.profile.failingKeys = {"UnitTransferCurrent"};
    expectOverflowWithin("Warning: State could not be saved.", MsgBoxButtons::OkOnly,
                         MsgBoxIcon::Exclamation, "ShutDown");

    frmMain().cmdQuit.press();

    EXPECT_FALSE(frmMain().loaded());
    EXPECT_NE(ini().find("IsLocked=1\r\n"), std::string::npos);
    EXPECT_TRUE(machine.instances.handlesClosed.empty());
}

TEST_F(ErrorTrapTest, QueryUnloadReportsItself) {
    startQuietly("/run");
    expectOverflowWithin("Warning: Monitoring is still active.\rPlease de-activate monitoring "
                         "before quit.",
                         MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, "Form_QueryUnload");
    bool cancel = false;

    Form_QueryUnload(cancel, UnloadMode::FormCode);

    EXPECT_FALSE(cancel);
}

TEST_F(ErrorTrapTest, QuitReportsItself) {
    startQuietly();
    frmMain().QueryUnload.connect([](bool&, UnloadMode) { raise(ErrorNumber::Overflow); });
    expectError("6 (Overflow)", "cmdQuit_Click");

    frmMain().cmdQuit.press();

    EXPECT_TRUE(frmMain().loaded());
}

TEST_F(ErrorTrapTest, FatalErrorReportsItself) {
    expectOverflowWithin("Error occured in: x\rUnhandled error.", MsgBoxButtons::OkOnly,
                         MsgBoxIcon::Critical, "FatalError");

    FatalError("x", static_cast<FatalKind>(9));
}

TEST_F(ErrorTrapTest, ResetTransfersKeepsWhatItHadFolded) {
    state().BytesRcvdCurrent = 3;
    state().BytesSentTotal = Currency::fromScaled(INT64_MAX);
    state().BytesSentCurrent = 1;
    expectError("6 (Overflow)", "ResetTransfers");

    ResetTransfers(true);

    EXPECT_EQ(state().BytesRcvdTotal, Currency(3));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(3));
    EXPECT_EQ(state().BytesSentTotal.scaled(), INT64_MAX);
}

TEST_F(ErrorTrapTest, SetIniFileNameLeavesTheName) {
    state().IniFileName = "before";
    breakProgram();
    expectError(permissionDenied, "SetIniFileName");

    SetIniFileName(true, false);

    EXPECT_EQ(state().IniFileName, "before");
}

TEST_F(ErrorTrapTest, ShowIniFileDialogPicksNothing) {
    breakProgram();
    expectError(permissionDenied, "ShowIniFileDialog");

    EXPECT_EQ(ShowIniFileDialog(), "");
}

TEST_F(ErrorTrapTest, SetLockedAnswersFalse) {
    breakProfile();
    expectError(permissionDenied, "SetLocked");

    EXPECT_FALSE(SetLocked(true));
}

TEST_F(ErrorTrapTest, SaveSettingsAnswersFalse) {
    breakProfile();
    expectError(permissionDenied, "SaveSettings");

    EXPECT_FALSE(SaveSettings());
}

TEST_F(ErrorTrapTest, SaveSettingsKeepsWhatItHadWrittenBeforeAnImpossibleDate) {
    setIni("[Settings]\r\n");
    SetIniFileName(false, false);
    state().TransferResetLast = Date(1e9);
    expectError("5 (Invalid procedure call or argument)", "SaveSettings");

    EXPECT_FALSE(SaveSettings());

    EXPECT_NE(ini().find("TransferResetBackup=0\r\n"), std::string::npos);
    EXPECT_EQ(ini().find("TransferResetLast"), std::string::npos);
    EXPECT_EQ(ini().find("StartUpMinimise"), std::string::npos);
}

TEST_F(ErrorTrapTest, SaveStateAnswersFalseAndSavesNoSettings) {
    setIni("[Settings]\r\n");
    state().BytesSentTotal = 1;
    breakClock();
    expectError(permissionDenied, "SaveState");

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), "[Settings]\r\n");
}

TEST_F(ErrorTrapTest, LoadStateReportsWhatItsReadersDoNot) {
    setIni("[Settings]\r\n");
    breakLocale();
    expectError("9 (Subscript out of range)", "GetCurrencyFromINI");
    expectError("9 (Subscript out of range)", "LoadState");

    EXPECT_FALSE(LoadState());
}

TEST_F(ErrorTrapTest, GetDateFromINIGivesZero) {
    breakLocale();
    expectError("9 (Subscript out of range)", "GetDateFromINI");

    EXPECT_EQ(GetDateFromINI("Settings", "TransferResetLast"), Currency(0));
}

struct ReaderCase {
    const char* name;
    std::function<void()> call;
    /// Each but the last fails again while its report is shown.
    std::vector<const char*> reports;
};

class FailingReaderTest : public ErrorTrapTest, public testing::WithParamInterface<ReaderCase> {};

TEST_P(FailingReaderTest, IsReportedUnderItsName) {
    setIni("[Settings]\r\nDateStamp1=r\r\n");
    SetIniFileName(false, false);
    breakProfile();
    const std::vector<const char*>& reports = GetParam().reports;
    for (std::size_t i = 0; i + 1 < reports.size(); ++i) {
        expectError(permissionDenied, reports[i], [] { raise(ErrorNumber::PermissionDenied); });
    }
    expectError(permissionDenied, reports.back());

    GetParam().call();
}

INSTANTIATE_TEST_SUITE_P(
    Each, FailingReaderTest,
    testing::Values(
        ReaderCase{"GetStringFromINI",
                   [] { EXPECT_EQ(GetStringFromINI("Settings", "A"), ""); },
                   {"GetStringFromINI"}},
        ReaderCase{"GetLongFromINI",
                   [] { EXPECT_EQ(GetLongFromINI("Settings", "A"), Currency(0)); },
                   {"GetLongFromINI"}},
        ReaderCase{"GetCurrencyFromINI",
                   [] { EXPECT_EQ(GetCurrencyFromINI("Settings", "A"), Currency(0)); },
                   {"GetStringFromINI", "GetCurrencyFromINI"}},
        ReaderCase{"GetDateFromINI",
                   [] { EXPECT_EQ(GetDateFromINI("Settings", "A"), Currency(0)); },
                   {"GetStringFromINI", "GetDateFromINI"}},
        ReaderCase{"GetLocked", [] { EXPECT_FALSE(GetLocked()); }, {"GetLongFromINI", "GetLocked"}},
        ReaderCase{"GetNumRecords",
                   [] { EXPECT_EQ(GetNumRecords(), Long(0)); },
                   {"GetLongFromINI", "GetNumRecords"}},
        ReaderCase{"GetBytes",
                   [] { EXPECT_EQ(GetBytes("Sent", 1), Currency(0)); },
                   {"GetStringFromINI", "GetBytes"}},
        ReaderCase{"GetBytesSent",
                   [] { EXPECT_EQ(GetBytesSent(1), Currency(0)); },
                   {"GetStringFromINI", "GetBytes", "GetBytesSent"}},
        ReaderCase{"GetBytesRcvd",
                   [] { EXPECT_EQ(GetBytesRcvd(1), Currency(0)); },
                   {"GetStringFromINI", "GetBytes", "GetBytesRcvd"}},
        ReaderCase{"GetDuration",
                   [] { EXPECT_EQ(GetDuration(1), Currency(0)); },
                   {"GetStringFromINI", "GetDuration"}},
        // Its neighbour's name, kept so.
        ReaderCase{"GetIPAddress",
                   [] { EXPECT_EQ(GetIPAddress(1), ""); },
                   {"GetStringFromINI", "GetBytes"}},
        ReaderCase{"GetDate", [] { EXPECT_EQ(GetDate(1), ""); }, {"GetStringFromINI", "GetDate"}}),
    [](const auto& given) { return given.param.name; });

} // namespace
} // namespace tarvik
