#include "RunningProgram.h"

#include "forms/frmOptions.h"
#include "windows/services/Library.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace tarvik {
namespace {

constexpr const char* otherInstance =
    "Warning: Another instance of Velmars Tarvik seems to be running.\rAre you sure that you want "
    "to start another instance?\r(This could cause the protocol file to become corrupt!)";
constexpr const char* quickIni = "[Settings]\r\nRefreshInterval=100\r\n";

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// The program on the simulated link.
class DemoTest : public testing::Test {
protected:
    Installation installation{"tarvik-demo.exe"};

    void dial(const RunningProgram& program) {
        program.choose("cboConnections", 0);
        program.click("cmdMonitor");
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return program.read("cmdMonitor") == "Stop &Monitoring"; }));
        program.click("cmdConnect");
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return program.read("txtDurationCurrent") > "00:00:00:300"; }));
    }
};

TEST_F(DemoTest, TheFirstStartTellsItAndLeavesAFile) {
    const RunningProgram program(installation);
    EXPECT_TRUE(
        program.answer("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxAnswer::Ok));
    EXPECT_TRUE(program.answer("Warning: Old settings could not be loaded.\rAssuming first run.",
                               MsgBoxAnswer::Ok));
    ASSERT_TRUE(program.waitForMainWindow());

    program.click("cmdQuit");

    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(contains(installation.ini(), "RefreshInterval=1000\r\n"));
}

/// What the program gets when it asks for a library, on a thread of its own.
DWORD loadedIn(const RunningProgram& program, const std::string& library) {
    void* const text =
        VirtualAllocEx(program.process(), nullptr, library.size() + 1, MEM_COMMIT, PAGE_READWRITE);
    WriteProcessMemory(program.process(), text, library.c_str(), library.size() + 1, nullptr);
    const FARPROC load = GetProcAddress(GetModuleHandleA("kernel32.dll"), "LoadLibraryA");
    const HANDLE thread = CreateRemoteThread(
        program.process(), nullptr, 0,
        reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(load)), text, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    DWORD module = 0;
    GetExitCodeThread(thread, &module);
    CloseHandle(thread);
    return module;
}

TEST_F(DemoTest, ALibraryPlantedBesideTheProgramIsNotFoundByItsName) {
    installation.setIni(quickIni);
    const std::string planted = installation.folder() + "\\planted.dll";
    ASSERT_TRUE(CopyFileA((systemFolder() + "\\rasapi32.dll").c_str(), planted.c_str(), TRUE));
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());

    EXPECT_EQ(loadedIn(program, "planted.dll"), 0U);
    EXPECT_NE(loadedIn(program, planted), 0U) << "the planted file is none that could be loaded";
    EXPECT_NE(loadedIn(program, "version.dll"), 0U) << "the system's own are found no longer";
}

TEST_F(DemoTest, TheEndOfTheSessionSavesWhatWasCounted) {
    installation.setIni(quickIni);
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());
    ASSERT_NO_FATAL_FAILURE(dial(program));

    program.endSession();

    EXPECT_TRUE(contains(installation.ini(), "LastDateStamp=1\r\n"));
    EXPECT_TRUE(contains(installation.ini(), "IsLocked=0\r\n"));
    EXPECT_EQ(program.exitCode(), 0);
}

TEST_F(DemoTest, TheListOfTasksEndsAMonitoringProgramThatSavesWhatWasCounted) {
    installation.setIni(quickIni);
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());
    ASSERT_NO_FATAL_FAILURE(dial(program));

    PostMessageA(program.mainWindow(), WM_CLOSE, 0, 0);

    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(contains(installation.ini(), "LastDateStamp=1\r\n"));
    EXPECT_TRUE(contains(installation.ini(), "IsLocked=0\r\n"));
}

TEST_F(DemoTest, TheListOfTasksEndsAProgramWhoseBoxIsOpen) {
    installation.setIni(quickIni);
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());
    ASSERT_NO_FATAL_FAILURE(dial(program));
    program.click("cmdQuit");
    ASSERT_TRUE(RunningProgram::waitUntil(
        [&] { return openBox(GetProcessId(program.process())).window != nullptr; }));

    PostMessageA(program.mainWindow(), WM_CLOSE, 0, 0);

    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(contains(installation.ini(), "LastDateStamp=1\r\n"));
    EXPECT_TRUE(contains(installation.ini(), "IsLocked=0\r\n"));
}

