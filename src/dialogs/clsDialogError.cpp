#include "dialogs/clsDialogError.h"

#include <utility>

namespace tarvik {

void clsDialogError::Raise(std::uint32_t Number, std::string Source, std::string Description,
                           std::uint32_t LastDllError, std::uint32_t HelpContext) {
    number_ = Number;
    source_ = std::move(Source);
    description_ = std::move(Description);
    lastDllError_ = LastDllError;
    helpContext_ = HelpContext;
}

void clsDialogError::Clear() {
    *this = {};
}

} // namespace tarvik
