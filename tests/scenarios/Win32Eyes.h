#pragma once

#include "windows/services/SystemHeader.h"

#include <map>
#include <string>
#include <vector>

namespace tarvik::scenarios {

/// Looks at the windows of this thread as a person does and notes what is wrong with them. One at a
/// time.
class Win32Eyes {
public:
    Win32Eyes();
    ~Win32Eyes();
    Win32Eyes(const Win32Eyes&) = delete;
    Win32Eyes& operator=(const Win32Eyes&) = delete;

    /// The user acts in that window from now on; null: in none.
    void userActsIn(HWND window) { actor_ = window; }
    /// The user gives windows other sizes: how large they are now is how they have to stay.
    void acceptSizes() { compareSizes(false); }

    /// Looks at what must hold whenever everything that waited was handled: nothing but the user
    /// changes the size of a window, and the window he works in has the keyboard somewhere.
    void look();
    /// Looks at a box that has just opened: it stands before the window that asked.
    void lookAtBox(HWND box);

    /// Everything noted since the last call, and what is wrong with the controls that are seen now
    /// and look otherwise than when they were looked at last: texts that are cut, and disabled ones
    /// that do not look so. Empty when nothing is.
    std::string complaints();

private:
    /// What a control looks like follows from this.
    struct Look {
        std::string text;
        LONG style = 0;
        RECT place{};

        bool operator==(const Look& other) const;
    };

    struct Room {
        SIZE size{};
        int labels = 0; ///< of the main window, that are seen
    };

    static LRESULT CALLBACK onEvent(int code, WPARAM first, LPARAM second);
    void compareSizes(bool complain);
    std::vector<HWND> windowsThatMayAsk() const;
    bool looksOtherwise(HWND control);

    static Win32Eyes* current;
    HHOOK hook_ = nullptr;
    std::map<HWND, Room> rooms_;
    std::map<HWND, Look> looks_;
    HWND actor_ = nullptr;
    HWND active_ = nullptr; ///< the last window that was
    std::string noted_;
};

} // namespace tarvik::scenarios