TEST_F(DemoTest, AResetIsNotUndoneByTheNextStart) {
    installation.setIni("[Settings]\r\nRefreshInterval=100\r\nLastState=r\r\nLastDateStamp=1\r\n"
                        "DateStamp1=r\r\n[r]\r\nSent=5\r\nRcvd=7\r\nDuration=9\r\n");
    {
        const RunningProgram program(installation);
        ASSERT_TRUE(program.waitForMainWindow());
        ASSERT_EQ(program.read("txtBytesRcvdTotal"), "7");
        program.click("cmdOptions");
        const FrmOptions options; // it tells names and numbers
        program.clickIn(options, "cmdResetValues");
        ASSERT_TRUE(program.answer("Are you really sure you want to reset the (overall) values?",
                                   MsgBoxAnswer::Yes));
        program.clickIn(options, "cmdCancel");
        program.click("cmdQuit");
        ASSERT_EQ(program.exitCode(), 0);
    }
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());

    EXPECT_EQ(program.read("txtBytesRcvdTotal"), "0");
}

TEST_F(DemoTest, WhatCouldNotBeSavedIsThereAtTheNextStart) {
    installation.setIni(quickIni);
    std::string shown;
    {
        const RunningProgram program(installation);
        ASSERT_TRUE(program.waitForMainWindow());
        ASSERT_NO_FATAL_FAILURE(dial(program));
        program.click("cmdDisconnect");
        ASSERT_TRUE(
            RunningProgram::waitUntil([&] { return program.read("txtActiveConnection").empty(); }));
        shown = program.read("txtBytesRcvdTotal");
        const std::string ini = installation.folder() + "\\Tarvik.ini";
        ASSERT_NE(SetFileAttributesA(ini.c_str(), FILE_ATTRIBUTE_READONLY), FALSE);
        program.click("cmdMonitor");
        program.click("cmdQuit");
        EXPECT_TRUE(program.answer("Warning: State could not be saved.", MsgBoxAnswer::Ok));
        EXPECT_TRUE(program.answer("Warning: Unable to unset \"IsLocked\"-flag in INI-file!",
                                   MsgBoxAnswer::Ok));
        EXPECT_EQ(program.exitCode(), 0);
        SetFileAttributesA(ini.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    const RunningProgram program(installation);
    ASSERT_TRUE(program.answer(otherInstance, MsgBoxAnswer::Yes));
    ASSERT_TRUE(program.waitForMainWindow());

    EXPECT_EQ(program.read("txtBytesRcvdTotal"), shown);
}

TEST_F(DemoTest, TheSystemMenuOnlyHidesTheProgram) {
    installation.setIni(quickIni);
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());

    PostMessageA(program.mainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);

    EXPECT_TRUE(RunningProgram::waitUntil([&] {
        return IsWindowVisible(program.mainWindow()) == FALSE ||
               IsIconic(program.mainWindow()) != FALSE;
    }));
    EXPECT_EQ(WaitForSingleObject(program.process(), 0), WAIT_TIMEOUT);
}

TEST_F(DemoTest, AfterACrashTheNextStartAsksAndKeepsTheOldTotals) {
    installation.setIni("[Settings]\r\nRefreshInterval=100\r\nLastState=old\r\n[old]\r\n"
                        "Sent=11\r\nRcvd=22\r\nDuration=33\r\n");
    {
        const RunningProgram program(installation);
        ASSERT_TRUE(program.waitForMainWindow());
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return contains(installation.ini(), "IsLocked=1\r\n"); }));
        program.kill();
    }

    const RunningProgram program(installation);
    EXPECT_TRUE(program.answer(otherInstance, MsgBoxAnswer::Yes));
    ASSERT_TRUE(program.waitForMainWindow());
    EXPECT_EQ(program.read("txtBytesRcvdTotal"), "22");
}

TEST_F(DemoTest, ASecondInstanceAsksAndLeavesTheFirstAlone) {
    installation.setIni(quickIni);
    const RunningProgram first(installation);
    ASSERT_TRUE(first.waitForMainWindow());

    const RunningProgram second(installation);
    EXPECT_TRUE(second.answer(otherInstance, MsgBoxAnswer::No));

    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(second.mainWindow(), nullptr);
    EXPECT_TRUE(IsWindowVisible(first.mainWindow()));
}

