#include "startup/mdlStartUp.h"

#include "connection/mdlCode.h"
#include "forms/Forms.h"
#include "monitor/mdlCodeToggle.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "settings/Setting.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsJournal.h"
#include "startup/mdlSingleInstance.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Text.h"
#include "ui/mdlGUI.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlGUIWindows.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

namespace {

constexpr int maxArgs = 10;

bool userWantsAnotherInstance() {
    return MsgBox(std::string("Warning: Another instance of Velmars Tarvik seems to be running.") +
                      CR + "Are you sure that you want to start another instance?" + CR +
                      "(This could cause the protocol file to become corrupt!)",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

void loadForms() {
    Forms& f = forms();
    f.frmMain.load();
    f.frmHistory.load();
    f.frmOptions.load();
    f.frmStatistics.load();
    f.frmWarning.load();
}

void startRunning() {
    FrmMain& main = forms().frmMain;
    main.setVisible(true);
    main.bringToFront();
    if (state().StartUpRunMonitoring != 0 || state().ArgRun) {
        ToggleMonitoringActive(true);
    }
    if (state().StartUpMinimise != 0 || state().ArgMinimise) {
        ToggleFormVisibility(main, false);
    }
}

bool userRunsAnyway(bool enumerationFailed) {
    std::string text = std::string("Error: The following errors occured during initialisation:") +
                       CR + "- Obtaining available connections failed." + CR +
                       "  (No RAS connections seem to be setup on this system.)";
    if (enumerationFailed) {
        text += std::string(CR) + "- Enumerating RAS connections failed." + CR +
                "  (OS may not support function needed to operate.)";
    }
    text += std::string(CR) + CR + "A lot of functionality will not work therefore." + CR +
            "The program maybe in an inoperatable state." + CR + CR +
            "Press OK to shutdown the application or Cancel to run anyway.";
    return MsgBox(text, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical) == MsgBoxAnswer::Cancel;
}

void writeDefaults() {
    State& s = state();
    s.RasConnections.clear();
    s.HostName.clear();
    s.IPAddress.clear();
    s.TickerBase = 0;
    s.LimitWarningArmed = true;
    setDefaults(s, platform().locale.data());
    s.MonitoringActive = false;
    s.ConnectionActive = false;
    s.FirstOnlineUpdate = true;
    s.DialInStarted = false;
}

/// The command line as the arguments are cut from it, one character at a time.
class ArgumentReader {
public:
    ArgumentReader(bool quoteAware, std::size_t maxCount)
        : quoteAware_(quoteAware), maxCount_(maxCount) {}

    /// False when the argument that this character begins would be one too many.
    bool take(char character) {
        const bool quote = quoteAware_ && character == '"';
        if (quote) {
            insideQuotes_ = !insideQuotes_;
        }
        if ((character == ' ' || character == '\t') && !insideQuotes_) {
            insideArgument_ = false;
            return true;
        }
        if (!insideArgument_) {
            if (arguments_.size() - 1 == maxCount_) {
                return false;
            }
            arguments_.emplace_back();
            insideArgument_ = true;
        }
        if (!quote) {
            arguments_.back() += character;
        }
        return true;
    }

    std::vector<std::string> arguments() && { return std::move(arguments_); }

private:
    bool quoteAware_;
    std::size_t maxCount_;
    bool insideQuotes_ = false;
    bool insideArgument_ = false;
    std::vector<std::string> arguments_{1};
};

/// False for a switch that the program does not know.
bool applySwitch(const std::string& argument) {
    const std::string upper = upperCase(argument);
    if (upper == "/H" || upper == "/HELP" || argument == "/?") {
        state().ArgHelp = true;
    } else if (upper == "/RUN" || upper == "/R") {
        state().ArgRun = true;
    } else if (upper == "/M" || upper == "/MIN") {
        state().ArgMinimise = true;
    } else {
        return false;
    }
    return true;
}

} // namespace

void Main() {
    guarded("Main", [] {
        state().OnlyInstance = RegisterApp();
        const bool locked = GetLocked();
        if ((!state().OnlyInstance || locked) && !userWantsAnotherInstance()) {
            return;
        }
        if (!SetLocked(true)) {
            MsgBox("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
        loadForms();
        InitArgs();
        OperateArgs();
        if (InitApplication()) {
            startRunning();
        } else {
            forms().frmMain.unload();
        }
    });
}

std::vector<std::string> ParseArgs(bool QuoteAware, int MaxArgs) {
    return guarded("ParseArgs", std::vector<std::string>(), [&](std::vector<std::string>& result) {
        ArgumentReader reader(QuoteAware, static_cast<std::size_t>(MaxArgs));
        for (const char character : platform().program.commandLine()) {
            if (!reader.take(character)) {
                break;
            }
        }
        result = std::move(reader).arguments();
    });
}

void InitArgs() {
    guarded("InitArgs", [] {
        std::string invalid;
        for (const std::string& argument : ParseArgs(true, maxArgs)) {
            if (!applySwitch(argument)) {
                invalid = invalid.empty() ? argument : invalid + CR + argument;
            }
        }
        if (!invalid.empty()) {
            MsgBox(std::string("Warning:") + CR + "Invalid command-line switches detected:" + CR +
                       invalid + CR + "Try /? or /h for help.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
        }
    });
}

void OperateArgs() {
    guarded("OperateArgs", [] {
        if (state().ArgHelp) {
            MsgBox(std::string("Available command-line arguments:") + CR + CR + "/?, /h, /help" +
                       CR + "\t- Show this help" + CR + "/m, /min" + CR +
                       "\t- Minmise after startup" + CR + "/r, /run" + CR + "\t- Run after startup",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
        }
    });
}

bool InitApplication() {
    return guarded("InitApplication", false, [](bool& result) {
        if (state().AppInitialised) {
            return;
        }
        const bool connectionsFailed = !PreInitGUI();
        InitApplicationStatus();
        InitGUI();
        AddToSysTray(TrayState::NotMonitoring, TrayState::NotMonitoring);
        TellOfJournal();
        std::uint32_t count = 0;
        const bool enumerationFailed = InitRas(0, count) != 0;
        if (connectionsFailed && !userRunsAnyway(enumerationFailed)) {
            return;
        }
        state().AppInitialised = true;
        result = true;
    });
}

void InitApplicationStatus() {
    guarded("InitApplicationStatus", [] {
        writeDefaults();
        ResetTransfers(true);
        const bool loaded = LoadState();
        // Before the box: the user's session may end at it, and what is saved then is what stands
        // here.
        RestoreFromJournal();
        if (loaded) {
            UpdateGUI();
        } else {
            MsgBox(std::string("Warning: Old settings could not be loaded.") + CR +
                       "Assuming first run.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
        }
    });
}

} // namespace tarvik
