#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace tarvik::face {

/// Watches for a panel that shows StatusNotifier items, by the name that its program has on the
/// session bus: one that is there, one that comes later, one that goes and comes back. Only the bus
/// itself is asked, and a mute one is not waited for: it is not known then which panel there is,
/// until it says so.
class ItemPanelWatch : public QObject {
public:
    /// `changed` is called whenever a panel has come, gone, or taken another one's place, and when
    /// it becomes known whether there is one.
    explicit ItemPanelWatch(std::function<void()> changed);

    bool panelIsThere() const { return panel_ == Panel::There; }
    /// Nobody has the name, nor would the bus start a program for a call to it: who asks for it
    /// waits for nobody.
    bool nobodyIsThere() const { return panel_ == Panel::None; }

    /// A call to whichever panel is there; its program is not started for it.
    static QDBusMessage callToPanel(const QString& method);
    /// The question for what the panel's program says of itself.
    static QDBusMessage questionForMethods();
    /// The question whether anything shows the items: the name may be that of a program which only
    /// keeps the list of them.
    static QDBusMessage questionForHost();
    /// Tells the receiver's slot when something that shows items comes.
    static void tellOfHosts(QObject* receiver, const char* slot);

private:
    enum class Panel { Unknown, None, There };

    Panel panelAt(bool owned) const;
    void lookForPanel();
    void askAgain();
    void startPanel();
    void giveUpStarting();

    std::function<void()> changed_;
    QDBusServiceWatcher names_;
    Panel panel_ = Panel::Unknown;
    bool startable_ = false;
    int starts_ = 0;
};

} // namespace tarvik::face
