#pragma once

#include "linux/face/ItemMenu.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QIcon>
#include <QTimer>

#include <functional>
#include <memory>

namespace tarvik::face {

/// The program's item for a panel that shows StatusNotifier items and opens their menus by itself.
///
/// The panel's program is asked, never waited for: one that does not answer has not taken the item.
class StatusNotifierItem : public QDBusVirtualObject {
public:
    /// What becomes of the item.
    struct Events {
        std::function<void()> activated; ///< the user has clicked it
        std::function<void()> taken;     ///< a panel has taken it, and shows it
        std::function<void()> refused;   ///< it was offered, and nothing shows it
    };

    /// `menu` must outlive this.
    StatusNotifierItem(QMenu& menu, Events events);
    ~StatusNotifierItem() override;

    /// Offers the item to the panel that is there now; it has not taken it until it says so.
    void offer();
    /// Gives a panel that answers at once the time for it, so many milliseconds at most.
    void allowTime(int milliseconds);
    bool isTaken() const { return isTaken_; }
    /// The panel's program has said at once that nothing shows items, and what it knows to answer:
    /// the same questions, asked once more, hold nobody up.
    bool isRefusedAtOnce() const;

    void show(const QIcon& icon, const QString& tip);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    using Answer = std::unique_ptr<QDBusPendingCallWatcher>;

    Answer ask(const QDBusMessage& call);
    void offerToHost();
    bool isAnswered() const;
    bool hasHost() const;
    bool isAccepted() const;
    void noteAnswers();
    void settle();
    void click();
    QVariantMap properties() const;
    void tell(const QString& signal);

    QDBusConnection bus_;
    QString name_;
    ItemMenu menu_;
    Events events_;
    Answer offer_;   ///< the panel's answer
    Answer host_;    ///< whether anything shows items
    Answer methods_; ///< what the panel's program knows to answer
    QElapsedTimer offered_;
    qint64 answeredAfter_ = 0; ///< milliseconds until the last of the answers; 0 while one lacks
    QTimer hostCame_;          ///< runs out at once when something that shows items has come
    QTimer offerLater_;        ///< the last offer was a moment ago
    QIcon icon_;
    QString tip_;
    bool isTaken_ = false;
    bool clickWaits_ = false; ///< for the panel's answers
};

} // namespace tarvik::face
