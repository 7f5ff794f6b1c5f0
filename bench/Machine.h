#pragma once

#include "FaceUnderTest.h"
#include "common/ProfileEngine.h"
#include "scripted/ScriptedPlatform.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace tarvik {

/// The median of several runs.
inline double milliseconds(const std::function<void()>& work) {
    constexpr int runs = 7;
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

inline void row(const std::string& measure, double own, double floor,
                const std::string& floorName) {
    std::cout << measure << '\t' << own << '\t' << floor << '\t' << floorName << '\n';
}

/// A machine whose files are the face's and whose other services are played, with a world on it.
class Machine {
public:
    explicit Machine(const std::string& folder) {
        scripted_.program.folderPath = folder;
        scripted_.program.separator =
            std::filesystem::path::preferred_separator == '/' ? '/' : '\\';
        scripted_.connections.entries = {{.name = "Line"}, {.name = "Ridge"}, {.name = "Harbour"}};
        scripted_.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
        Main();
    }

    State& state() { return world_.state; }
    Forms& forms() { return world_.forms; }
    Timer& timer() { return world_.forms.frmMain.timUpdateStats; }

    /// Lines that the program watches.
    void goOnline(const std::vector<std::string>& lines) {
        world_.forms.frmMain.cmdMonitor.press();
        state().DialInStarted = true;
        for (const std::string& line : lines) {
            handles_.push_back(scripted_.connections.connect(line));
        }
    }
    /// A tenth of a second goes by, in which each of them carries something.
    void transfer() {
        constexpr std::uint32_t tenth = 100; // milliseconds
        scripted_.clock.advanceSeconds(0.1);
        for (const std::uint32_t handle : handles_) {
            scripted_.connections.transfer(handle, 15'001, 2'003, tenth);
        }
    }

private:
    ScriptedPlatform scripted_;
    FaceFiles files_;
    ProfileEngine profile_{files_, endOfLine};
    Platform platform_ = scripted_.withFiles(profile_, files_);
    World world_{platform_};
    std::vector<std::uint32_t> handles_;
};

} // namespace tarvik
