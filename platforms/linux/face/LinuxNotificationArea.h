#pragma once

#include "linux/face/DesktopNotes.h"
#include "linux/face/TrayMenu.h"
#include "ports/NotificationArea.h"

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace tarvik::face {

class QtDesktop;

/// The icon in the desktop's panel, as a StatusNotifier item or, where no panel asks for such, as a
/// small window embedded in the panel; notes go by the desktop's notification service.
///
/// A panel that shows StatusNotifier items opens the menu by itself: it gets the menu of the form
/// in which the icon's picture stands. Elsewhere the right button is told like the left one.
class LinuxNotificationArea : public QObject, public NotificationArea {
public:
    explicit LinuxNotificationArea(QtDesktop& desktop);
    ~LinuxNotificationArea() override;

    bool Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) override;
    bool SetForegroundWindow(std::uint32_t window) override;
    /// A system that shows notes.
    std::uint32_t GetVersion() override { return 5; }

private:
    /// Makes the icon if there is none, and shows what the record says; true where a panel has it.
    bool showIcon(const NOTIFYICONDATAA& data);
    bool showNote(const NOTIFYICONDATAA& data);
    bool removeIcon();
    void makeIcon();
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    void choose(int entry);
    void tellPicture(int mouseMessage);

    QtDesktop& desktop_;
    DesktopNotes notes_;
    std::uint32_t picture_ = 0; ///< receives the icon's mouse messages
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::unique_ptr<TrayMenu> menu_; ///< null where the panel opens no menu by itself
};

} // namespace tarvik::face
