#include "windows/face/WindowsCommonDialogs.h"
#include "windows/face/WindowsDesktop.h"
#include "windows/services/Library.h"
#include "windows/services/WindowsConnections.h"
#include "windows/services/WindowsProgram.h"

#include "Later.h"

#include "support/TemporaryFolder.h"
#include "support/Win32Windows.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

#include <array>
#include <string>
#include <vector>

namespace tarvik {
namespace {

constexpr const char* plantHere = "TARVIK_TEST_PLANTS";

std::string ownPath() {
    std::array<char, MAX_PATH> path{};
    GetModuleFileNameA(nullptr, path.data(), MAX_PATH);
    return path.data();
}

/// Runs this test once more, as a program in a folder of its own; its exit code.
DWORD runInFolderOfItsOwn() {
    const TemporaryFolder folder;
    const std::string program = folder.path() + "\\planted.exe";
    CopyFileA(ownPath().c_str(), program.c_str(), TRUE);
    std::string line = "\"" + program + "\" --gtest_brief=1 --gtest_filter=" +
                       testing::UnitTest::GetInstance()->current_test_info()->test_suite_name() +
                       ".*";
    SetEnvironmentVariableA(plantHere, "1");
    STARTUPINFOA how{};
    how.cb = sizeof how;
    PROCESS_INFORMATION started{};
    CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how,
                   &started);
    SetEnvironmentVariableA(plantHere, nullptr);
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(started.hProcess, 120'000);
    GetExitCodeProcess(started.hProcess, &code);
    TerminateProcess(started.hProcess, 1);
    WaitForSingleObject(started.hProcess, INFINITE);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return code;
}

bool isThere(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Puts a library that is not it beside this program for each name that is not loaded yet, and that
/// the system has; those names.
std::vector<std::string> plant() {
    std::vector<std::string> planted;
    for (const std::string name : namesAskedFor()) {
        if (GetModuleHandleA(name.c_str()) == nullptr && isThere(systemFolder() + "\\" + name) &&
            CopyFileA((systemFolder() + "\\version.dll").c_str(),
                      (folderOfPath(ownPath()) + "\\" + name).c_str(), TRUE) != FALSE) {
            planted.push_back(name);
        }
    }
    return planted;
}

/// The paths of all that was loaded from the program's own folder, itself left out.
std::vector<std::string> loadedFromOwnFolder() {
    const std::string own = folderOfPath(ownPath());
    std::vector<std::string> paths;
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, GetCurrentProcessId());
    MODULEENTRY32 module{};
    module.dwSize = sizeof module;
    for (BOOL more = Module32First(list, &module); more != FALSE;
         more = Module32Next(list, &module)) {
        const std::string path = module.szExePath;
        if (_stricmp(folderOfPath(path).c_str(), own.c_str()) == 0 &&
            _stricmp(path.c_str(), ownPath().c_str()) != 0) {
            paths.push_back(path);
        }
    }
    CloseHandle(list);
    return paths;
}

/// Opens a file dialog and leaves it.
void openFileDialog() {
    face::WindowsDesktop desktop;
    face::WindowsCommonDialogs dialogs(desktop);
    std::array<char, MAX_PATH> file{};
    tarvik::OPENFILENAMEA data{};
    data.lStructSize = 76;
    data.lpstrFile = file.data();
    data.nMaxFile = static_cast<std::uint32_t>(file.size());
    const Later cancel([] {
        for (const HWND window : topLevelWindows("#32770", GetCurrentProcessId())) {
            if (IsWindowVisible(window) != FALSE) {
                return PostMessageA(window, WM_COMMAND, IDCANCEL, 0) != FALSE;
            }
        }
        return false;
    });
    dialogs.GetOpenFileNameA(&data,
                             [](const ScreenRect& dialog, const ScreenRect&) { return dialog; });
}

void askForEntries() {
    WindowsConnections connections;
    std::array<RASENTRYNAMEA, 8> entries{};
    entries[0].dwSize = RASENTRYNAMEA::size;
    std::uint32_t bytes = sizeof entries;
    std::uint32_t count = 0;
    connections.RasEnumEntriesA(nullptr, nullptr, entries.data(), &bytes, &count);
}

TEST(OldSystemNamesTest, NothingThatIsPlantedBesideTheProgramIsLoaded) {
    if (GetEnvironmentVariableA(plantHere, nullptr, 0) == 0) {
        EXPECT_EQ(runInFolderOfItsOwn(), 0U);
        return;
    }
    const std::vector<std::string> planted = plant();
    ASSERT_GT(planted.size(), 20U);

    loadWhatTheSystemAsksForByName();
    for (const std::string& name : planted) {
        EXPECT_NE(LoadLibraryA(name.c_str()), nullptr) << name;
    }
    openFileDialog();
    askForEntries();

    EXPECT_EQ(loadedFromOwnFolder(), std::vector<std::string>());
}

} // namespace
} // namespace tarvik
