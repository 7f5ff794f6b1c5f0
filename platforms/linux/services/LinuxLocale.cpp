#include "linux/services/LinuxLocale.h"

#include <QString>
#include <QVariant>

#include <string>

namespace tarvik {

namespace {

/// A run of one letter of a toolkit pattern as the program's pattern language writes it.
QString translatedRun(QChar letter, qsizetype length) {
    switch (letter.unicode()) {
    case 'y':
        return QStringLiteral("yyyy");
    case 'd':
        // Names of week days do not help to read a date back.
        return length > 2 ? QString() : QString(length, letter);
    case 'M':
    case 'h':
    case 'H':
    case 'm':
    case 's':
        return QString(length, letter);
    default:
        // Time zones and words for parts of the day do not help either.
        return {};
    }
}

/// The position after a quoted part that begins at `from`.
qsizetype afterQuoted(const QString& pattern, qsizetype from) {
    const qsizetype close = pattern.indexOf(QLatin1Char('\''), from + 1);
    return close < 0 ? pattern.size() : close + 1;
}

std::string translated(const QString& pattern) {
    QString result;
    qsizetype i = 0;
    while (i < pattern.size()) {
        const QChar letter = pattern[i];
        if (letter == QLatin1Char('\'')) {
            const qsizetype end = afterQuoted(pattern, i);
            result += pattern.mid(i, end - i);
            i = end;
        } else if (letter == QLatin1Char('A') || letter == QLatin1Char('a')) {
            result += QStringLiteral("tt");
            const bool pair =
                i + 1 < pattern.size() && pattern[i + 1].toUpper() == QLatin1Char('P');
            i += pair ? 2 : 1;
        } else {
            const bool meaning = letter.unicode() < 128 && letter.isLetter();
            qsizetype end = i + 1;
            while (end < pattern.size() && meaning && pattern[end] == letter) {
                ++end;
            }
            result += meaning ? translatedRun(letter, end - i) : QString(letter);
            i = end;
        }
    }
    result.remove(QStringLiteral("[]")).remove(QStringLiteral("()"));
    return result.trimmed().toStdString();
}

/// Without seconds, or with a 12-hour clock that does not tell the half, a time is not whole.
bool tellsTheWholeTime(const std::string& pattern) {
    const auto has = [&](char letter) { return pattern.find(letter) != std::string::npos; };
    return has('s') && has('m') && (has('H') || (has('h') && has('t')));
}

std::string timePattern(const QLocale& locale) {
    for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
        std::string pattern = translated(locale.timeFormat(format));
        if (tellsTheWholeTime(pattern)) {
            return pattern;
        }
    }
    return "HH:mm:ss";
}

std::string datePattern(const QLocale& locale) {
    const std::string pattern = translated(locale.dateFormat(QLocale::ShortFormat));
    const bool complete = pattern.find('d') != std::string::npos &&
                          pattern.find('M') != std::string::npos &&
                          pattern.find('y') != std::string::npos;
    return complete ? pattern : "yyyy-MM-dd";
}

} // namespace

LinuxLocale::LinuxLocale() : data_(localeDataOf(QLocale::system())) {}

LocaleData localeDataOf(const QLocale& locale) {
    LocaleData data;
    data.shortDate = datePattern(locale);
    data.longTime = timePattern(locale);
    data.decimalSeparator = locale.decimalPoint().toStdString();
    data.thousandsSeparator = locale.groupSeparator().toStdString();
    data.amText = locale.amText().toStdString();
    data.pmText = locale.pmText().toStdString();
    for (int month = 1; month <= 12; ++month) {
        const auto place = static_cast<std::size_t>(month - 1);
        data.shortMonths.at(place) = locale.monthName(month, QLocale::ShortFormat).toStdString();
        data.longMonths.at(place) = locale.monthName(month, QLocale::LongFormat).toStdString();
    }
    return data;
}

} // namespace tarvik
