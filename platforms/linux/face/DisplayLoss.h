#pragma once

#include <QObject>
#include <QSemaphore>

#include <atomic>
#include <functional>

namespace tarvik::face {

/// Lets the program finish its work when the display goes away before it: the X server or the
/// Wayland compositor ends, as at many a log-out. The toolkit then ends the process, on X11 with
/// `exit` and on Wayland at once; without this nothing would be saved. One object at a time, which
/// is made before the toolkit's application and goes after it: the display may also be lost while
/// the application is being put away.
class DisplayLoss : public QObject {
public:
    /// Made on the thread of the user interface.
    DisplayLoss();
    ~DisplayLoss() override;

    /// From now on `lost` runs, on the thread of the user interface, when the display is lost, or
    /// when that thread calls `exit` for any other reason. It must not touch the toolkit's windows.
    /// The process ends as soon as it returns, with 0: the user's session ended and everything was
    /// done.
    void finishWith(std::function<void()> lost);

    /// The work is done: a loss from now on ends the process, with 0, and that is all.
    void workIsDone();

    /// What the toolkit says right before it ends the process, on any thread; returns only when the
    /// user-interface thread could not be reached in time.
    void tell();

private:
    [[noreturn]] void finish();

    std::function<void()> lost_;
    std::atomic<bool> done_{false};
    QSemaphore wakeUp_; ///< what another thread waits for while the process ends
};

} // namespace tarvik::face
