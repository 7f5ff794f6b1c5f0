#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

namespace tarvik::face {

/// Turns the signals that ask a process to end (SIGTERM, SIGINT, SIGHUP) into a call on the
/// user-interface thread. One object at a time.
class EndSignals : public QObject {
public:
    explicit EndSignals(std::function<void()> ended);
    ~EndSignals() override;

private:
    std::function<void()> ended_;
    QSocketNotifier* notifier_ = nullptr;
};

} // namespace tarvik::face