TEST_F(DemoTest, StartedHiddenTheWindowIsNotSeen) {
    installation.setIni(quickIni);
    const RunningProgram program(installation, "/min");

    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return topLevelWindows("TarvikTaskBarWatcher", 0).size() == 1; }));

    EXPECT_FALSE(IsWindowVisible(program.mainWindow()) && !IsIconic(program.mainWindow()));
}

TEST_F(DemoTest, TheCommandLineReachesTheProgram) {
    installation.setIni(quickIni);
    const RunningProgram program(installation, "/RUN");

    ASSERT_TRUE(program.waitForMainWindow());

    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return program.read("cmdMonitor") == "Stop &Monitoring"; }));
}

/// The program itself, on the system's remote access service: a stand-in of it.
class ProgramTest : public testing::Test {
protected:
    ProgramTest() { installation.setIni(quickIni); }
    Installation installation{"tarvik.exe"};
};

TEST_F(ProgramTest, ASessionOnTheSystemsServiceIsCounted) {
    SetEnvironmentVariableA("TARVIK_STANDIN_ENTRIES", "Harbour;Ridge");
    const RunningProgram program(installation);
    ASSERT_TRUE(program.waitForMainWindow());
    program.choose("cboConnections", 1);
    program.click("cmdMonitor");
    program.click("cmdConnect");

    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return program.read("txtActiveConnection") == "modem: Ridge - Line 1"; }));
    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return program.read("txtDurationCurrent") >= "00:00:01:000"; }));
    program.click("cmdDisconnect");
    EXPECT_TRUE(
        RunningProgram::waitUntil([&] { return program.read("txtActiveConnection").empty(); }));
    program.click("cmdMonitor");
    program.click("cmdQuit");

    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(contains(installation.ini(), "\r\nDuration=1"));
}

/// A line of the service that is up before the program and after it.
class KilledProgramTest : public ProgramTest {
protected:
    KilledProgramTest() {
        SetEnvironmentVariableA("TARVIK_STANDIN_ENTRIES", "Harbour");
        beginLine();
    }
    ~KilledProgramTest() override {
        SetEnvironmentVariableA("TARVIK_STANDIN_UP_SINCE", nullptr);
        SetEnvironmentVariableA("TARVIK_STANDIN_ENTRIES", nullptr);
    }

    /// Another session begins, which has carried something already.
    static void beginLine() {
        const std::string since = std::to_string(GetTickCount64() - 5000);
        SetEnvironmentVariableA("TARVIK_STANDIN_UP_SINCE", since.c_str());
    }
    /// The question about a session that was up before, whatever it has carried.
    static bool answerSessionQuestion(const RunningProgram& program, MsgBoxAnswer reply) {
        return program.answerAbout("Monitoring has been started", reply);
    }
    static std::uint64_t number(const std::string& text) {
        std::string digits;
        std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                     [](char one) { return one >= '0' && one <= '9'; });
        return digits.empty() ? 0 : std::stoull(digits);
    }
    /// A tick has come that shows this whole session, and nothing more, as the total. Another may
    /// come between the readings.
    static bool showsThisSession(const RunningProgram& program, std::uint64_t atLeast) {
        bool seen = false;
        std::string total;
        std::string session;
        RunningProgram::waitUntil([&] {
            total = program.read("txtBytesRcvdTotal");
            session = program.read("txtBytesRcvd");
            seen = seen || (number(total) > atLeast && total == session &&
                            total == program.read("txtBytesRcvdTotal"));
            return seen;
        });
        EXPECT_TRUE(seen) << total << ", of the session " << session;
        return seen;
    }
};

TEST_F(KilledProgramTest, TheSameSessionIsCarriedOnToTheByteAsOftenAsTheProgramIsKilled) {
    std::uint64_t shown = 0;
    {
        const RunningProgram program(installation, "/RUN");
        ASSERT_TRUE(answerSessionQuestion(program, MsgBoxAnswer::Yes));
        ASSERT_TRUE(showsThisSession(program, shown));
        shown = number(program.read("txtBytesRcvdTotal"));
        program.kill();
    }
    for (int i = 0; i < 3; ++i) {
        const RunningProgram program(installation, "/RUN");
        ASSERT_TRUE(program.answer(otherInstance, MsgBoxAnswer::Yes));
        ASSERT_TRUE(program.waitForMainWindow());
        EXPECT_TRUE(showsThisSession(program, shown)) << i;
        shown = number(program.read("txtBytesRcvdTotal"));
        program.kill();
    }
}

