#include "RunningProgram.h"

#include "windows/face/ControlIds.h"
#include "windows/services/WindowsFiles.h"
#include "windows/services/WindowsProgram.h"

#include <utility>

namespace tarvik {

namespace {

constexpr ULONGLONG fairWhile = 60'000; // milliseconds

std::string ownFolder() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return folderOfPath(path);
}

} // namespace

Installation::Installation(const std::string& program) : program_(program) {
    CopyFileA((ownFolder() + "\\" + program).c_str(), this->program().c_str(), TRUE);
}

std::string Installation::content(const std::string& name) const {
    std::string bytes;
    WindowsFiles().read(folder() + "\\" + name, bytes);
    return bytes;
}

bool Installation::has(const std::string& name) const {
    return WindowsFiles().Dir(folder() + "\\" + name) != FileKind::None;
}

void Installation::setIni(const std::string& text) const {
    WindowsFiles().replace(folder() + "\\Tarvik.ini", {text});
}

RunningProgram::RunningProgram(const Installation& installation, const std::string& arguments,
                               std::string mainClass)
    : mainClass_(std::move(mainClass)) {
    std::string line = "\"" + installation.program() + "\" " + arguments;
    STARTUPINFOA how{};
    how.cb = sizeof how;
    PROCESS_INFORMATION started{};
    CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                   installation.folder().c_str(), &how, &started);
    CloseHandle(started.hThread);
    process_ = started.hProcess;
    id_ = started.dwProcessId;
}

RunningProgram::~RunningProgram() {
    if (WaitForSingleObject(process_, 0) == WAIT_TIMEOUT) {
        kill();
    }
    CloseHandle(process_);
}

bool RunningProgram::waitUntil(const std::function<bool()>& condition) {
    const ULONGLONG begin = GetTickCount64();
    while (!condition() && GetTickCount64() - begin < fairWhile) {
        Sleep(10);
    }
    return condition();
}

HWND RunningProgram::mainWindow() const {
    const std::vector<HWND> found = topLevelWindows(mainClass_, id_);
    return found.empty() ? nullptr : found.front();
}

bool RunningProgram::waitForMainWindow() const {
    return waitUntil([this] {
        const HWND window = mainWindow();
        return window != nullptr && IsWindowVisible(window) != FALSE;
    });
}

HWND RunningProgram::control(const std::string& name) const {
    return GetDlgItem(mainWindow(), face::controlId(*numbers_.control(name)));
}

void RunningProgram::click(const std::string& name) const {
    PostMessageA(control(name), BM_CLICK, 0, 0);
}

HWND RunningProgram::shownWindow(const std::string& form) const {
    const std::vector<HWND> found = topLevelWindows(form.c_str(), id_);
    const HWND window = found.empty() ? nullptr : found.front();
    return window != nullptr && IsWindowVisible(window) != FALSE ? window : nullptr;
}

void RunningProgram::clickIn(const Form& form, const std::string& name) const {
    waitUntil([&] { return shownWindow(form.name()) != nullptr; });
    const int id = face::controlId(*form.control(name));
    PostMessageA(GetDlgItem(shownWindow(form.name()), id), BM_CLICK, 0, 0);
}

void RunningProgram::choose(const std::string& name, int place) const {
    const HWND combo = control(name);
    answerOf(combo, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
    answerOf(mainWindow(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
             reinterpret_cast<LPARAM>(combo));
}

bool RunningProgram::answer(const std::string& text, MsgBoxAnswer reply) const {
    return answerOne([&](const std::string& of) { return of == text; }, reply);
}

bool RunningProgram::answerAbout(const std::string& beginning, MsgBoxAnswer reply) const {
    return answerOne([&](const std::string& of) { return of.starts_with(beginning); }, reply);
}

bool RunningProgram::answerOne(const std::function<bool(const std::string&)>& isMeant,
                               MsgBoxAnswer reply) const {
    OpenBox box;
    const bool came = waitUntil([&] {
        box = openBox(id_);
        return box.window != nullptr && isMeant(box.text);
    });
    // A box that has only just come may lose what is sent to it: it is asked until it is gone.
    return came && waitUntil([&] {
               if (IsWindow(box.window) == FALSE || IsWindowVisible(box.window) == FALSE) {
                   return true;
               }
               box.press(reply);
               Sleep(50);
               return false;
           });
}

int RunningProgram::exitCode() const {
    DWORD code = 0;
    const bool ended = WaitForSingleObject(process_, fairWhile) == WAIT_OBJECT_0;
    return ended && GetExitCodeProcess(process_, &code) != FALSE ? static_cast<int>(code) : -1;
}

void RunningProgram::endSession() const {
    const HWND window = mainWindow();
    answerOf(window, WM_QUERYENDSESSION, 0, 0);
    answerOf(window, WM_ENDSESSION, TRUE, 0);
}

void RunningProgram::kill() const {
    TerminateProcess(process_, 99);
    WaitForSingleObject(process_, fairWhile);
}

} // namespace tarvik
