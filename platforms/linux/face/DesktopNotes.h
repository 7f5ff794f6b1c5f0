#pragma once

#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

namespace tarvik::face {

/// Notes that the desktop shows by its notification service. A new one takes the place of the one
/// before, if that is still seen.
class DesktopNotes : public QObject {
public:
    /// False where the desktop shows none; else it is on its way. Plain text; the lines of the text
    /// are kept.
    bool show(const QString& title, const QString& text, int milliseconds);

private:
    void takeNumber(QDBusPendingCallWatcher* answer);

    unsigned last_ = 0; ///< the service's number of the last note
};

} // namespace tarvik::face
