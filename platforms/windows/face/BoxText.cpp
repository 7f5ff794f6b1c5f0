#include "windows/face/BoxText.h"

#include "common/ClosingAnswer.h"

namespace tarvik::face {

namespace {

UINT iconFlag(MsgBoxIcon icon) {
    switch (icon) {
    case MsgBoxIcon::Critical:
        return MB_ICONERROR;
    case MsgBoxIcon::Question:
        return MB_ICONQUESTION;
    case MsgBoxIcon::Exclamation:
        return MB_ICONWARNING;
    case MsgBoxIcon::Information:
        return MB_ICONINFORMATION;
    case MsgBoxIcon::None:
        break;
    }
    return 0;
}

UINT buttonsFlag(MsgBoxButtons buttons) {
    switch (buttons) {
    case MsgBoxButtons::OkCancel:
        return MB_OKCANCEL;
    case MsgBoxButtons::YesNoCancel:
        return MB_YESNOCANCEL;
    case MsgBoxButtons::YesNo:
        return MB_YESNO;
    case MsgBoxButtons::OkOnly:
        break;
    }
    return MB_OK;
}

} // namespace

UINT boxFlags(const MsgBoxRequest& request) {
    // A warning that asks is not answered with Yes by an Enter too many.
    const bool warns =
        request.buttons == MsgBoxButtons::YesNo && request.icon == MsgBoxIcon::Exclamation;
    return iconFlag(request.icon) | buttonsFlag(request.buttons) | (warns ? MB_DEFBUTTON2 : 0U);
}

std::string boxText(const std::string& text) {
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        lines += text[i];
        if (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')) {
            lines += '\n';
        }
    }
    return lines;
}

MsgBoxAnswer answerOf(int pressed, MsgBoxButtons buttons) {
    switch (pressed) {
    case IDOK:
        return MsgBoxAnswer::Ok;
    case IDYES:
        return MsgBoxAnswer::Yes;
    case IDNO:
        return MsgBoxAnswer::No;
    case IDCANCEL:
        // A box of a single button is closed by its number too.
        return buttons == MsgBoxButtons::OkOnly ? MsgBoxAnswer::Ok : MsgBoxAnswer::Cancel;
    default:
        return closingAnswer(buttons);
    }
}

} // namespace tarvik::face
