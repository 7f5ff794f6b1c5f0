#include "ports/OverwriteQuestion.h"

#include "types/Text.h"

namespace tarvik {

MsgBoxRequest overwriteQuestion(const std::string& title) {
    return {.text = withControlsTold(title) + " already exists.\rDo you want to replace it?",
            .buttons = MsgBoxButtons::YesNo,
            .icon = MsgBoxIcon::Exclamation,
            .caption = ApplicationTitle};
}

} // namespace tarvik
