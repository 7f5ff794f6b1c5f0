#pragma once

#include "controls/Form.h"
#include "ports/NotificationArea.h"
#include "types/PlanKey.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// A note that waits to be shown.
struct NoteToTell {
    DesktopNote note;
    std::function<void(int)> answered; ///< none for one that is not to be answered
};

/// Owner of the icon in the notification area; it never shows a window, only its pop-up menu.
class FrmSysTray : public Form {
public:
    /// Positions in the pop-up menu.
    enum Entry {
        showHide = 0,
        monitoring = 1,
        connect = 3,
        disconnect = 4,
        quit = 6,
        extendToday = 7, ///< only while a plan is on, as the next one
        extendPeriod = 8
    };

    FrmSysTray() : Form("frmSysTray", "") {}

    /// Receives the icon's mouse messages.
    Picture picSysTrayHook{*this, "picSysTrayHook"};

    Menu mnuPopUp{*this,
                  "mnuPopUp",
                  "mnuPopUpEntry",
                  {"Show/Hide", "Start Monitoring", Menu::separator, "Connect", "Disconnect",
                   Menu::separator, "Quit"}};

    /// The desktop shows balloon notes.
    bool balloonSupport = false;
    /// Notes that the desktop has not shown yet, the oldest first; since when it has been asked for
    /// the last time, steady milliseconds.
    std::vector<NoteToTell> notesToTell;
    std::uint64_t notesTriedAt = 0;
    /// The user has been told that a main window put aside is only minimised.
    bool minimisingTold = false;
    /// What icon and tip told last.
    std::uint8_t iconState = 0;
    std::uint8_t tipState = 0;
    /// What they told of the plans: the tip's second line, and the icon's mark.
    std::string planTip;
    TrayMark planMark = TrayMark::None;
    /// The plan that its menu can extend, if any.
    PlanKey plan;
};

} // namespace tarvik