TEST_F(KilledProgramTest, AnotherSessionThatIsUpIsAskedAboutAndTheFirstIsKept) {
    std::uint64_t shown = 0;
    {
        const RunningProgram program(installation, "/RUN");
        ASSERT_TRUE(answerSessionQuestion(program, MsgBoxAnswer::Yes));
        ASSERT_TRUE(showsThisSession(program, 0));
        shown = number(program.read("txtBytesRcvdTotal"));
        program.kill();
    }
    Sleep(4000); // as long as two beginnings are told apart
    beginLine();
    const RunningProgram program(installation, "/RUN");
    ASSERT_TRUE(program.answer(otherInstance, MsgBoxAnswer::Yes));
    ASSERT_TRUE(answerSessionQuestion(program, MsgBoxAnswer::No));

    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return number(program.read("txtBytesRcvdTotal")) >= shown; }));
    EXPECT_LT(number(program.read("txtBytesRcvdTotal")), shown + 100'000);
    program.endSession();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_FALSE(installation.has("Tarvik.journal"));
}

TEST_F(KilledProgramTest, ASessionThatWasHungUpMeanwhileIsKeptAndNothingIsAsked) {
    std::uint64_t shown = 0;
    std::uint64_t last = 0;
    {
        const RunningProgram program(installation, "/RUN");
        ASSERT_TRUE(answerSessionQuestion(program, MsgBoxAnswer::Yes));
        ASSERT_TRUE(showsThisSession(program, 0));
        shown = number(program.read("txtBytesRcvdTotal"));
        Sleep(6000); // longer than what was counted may be kept in memory
        last = number(program.read("txtBytesRcvdTotal"));
        program.kill();
    }
    SetEnvironmentVariableA("TARVIK_STANDIN_UP_SINCE", nullptr);
    const RunningProgram program(installation, "/RUN");
    ASSERT_TRUE(program.answer(otherInstance, MsgBoxAnswer::Yes));
    ASSERT_TRUE(program.waitForMainWindow());

    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return number(program.read("txtBytesRcvdTotal")) >= shown; }));
    EXPECT_LT(number(program.read("txtBytesRcvdTotal")), last + 100'000);
    program.endSession();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_FALSE(installation.has("Tarvik.journal"));
}

TEST_F(KilledProgramTest, AMachineThatGoesToSleepFindsTheJournalWritten) {
    const RunningProgram program(installation, "/RUN");
    ASSERT_TRUE(answerSessionQuestion(program, MsgBoxAnswer::Yes));
    ASSERT_TRUE(showsThisSession(program, 0));
    const std::string before = installation.content("Tarvik.journal");
    const std::uint64_t shown = number(program.read("txtBytesRcvdTotal"));
    ASSERT_TRUE(showsThisSession(program, shown));

    answerOf(program.mainWindow(), WM_POWERBROADCAST, PBT_APMSUSPEND, 0);

    EXPECT_NE(installation.content("Tarvik.journal"), before) << "before the message returns";
}

/// The same on a system that lacks the service, which only whoever starts the tests can arrange.
using WithoutServiceTest = ProgramTest;

TEST_F(WithoutServiceTest, TheProgramSaysSoAndCanBeUsedAllTheSame) {
    const RunningProgram program(installation);
    EXPECT_TRUE(program.answer("Error: RasEnumConnections failed with 126:\rError obtaining error "
                               "message from system.",
                               MsgBoxAnswer::Ok));
    EXPECT_TRUE(program.answer(
        "Error: The following errors occured during initialisation:\r- Obtaining available "
        "connections failed.\r  (No RAS connections seem to be setup on this system.)\r- "
        "Enumerating RAS connections failed.\r  (OS may not support function needed to "
        "operate.)\r\rA lot of functionality will not work therefore.\rThe program maybe in an "
        "inoperatable state.\r\rPress OK to shutdown the application or Cancel to run anyway.",
        MsgBoxAnswer::Cancel));
    ASSERT_TRUE(program.waitForMainWindow());

    program.click("cmdConnect");

    EXPECT_TRUE(program.answer("Error: No connections are setup to connect to.", MsgBoxAnswer::Ok));
    program.click("cmdQuit");
    EXPECT_EQ(program.exitCode(), 0);
}

} // namespace
} // namespace tarvik
