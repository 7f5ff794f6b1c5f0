#include "common/ClosingAnswer.h"

namespace tarvik::face {

MsgBoxAnswer closingAnswer(MsgBoxButtons buttons) {
    switch (buttons) {
    case MsgBoxButtons::OkCancel:
    case MsgBoxButtons::YesNoCancel:
        return MsgBoxAnswer::Cancel;
    case MsgBoxButtons::YesNo:
        return MsgBoxAnswer::No;
    case MsgBoxButtons::OkOnly:
        break;
    }
    return MsgBoxAnswer::Ok;
}

} // namespace tarvik::face
