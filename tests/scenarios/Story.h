#pragma once

#include "Driver.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace tarvik::scenarios {

inline constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

/// One user, one face, and the program from its start to its end.
class Story : public testing::Test {
protected:
    Story() {
        for (const char* name : {"Harbour", "Ridge"}) {
            line().entries.push_back({.name = name});
        }
        startWorld();
    }

    ~Story() override {
        endSession();
        EXPECT_EQ(driver->boxTrouble(), "");
        EXPECT_EQ(driver->complaints(), "");
    }

    /// After every end in order the folder holds the INI file, and what the user asked for: what is
    /// counted and set stands in that file, unless a reset left nothing to be stored.
    std::vector<std::string> namesAtEnd() const {
        std::vector<std::string> names = backups;
        names.emplace_back("Tarvik.ini");
        if (resetIsLast) {
            names.emplace_back("Tarvik.journal");
        }
        if (keepsLedger) {
            names.emplace_back("Tarvik.ledger");
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    void endSession() {
        if (world && world->forms.frmMain.loaded()) {
            world->forms.frmMain.unload(UnloadMode::AppWindows);
        }
        const ScriptedFiles& files = driver->machine().files;
        EXPECT_EQ(files.namesIn("C:\\Prog"), namesAtEnd());
        EXPECT_EQ(files.held(), 0);
    }

    ScriptedConnections& line() { return driver->machine().connections; }
    std::string ini() { return driver->machine().files.file(iniPath); }
    void setIni(const std::string& text) { driver->machine().files.setFile(iniPath, text); }

    void startWorld() { world.emplace(driver->platform()); }

    void start() { Main(); }
    void startQuietly() {
        setIni("[Settings]\r\nRefreshInterval=100\r\n");
        start();
    }

    void restart() {
        world.reset();
        driver->machine().instances.endProgram();
        startWorld();
        start();
    }

    void answer(const std::string& text, MsgBoxButtons buttons, MsgBoxAnswer reply) {
        driver->answerNext(text, buttons, reply);
    }

    /// What the face shows equals what the model says, control by control.
    void expectFaceAsModel() {
        EXPECT_EQ(driver->controls("frmMain"), modelControls(world->forms.frmMain));
    }
    void expectFaceAsModel(const Form& form) {
        EXPECT_EQ(driver->controls(form.name()), modelControls(form));
    }

    /// Another amount of bytes received on the only connection, and the tick that sees it.
    void receive(std::uint32_t bytes) {
        RAS_STATS& counters = line().connections.at(0).statistics;
        const std::uint32_t before = counters.dwBytesRcved;
        line().transfer(line().connections[0].handle, bytes, 0, 100);
        EXPECT_TRUE(driver->waitUntil([&] {
            return world->state.BytesRcvdCurrent == Long(static_cast<std::int32_t>(before + bytes));
        }));
    }

    void waitFor(const std::string& control, const std::string& text) {
        EXPECT_TRUE(driver->waitUntil([&] { return driver->read(control) == text; }))
            << control << " reads " << driver->read(control);
    }

    /// Dials and counts 5,000 bytes received and 200 sent in 3 seconds.
    void connectAndTransfer() {
        driver->choose("frmMain.cboConnections", "Ridge");
        driver->click("frmMain.cmdMonitor");
        driver->click("frmMain.cmdConnect");
        ASSERT_EQ(line().connections.size(), 1U);
        line().transfer(line().connections[0].handle, 5000, 200, 3000);
        waitFor("frmMain.txtBytesRcvd", "5,000");
    }

    /// The story ends with totals of nothing, after others were stored.
    bool resetIsLast = false;
    /// The user keeps a ledger.
    bool keepsLedger = false;
    /// Names of the dated copies that the story's resets leave.
    std::vector<std::string> backups;
    std::unique_ptr<Driver> driver = makeDriver();
    std::optional<World> world;
};

} // namespace tarvik::scenarios
