#include "linux/face/DisplayLoss.h"

#include <QString>
#include <QThread>
#include <QtGlobal>

#include <atomic>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace tarvik::face {

namespace {

/// The longest that another thread waits for the one of the user interface, in milliseconds. That
/// one may be in the middle of something; nobody sees the program meanwhile.
constexpr int longestEnd = 30'000;

/// Goes when the thread that filled it calls `exit`: before anything of static lifetime goes, and
/// not when another thread ends the process.
struct AtExit {
    std::function<void()> call;

    AtExit() = default;
    ~AtExit() {
        if (call) {
            call();
        }
    }
    AtExit(const AtExit&) = delete;
    AtExit& operator=(const AtExit&) = delete;
};

thread_local AtExit atExit;

// The handler of messages is a plain function that any thread of the toolkit may call.
std::atomic<DisplayLoss*> watching{nullptr};
std::atomic<QtMessageHandler> previousHandler{nullptr};

/// The toolkit's Wayland side ends the process without running anything that was registered for
/// that, often on a thread of its own. All that comes before is this message.
bool tellsOfTheEnd(const QString& text) {
    return text.startsWith(QLatin1String("The Wayland connection "));
}

void onMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (const QtMessageHandler next = previousHandler.load()) {
        next(type, context, text);
    }
    DisplayLoss* const told = watching.load();
    if (told != nullptr && tellsOfTheEnd(text)) {
        told->tell();
    }
}

} // namespace

DisplayLoss::DisplayLoss() {
    atExit.call = [this] { finish(); };
    watching = this;
    previousHandler = qInstallMessageHandler(onMessage);
}

DisplayLoss::~DisplayLoss() {
    qInstallMessageHandler(previousHandler.exchange(nullptr));
    watching = nullptr;
    atExit.call = nullptr;
}

void DisplayLoss::finishWith(std::function<void()> lost) {
    lost_ = std::move(lost);
}

void DisplayLoss::workIsDone() {
    done_ = true;
    lost_ = nullptr;
    // A thread that told a moment ago waits for events that nobody takes any more.
    wakeUp_.release();
}

void DisplayLoss::tell() {
    if (QThread::currentThread() == thread()) {
        finish();
    }
    if (!done_) {
        QMetaObject::invokeMethod(this, &DisplayLoss::finish, Qt::QueuedConnection);
        wakeUp_.tryAcquire(1, longestEnd);
    }
    if (done_) {
        _exit(EXIT_SUCCESS);
    }
}

void DisplayLoss::finish() {
    // It may be told once more by what runs now.
    if (const std::function<void()> lost = std::exchange(lost_, nullptr)) {
        lost();
    }
    // Nothing of the toolkit may run any more, and other threads may still be at work.
    _exit(EXIT_SUCCESS);
}

} // namespace tarvik::face
