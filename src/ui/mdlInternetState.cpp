#include "ui/mdlInternetState.h"

#include "forms/Forms.h"
#include "ports/Clock.h"
#include "ports/InternetState.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "types/Convert.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik {

namespace {

void showFlag(CheckBox& box, std::uint32_t flags, InternetState::Flag flag) {
    box.setValue((flags & flag) != 0 ? 1 : 0);
}

void showConnectionName() {
    constexpr std::uint32_t size = 512;
    std::array<char, size + 1> buffer{};
    std::uint32_t flags = 0;
    if (!platform().internet.InternetGetConnectedStateExA(&flags, buffer.data(), size, 0)) {
        return;
    }
    const std::string_view text(buffer.data(), buffer.size());
    const std::size_t end = text.find('\0');
    forms().frmStatistics.txtConnectionName.setText(
        end == std::string_view::npos ? "(not obtained)" : std::string(text.substr(0, end)));
}

} // namespace

void SetConnectedState() {
    guarded("SetConnectedState", [] {
        FrmStatistics& w = forms().frmStatistics;
        std::uint32_t flags = 0;
        const bool connected = platform().internet.InternetGetConnectedState(&flags, 0);
        w.chkConnected.setValue(connected ? 1 : 0);
        showFlag(w.chkConnectionConfigured, flags, InternetState::configured);
        showFlag(w.chkModemUsed, flags, InternetState::modem);
        showFlag(w.chkLANUsed, flags, InternetState::lan);
        showFlag(w.chkProxyUsed, flags, InternetState::proxy);
        showFlag(w.chkRASUsed, flags, InternetState::rasInstalled);
        showFlag(w.chkOffline, flags, InternetState::offline);
        showFlag(w.chkModemBusy, flags, InternetState::modemBusy);
        showConnectionName();
        ShowTimeStamp();
    });
}

void ShowTimeStamp() {
    forms().frmStatistics.lblTimeStamp.setCaption(
        "Updated at: " + longTimeText(platform().clock.currentTime(), platform().locale.data()));
}

} // namespace tarvik
