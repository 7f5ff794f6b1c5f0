#include "linux/face/BoxText.h"

#include "common/ClosingAnswer.h"
#include "common/FittingText.h"
#include "common/HiddenCharacters.h"
#include "linux/face/FaceText.h"

#include <QApplication>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QLabel>
#include <QScreen>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>
#include <unistd.h>

namespace tarvik::face {

QMessageBox::Icon boxIcon(MsgBoxIcon icon) {
    switch (icon) {
    case MsgBoxIcon::Critical:
        return QMessageBox::Critical;
    case MsgBoxIcon::Question:
        return QMessageBox::Question;
    case MsgBoxIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgBoxIcon::Information:
        return QMessageBox::Information;
    case MsgBoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons boxButtons(MsgBoxButtons buttons) {
    switch (buttons) {
    case MsgBoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgBoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MsgBoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgBoxButtons::OkOnly:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton defaultButton(const MsgBoxRequest& request) {
    if (request.buttons == MsgBoxButtons::YesNo && request.icon == MsgBoxIcon::Exclamation) {
        return QMessageBox::No;
    }
    return request.buttons == MsgBoxButtons::YesNo || request.buttons == MsgBoxButtons::YesNoCancel
               ? QMessageBox::Yes
               : QMessageBox::Ok;
}

QMessageBox::StandardButton escapeButton(MsgBoxButtons buttons) {
    switch (buttons) {
    case MsgBoxButtons::OkCancel:
    case MsgBoxButtons::YesNoCancel:
        return QMessageBox::Cancel;
    case MsgBoxButtons::YesNo:
        return QMessageBox::No;
    case MsgBoxButtons::OkOnly:
        break;
    }
    return QMessageBox::Ok;
}

QString boxText(const std::string& text) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QSize size = screen == nullptr ? QSize() : screen->availableSize();
    const QFontMetrics font(QApplication::font("QMessageBox"));
    const BoxRoom room = boxRoom(size.width(), size.height(),
                                 font.horizontalAdvance(QLatin1Char('W')), font.lineSpacing());
    return changeableLines(fittingText(withHiddenTold(text), room));
}

void setTabStops(QMessageBox& box) {
    constexpr int lettersApart = 8;
    const QString alphabet = QStringLiteral("abcdefghijklmnopqrstuvwxyz");
    for (const QLabel* label : box.findChildren<QLabel*>()) {
        // Only a text that can be selected is a document.
        if (auto* document = label->findChild<QTextDocument*>()) {
            const qreal letter = QFontMetricsF(label->font()).horizontalAdvance(alphabet) /
                                 static_cast<qreal>(alphabet.size());
            QTextOption option = document->defaultTextOption();
            option.setTabStopDistance(lettersApart * letter);
            document->setDefaultTextOption(option);
        }
    }
}

MsgBoxAnswer answerOf(int pressed, MsgBoxButtons buttons) {
    switch (pressed) {
    case QMessageBox::Ok:
        return MsgBoxAnswer::Ok;
    case QMessageBox::Yes:
        return MsgBoxAnswer::Yes;
    case QMessageBox::No:
        return MsgBoxAnswer::No;
    case QMessageBox::Cancel:
        return MsgBoxAnswer::Cancel;
    default:
        return closingAnswer(buttons);
    }
}

void writeUnshownBox(const MsgBoxRequest& request) {
    QString lines = changeableLines(request.caption + " " + request.text);
    // A name from outside could give orders to a terminal.
    const auto isOrder = [](QChar character) {
        return character.category() == QChar::Other_Control && character != QLatin1Char('\n');
    };
    std::replace_if(lines.begin(), lines.end(), isOrder, QChar(QChar::ReplacementCharacter));
    const std::string text = withHiddenTold(entered(lines)) + "\n";
    const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
    static_cast<void>(written); // nobody is left to be told
}

} // namespace tarvik::face
