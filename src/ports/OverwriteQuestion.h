#pragma once

#include "ports/Desktop.h"

#include <string>

namespace tarvik {

/// What is asked before a file is replaced, whoever asks. `title` is its name without the folder;
/// it stands there in one line, whatever it holds. Only Yes replaces it.
MsgBoxRequest overwriteQuestion(const std::string& title);

} // namespace tarvik
