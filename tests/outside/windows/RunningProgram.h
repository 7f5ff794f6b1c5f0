#pragma once

#include "forms/frmMain.h"
#include "support/TemporaryFolder.h"
#include "support/Win32Windows.h"

#include <functional>
#include <string>

namespace tarvik {

/// A folder with a copy of a program of its own; gone at its end.
class Installation {
public:
    explicit Installation(const std::string& program);

    const std::string& folder() const { return folder_.path(); }
    std::string program() const { return folder() + "\\" + program_; }
    /// The INI file's bytes; empty when there is none.
    std::string ini() const { return content("Tarvik.ini"); }
    /// The bytes of a file of that name; empty when there is none.
    std::string content(const std::string& name) const;
    bool has(const std::string& name) const;
    void setIni(const std::string& text) const;

private:
    std::string program_;
    TemporaryFolder folder_;
};

/// A running program, worked through its windows. What is still running at the end is ended hard.
class RunningProgram {
public:
    /// `mainClass` is the class of its main window.
    explicit RunningProgram(const Installation& installation, const std::string& arguments = {},
                            std::string mainClass = "frmMain");
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    HANDLE process() const { return process_; }
    /// The main window; null when there is none.
    HWND mainWindow() const;
    bool waitForMainWindow() const;
    /// A control of the main window.
    HWND control(const std::string& name) const;
    std::string read(const std::string& name) const { return textOf(control(name)); }
    /// Presses a button; returns before its work is done.
    void click(const std::string& name) const;
    /// The same in another window, which need not be open yet. The form only tells names and
    /// numbers.
    void clickIn(const Form& form, const std::string& name) const;
    /// The window of that form while it is shown, null otherwise.
    HWND shownWindow(const std::string& form) const;
    /// Chooses an entry of a list by its place.
    void choose(const std::string& name, int place) const;

    /// Waits for the box of that text and answers it; false when it does not come.
    bool answer(const std::string& text, MsgBoxAnswer reply) const;
    /// The same with a box whose text begins so.
    bool answerAbout(const std::string& beginning, MsgBoxAnswer reply) const;
    /// Waits until the program has ended; its exit code, or -1 when it does not end.
    int exitCode() const;
    /// Ends it as the user's session ends.
    void endSession() const;
    /// Ends it without a word, as a crash would.
    void kill() const;

    static bool waitUntil(const std::function<bool()>& condition);

private:
    bool answerOne(const std::function<bool(const std::string&)>& isMeant,
                   MsgBoxAnswer reply) const;

    std::string mainClass_;
    // Nobody shows it: the numbers of its controls are those of the program's.
    FrmMain numbers_;
    HANDLE process_ = nullptr;
    DWORD id_ = 0;
};

} // namespace tarvik
