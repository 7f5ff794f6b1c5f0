#pragma once

#include "scripted/ScriptedPlatform.h"
#include "wiring/World.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// A test with a machine of its own and a fresh world on it. A box that the test did not announce,
/// or that did not come, fails it.
class WorldTest : public testing::Test {
protected:
    WorldTest();
    ~WorldTest() override;

    static constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

    ScriptedPlatform machine;
    std::optional<World> world{machine.platform};

    State& state() { return world->state; }
    FrmMain& frmMain() { return world->forms.frmMain; }
    FrmOptions& frmOptions() { return world->forms.frmOptions; }
    FrmSysTray& frmSysTray() { return world->forms.frmSysTray; }

    /// Announces the next box.
    void expectBox(std::string text, MsgBoxButtons buttons, MsgBoxIcon icon,
                   MsgBoxAnswer answer = MsgBoxAnswer::Ok, std::function<void()> meanwhile = {});
    /// Announces an error report: OK, critical.
    void expectError(const std::string& numberAndDescription, const std::string& procedure,
                     std::function<void()> meanwhile = {});
    /// Announces a notice with OK and the exclamation or the critical icon.
    void expectWarning(std::string text);
    void expectFailure(std::string text);

    /// Announces the question whether to start beside another instance.
    void expectInstanceQuestion(MsgBoxAnswer answer = MsgBoxAnswer::Yes,
                                std::function<void()> meanwhile = {});
    /// Announces the two boxes of a first run.
    void expectFirstRunBoxes();
    /// Announces the question about a session that was running before, with its answer.
    void expectSessionQuestion(const std::string& bytes, MsgBoxAnswer answer);
    /// Announces the question about stopping within a session, with its answer.
    void expectStopQuestion(MsgBoxAnswer answer);

    std::string ini() const { return machine.files.file(iniPath); }
    void setIni(std::string text) { machine.files.setFile(iniPath, std::move(text)); }

    /// Puts entries into the phone book.
    void phoneBook(std::initializer_list<const char*> names);
    /// Runs `Main` with that command line.
    void start(const std::string& commandLine = {});
    /// The same with one entry in the phone book and an INI file, so that no box comes.
    void startQuietly(const std::string& commandLine = {});
    /// Throws the world away, as a crash would, and makes a new one on the same machine.
    void newWorld();
    /// The script of the line.
    ScriptedConnections& line() { return machine.connections; }
    /// A connection that the program counts from its beginning.
    std::uint32_t dialledConnection(const std::string& entry = "Harbour");
    void setTotals(Currency sent, Currency rcvd, Currency duration);
    /// The notes that were shown, in their order.
    std::vector<std::string> notes() const;
    /// One tick of monitoring.
    void tick() { frmMain().timUpdateStats.fire(); }
};

} // namespace tarvik
