#include "dialogs/clsDialogError.h"

#include <utility>

namespace tarvik {

void clsDialogError::Raise(std::uint32_t Number, std::string Source, std::string Description) {
    number_ = Number;
    source_ = std::move(Source);
    description_ = std::move(Description);
}

void clsDialogError::Clear() {
    *this = {};
}

} // namespace tarvik
