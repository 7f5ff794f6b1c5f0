#include "support/YearsOfDays.h"

#include "scripted/ScriptedPlatform.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <random>

namespace tarvik {

namespace {

constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

/// Whoever uses the program every day.
class User {
public:
    User() {
        machine_.connections.entries = {{.name = "Ridge"}};
        machine_.files.setFile(iniPath, "[Settings]\r\nTransferResetEnable=1\r\nTransferReset=8\r\n"
                                        "TransferResetLast=1.1.2024\r\nLogIPAddress=1\r\n");
        machine_.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Ok; };
    }

    void spendDay(int day) {
        machine_.clock.now = Date(Date::fromCivil({2024, 1, 1, 19, 0, 0}).serial() + day);
        pass(0, 5400);
        const auto last = static_cast<char>(upTo(1, 30));
        machine_.sockets.host = {
            .h_name = "home", .h_length = 4, .h_addr_list = {{'\x0A', '\0', '\0', last}}};
        World world(machine_.platform);
        Main();
        FrmMain& window = world.forms.frmMain;
        window.cboConnections.setListIndex(0);
        window.cmdMonitor.press();
        window.cmdConnect.press();
        for (int i = 0; i < 3; ++i) {
            transferSome();
            window.timUpdateStats.fire();
        }
        window.cmdDisconnect.press();
        window.timUpdateStats.fire();
        window.cmdMonitor.press();
        window.cmdQuit.press();
    }

    std::string ini() { return machine_.files.file(iniPath); }

private:
    std::uint32_t upTo(std::uint32_t least, std::uint32_t most) {
        return least + static_cast<std::uint32_t>(chance_() % (most - least + 1));
    }

    void pass(std::uint32_t least, std::uint32_t most) {
        machine_.clock.advanceSeconds(upTo(least, most));
    }

    void transferSome() {
        const std::uint32_t seconds = upTo(20, 2400);
        machine_.connections.transfer(machine_.connections.connections.at(0).handle,
                                      upTo(10'000, 30'000'000), upTo(1'000, 2'000'000),
                                      seconds * 1000);
        machine_.clock.advanceSeconds(seconds);
    }

    ScriptedPlatform machine_;
    std::minstd_rand chance_{7};
};

} // namespace

std::string iniAfterDays(int days) {
    User user;
    for (int day = 0; day < days; ++day) {
        user.spendDay(day);
    }
    return user.ini();
}

} // namespace tarvik
