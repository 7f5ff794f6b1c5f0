#include "ui/mdlGUIStatistics.h"

#include "forms/Forms.h"
#include "ports/ConnectionProvider.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlInternetState.h"

#include <string>

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

void showCounters(const RAS_STATS& stats, const Traffic& session) {
    FrmStatistics& w = window();
    w.txtAlignmentError.setText(wholeToText(stats.dwAlignmentErr));
    w.txtBitrate.setText(wholeToText(stats.dwBps));
    w.txtBufferOverrunError.setText(wholeToText(stats.dwBufferOverrunErr));
    w.txtCompressionRatioIn.setText(wholeToText(stats.dwCompressionRatioIn));
    w.txtCompressionRatioOut.setText(wholeToText(stats.dwCompressionRatioOut));
    w.txtConnectDuration.setText(wholeToText(static_cast<std::int64_t>(session.milliseconds)));
    w.txtCRCError.setText(wholeToText(stats.dwCrcErr));
    w.txtFrames.setText(wholeToText(stats.dwFramesRcved) + " / " +
                        wholeToText(stats.dwFramesXmited));
    w.txtFramingError.setText(wholeToText(stats.dwFramingErr));
    w.txtHWOverrunError.setText(wholeToText(stats.dwHardwareOverrunErr));
    w.txtTimeoutError.setText(wholeToText(stats.dwTimeoutErr));
}

void showThroughput(const Traffic& session) {
    if (session.milliseconds == 0) {
        raise(ErrorNumber::DivisionByZero);
    }
    constexpr int decimals = 2;
    constexpr double bitsInByte = 8;
    const LocaleData& locale = platform().locale.data();
    const double bytes = static_cast<double>(session.rcvd) + static_cast<double>(session.sent);
    const double average = bytes / static_cast<double>(session.milliseconds);
    window().txtAverageThroughput.setText(formatGrouped(average, decimals, locale) + " / " +
                                          formatGrouped(average * bitsInByte, decimals, locale));
}

} // namespace

void SetStatistics(const RAS_STATS& Stats, const Traffic& Session) {
    guarded("SetStatistics", [&] {
        showHost();
        showCounters(Stats, Session);
        showThroughput(Session);
        ShowTimeStamp();
    });
}

} // namespace tarvik
