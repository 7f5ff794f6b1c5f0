#pragma once

#include "ports/Locale.h"
#include "windows/services/WindowsCodePage.h"

#include <cstdint>
#include <string>

namespace tarvik {

/// The conventions of the user's regional settings, his own changes to them included.
class WindowsLocale : public Locale {
public:
    WindowsLocale();

    const LocaleData& data() override { return data_; }

private:
    LocaleData data_;
};

/// A locale's conventions as data; `locale` is the system's number for it. Years are always written
/// in full, so that a record's date means one day for ever; times have seconds. Where the code page
/// has no middle dot, a hyphen stands for it.
LocaleData localeDataOf(std::uint32_t locale, const CodePage& codePage = windowsCodePage());

/// A date or time pattern of the system in the program's pattern language: years always in full, so
/// that a record's date means one day for ever; no names of week days and no eras, which do not
/// help to read a date back.
std::string translatedPattern(const std::string& pattern);

} // namespace tarvik
