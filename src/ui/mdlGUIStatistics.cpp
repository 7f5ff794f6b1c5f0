#include "ui/mdlGUIStatistics.h"

#include "ports/Clock.h"
#include "ports/ConnectionProvider.h"
#include "ports/InternetState.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "startup/mdlTools.h"
#include "startup/mdlVar.h"
#include "types/Convert.h"
#include "ui/Forms.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tarvik {

namespace {

constexpr const char* notObtained = "(not obtained)";

FrmStatistics& window() {
    return forms().frmStatistics;
}

std::string textOr(const std::string& text, const char* otherwise) {
    return text.empty() ? otherwise : text;
}

void showHost() {
    const State& s = state();
    const bool logged = s.LogIPAddress != 0;
    window().txtHostName.setText(logged ? textOr(s.HostName, notObtained) : notObtained);
    window().txtIPAddress.setText(logged ? textOr(s.IPAddress, notObtained) : notObtained);
}

void showCounters(const RAS_STATS& stats, const LineTotals& session) {
    FrmStatistics& w = window();
    w.txtAlignmentError.setText(wholeToText(stats.dwAlignmentErr));
    w.txtBitrate.setText(wholeToText(stats.dwBps));
    w.txtBufferOverrunError.setText(wholeToText(stats.dwBufferOverrunErr));
    w.txtCompressionRatioIn.setText(wholeToText(stats.dwCompressionRatioIn));
    w.txtCompressionRatioOut.setText(wholeToText(stats.dwCompressionRatioOut));
    w.txtConnectDuration.setText(wholeToText(static_cast<std::int64_t>(session.duration)));
    w.txtCRCError.setText(wholeToText(stats.dwCrcErr));
    w.txtFrames.setText(wholeToText(stats.dwFramesRcved) + " / " +
                        wholeToText(stats.dwFramesXmited));
    w.txtFramingError.setText(wholeToText(stats.dwFramingErr));
    w.txtHWOverrunError.setText(wholeToText(stats.dwHardwareOverrunErr));
    w.txtTimeoutError.setText(wholeToText(stats.dwTimeoutErr));
}

void showThroughput(const LineTotals& session) {
    if (session.duration == 0) {
        raise(ErrorNumber::DivisionByZero);
    }
    constexpr int decimals = 2;
    constexpr double bitsInByte = 8;
    const LocaleData& locale = platform().locale.data();
    const double bytes =
        static_cast<double>(session.bytesRcvd) + static_cast<double>(session.bytesSent);
    const double average = bytes / static_cast<double>(session.duration);
    window().txtAverageThroughput.setText(formatGrouped(average, decimals, locale) + " / " +
                                          formatGrouped(average * bitsInByte, decimals, locale));
}

void showTimeStamp() {
    window().lblTimeStamp.setCaption(
        "Updated at: " + longTimeText(platform().clock.currentTime(), platform().locale.data()));
}

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
    window().txtConnectionName.setText(
        end == std::string_view::npos ? notObtained : std::string(text.substr(0, end)));
}

} // namespace

void SetStatistics(const RAS_STATS& Stats, const LineTotals& Session) {
    guarded("SetStatistics", [&] {
        showHost();
        showCounters(Stats, Session);
        showThroughput(Session);
        showTimeStamp();
    });
}

void SetStatistics(const RAS_STATS& Stats) {
    SetStatistics(Stats, {.bytesSent = Stats.dwBytesXmited,
                          .bytesRcvd = Stats.dwBytesRcved,
                          .duration = Stats.dwConnectDuration});
}

void SetConnectedState() {
    guarded("SetConnectedState", [] {
        FrmStatistics& w = window();
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
        showTimeStamp();
    });
}

} // namespace tarvik
