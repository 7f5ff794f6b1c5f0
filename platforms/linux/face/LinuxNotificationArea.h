#pragma once

#include "linux/face/DesktopNotes.h"
#include "linux/face/ItemPanelWatch.h"
#include "linux/face/StatusNotifierItem.h"
#include "linux/face/TrayMenu.h"
#include "ports/NotificationArea.h"

#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace tarvik::face {

class QtDesktop;

/// The icon in the desktop's panel, as a StatusNotifier item or, where no panel asks for such, as a
/// small window embedded in the panel; notes go by the desktop's notification service.
///
/// A panel that shows StatusNotifier items may come, go and come back at any time. It opens the
/// menu by itself: it gets the menu of the form in which the icon's picture stands. Elsewhere the
/// right button is told like the left one.
class LinuxNotificationArea : public QObject, public NotificationArea {
public:
    explicit LinuxNotificationArea(QtDesktop& desktop);
    ~LinuxNotificationArea() override;

    bool Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) override;
    bool tell(const DesktopNote& note, std::function<void(int)> answered) override;
    bool SetForegroundWindow(std::uint32_t window) override;
    /// A system that shows notes.
    std::uint32_t GetVersion() override { return 5; }

private:
    bool addIcon(const NOTIFYICONDATAA& data);
    /// Shows what the record says; true where a panel has the icon.
    bool showIcon(const NOTIFYICONDATAA& data);
    /// Shows what the last record said.
    void showLast();
    bool showNote(const NOTIFYICONDATAA& data);
    /// The panel itself can show a note beside an icon that is embedded in it.
    bool panelShowsNotes() const;
    void forgetAnswers();
    bool removeIcon();
    bool isAdded() const { return panels_ != nullptr; }
    /// Makes what suits the panel that is there now.
    void followPanel();
    void makeIcon();
    bool iconWaitsForNobody() const;
    void showIconBesideItem();
    void makeItem();
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    void choose(int entry);
    void tellPicture(int mouseMessage);

    QtDesktop& desktop_;
    DesktopNotes notes_;
    std::function<void(int)> balloonAnswered_; ///< of the note that the panel shows
    std::uint32_t picture_ = 0;                ///< receives the icon's mouse messages
    std::optional<std::uint32_t> which_;       ///< which icon the last record showed
    std::optional<std::uint32_t> shownIcon_;
    QIcon iconImage_; ///< what `shownIcon_` looks like
    QString tip_;
    std::unique_ptr<ItemPanelWatch> panels_;   ///< null while no icon was added
    std::unique_ptr<QSystemTrayIcon> icon_;    ///< null where a panel has taken the item
    bool iconWasMade_ = false;                 ///< once, whether or not it is still there
    std::unique_ptr<TrayMenu> menu_;           ///< of the item
    std::unique_ptr<StatusNotifierItem> item_; ///< null where no panel shows items
};

} // namespace tarvik::face
