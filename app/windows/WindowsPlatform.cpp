#include "windows/WindowsPlatform.h"

namespace tarvik {

WindowsPlatform::WindowsPlatform(int, char**) {}

} // namespace tarvik
