#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace tarvik::face {

/// Watches for a panel that shows StatusNotifier items, by the name that its program has on the
/// session bus: one that is there, one that comes later, one that goes and comes back. Only the bus
/// itself is asked.
class ItemPanelWatch : public QObject {
public:
    /// `changed` is called whenever a panel has come, gone, or taken another one's place.
    explicit ItemPanelWatch(std::function<void()> changed);

    bool panelIsThere() const { return panelIsThere_; }

    /// A call to whichever panel is there; its program is not started for it.
    static QDBusMessage callToPanel(const QString& method);
    /// The question whether anything shows the items: the name may be that of a program which only
    /// keeps the list of them.
    static QDBusMessage questionForHost();
    /// Tells the receiver's slot when something that shows items comes.
    static void tellOfHosts(QObject* receiver, const char* slot);

private:
    QDBusServiceWatcher names_;
    bool panelIsThere_ = false;
};

} // namespace tarvik::face
