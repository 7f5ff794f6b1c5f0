#include "common/TrayLamp.h"

namespace tarvik::face {

LampState lampOf(TrayIcon icon) {
    switch (icon) {
    case TrayIcon::imgSysTrayOnline:
        return LampState::Online;
    case TrayIcon::imgSysTrayOffline:
        return LampState::Waiting;
    case TrayIcon::imgSysTray:
        break;
    }
    return LampState::NotMonitoring;
}

} // namespace tarvik::face
