#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// The record of one icon in the notification area; 488 bytes with balloons, of which the oldest
/// form has the first 88 (its tip then ends after 64 characters).
struct NOTIFYICONDATAA {
    static constexpr std::uint32_t size = 488;
    static constexpr std::uint32_t oldestSize = 88;
    std::uint32_t cbSize;
    std::uint32_t hWnd; ///< identifies the picture that receives the icon's mouse messages
    std::uint32_t uID;
    std::uint32_t uFlags;
    std::uint32_t uCallbackMessage;
    std::uint32_t hIcon; ///< an `iconNumber`; any other shows the first icon
    char szTip[128];
    std::uint32_t dwState;
    std::uint32_t dwStateMask;
    char szInfo[256];
    std::uint32_t uTimeoutOrVersion; ///< milliseconds with an info text, else the version
    char szInfoTitle[64];
    std::uint32_t dwInfoFlags; ///< 1: information
};
static_assert(sizeof(NOTIFYICONDATAA) == NOTIFYICONDATAA::size);

/// The three icons the program shows in the notification area.
enum class TrayIcon : std::uint32_t { imgSysTray = 0, imgSysTrayOnline = 1, imgSysTrayOffline = 2 };

/// What an icon bears over its lower right corner: nothing, a small hollow mark, or a full one with
/// a bar in it.
enum class TrayMark : std::uint32_t { None = 0, First = 1, Last = 2 };

/// The number of an icon that bears a mark; without one, the icon's own value.
constexpr std::uint32_t iconNumber(TrayIcon icon, TrayMark mark) {
    constexpr std::uint32_t icons = 3;
    return static_cast<std::uint32_t>(icon) + icons * static_cast<std::uint32_t>(mark);
}

/// A note that the user can answer.
struct DesktopNote {
    enum class Urgency : std::uint8_t { Low = 0, Normal = 1, Critical = 2 };

    std::string title;
    std::string text; ///< a carriage return separates lines
    Urgency urgency = Urgency::Normal;
    std::vector<std::string> buttons =
        {}; ///< captions; not shown where the desktop's notes have none

    friend bool operator==(const DesktopNote&, const DesktopNote&) = default;
};

/// The notification area of the task bar.
class NotificationArea {
public:
    /// Requests of `Shell_NotifyIconA`.
    enum Message : std::uint32_t { add = 0, modify = 1, remove = 2, setVersion = 4 };
    /// Bits of the record's flags: which of its fields count.
    enum Flag : std::uint32_t { message = 1, icon = 2, tip = 4, info = 16 };

    virtual ~NotificationArea() = default;

    /// Adds, changes or removes an icon; true when it was done. False where the desktop has no
    /// notification area. An icon's mouse messages (514 left, 517 right button released) arrive as
    /// mouse moves of the picture that the record names.
    virtual bool Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) = 0;

    /// The answer of who clicks on a note itself, not on one of its buttons.
    static constexpr int noteClicked = -1;

    /// Shows a note, beside the icon or wherever the desktop shows notes; it takes the place of the
    /// note before, of whichever kind. False where the desktop shows none. `answered` is called by
    /// the thread of the windows, once at most and never before this returns, with `noteClicked` or
    /// the number of a button: as long as the note is there, no other note has taken its place and
    /// the icon was not removed. What is answered while a box is open is dropped.
    virtual bool tell(const DesktopNote& note, std::function<void(int)> answered) = 0;

    /// Brings a form's window to the foreground, so that a menu opened next is closed by a click
    /// elsewhere.
    virtual bool SetForegroundWindow(std::uint32_t window) = 0;

    /// The platform's version word: major version in the low byte, minor in the next, the top bit
    /// clear on the family whose major version 5 and later show balloons.
    virtual std::uint32_t GetVersion() = 0;
};

} // namespace tarvik
