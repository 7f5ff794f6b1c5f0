#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <functional>

namespace tarvik {

/// Lets the event loop work until the condition holds; whether it did in time.
inline bool spinUntil(const std::function<bool()>& condition) {
    QElapsedTimer passed;
    passed.start();
    while (!condition() && passed.elapsed() < 60'000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return condition();
}

/// Lets the event loop take what is queued by now.
inline bool takeQueued() {
    bool taken = false;
    QMetaObject::invokeMethod(
        qApp, [&] { taken = true; }, Qt::QueuedConnection);
    return spinUntil([&] { return taken; });
}

} // namespace tarvik
