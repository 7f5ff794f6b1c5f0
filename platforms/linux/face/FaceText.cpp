#include "linux/face/FaceText.h"

#include "common/FaceCaption.h"
#include "common/HiddenCharacters.h"
#include "types/Text.h"

#include <QStringList>
#include <QWidget>

namespace tarvik::face {

QString shown(const std::string& text) {
    return changeable(tarvik::withHiddenTold(text));
}

QString changeable(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString shownName(const QString& name) {
    return shown(withControlsTold(entered(name)));
}

QString shownLines(const std::string& text) {
    return changeableLines(tarvik::withHiddenTold(text));
}

QString changeableLines(const std::string& text) {
    QString lines = changeable(text);
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return lines;
}

std::string entered(const QString& text) {
    return text.toStdString();
}

QString withMnemonic(const std::string& caption, char mnemonic) {
    return shown(markedCaption(caption, mnemonic));
}

QString wrappedTip(const std::string& tip) {
    constexpr qsizetype comfortable = 60;
    QString lines;
    qsizetype length = 0;
    const QStringList words = shown(tip).split(QLatin1Char(' '));
    for (const QString& word : words) {
        const bool full = length > 0 && length + 1 + word.size() > comfortable;
        if (full) {
            lines += QLatin1Char('\n');
            length = 0;
        } else if (!lines.isEmpty()) {
            lines += QLatin1Char(' ');
            ++length;
        }
        lines += word;
        length += word.size();
    }
    return lines;
}

bool testIdsWanted() {
    static const bool wanted = qgetenv("TARVIK_TEST_IDS") == "1";
    return wanted;
}

void identify(QWidget& widget, const std::string& name) {
    widget.setObjectName(shown(name));
    if (testIdsWanted()) {
        widget.setAccessibleDescription(QStringLiteral("id:") + shown(name));
    }
}

} // namespace tarvik::face
