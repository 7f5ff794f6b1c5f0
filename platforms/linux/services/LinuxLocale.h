#pragma once

#include "ports/Locale.h"

#include <QLocale>

namespace tarvik {

/// The conventions of the user's language and region settings.
class LinuxLocale : public Locale {
public:
    LinuxLocale();

    const LocaleData& data() override { return data_; }

private:
    LocaleData data_;
};

/// A locale's conventions as data. Years are always written in full, so that a record's date means
/// one day for ever; times have seconds and no time zone.
LocaleData localeDataOf(const QLocale& locale);

} // namespace tarvik
