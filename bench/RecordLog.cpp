#include "RecordLog.h"

#include "types/Convert.h"

namespace tarvik {

namespace {

std::string addressOf(int number) {
    constexpr int savesOfAnAddress = 20;
    const int host = number / savesOfAnAddress;
    return "10." + std::to_string(host / 65536) + "." + std::to_string(host / 256 % 256) + "." +
           std::to_string(host % 256);
}

} // namespace

std::string recordName(int number) {
    const LocaleData locale;
    const Date date(40000.0 + number / 1440.0);
    return shortDateText(date, locale) + "|" + longTimeText(date, locale);
}

std::string logOf(int records) {
    std::string settings = "[Settings]\r\nIsLocked=0\r\nLastState=" + recordName(records) + "\r\n";
    std::string sections;
    for (int i = 1; i <= records; ++i) {
        const std::string name = recordName(i);
        settings += "DateStamp" + std::to_string(i) + "=" + name + "\r\n";
        sections += "[" + name + "]\r\nSent=" + std::to_string(i * 1013LL) +
                    "\r\nRcvd=" + std::to_string(i * 9013LL) +
                    "\r\nDuration=" + std::to_string(i * 60'000LL) +
                    "\r\nIPAddress=" + addressOf(i) + "\r\n";
    }
    return settings + "LastDateStamp=" + std::to_string(records) + "\r\n" + sections;
}

} // namespace tarvik
