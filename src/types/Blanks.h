#pragma once

#include <cstddef>
#include <string_view>

namespace tarvik {

/// How many bytes the blank takes that the text begins with; 0 when it begins with none. Blanks are
/// the space, the tab, the no-break space (U+00A0) and the narrow no-break space (U+202F), which
/// locales put between groups of digits and before AM and PM.
constexpr std::size_t leadingBlank(std::string_view text) {
    constexpr std::string_view blanks[] = {" ", "\t", "\xC2\xA0", "\xE2\x80\xAF", "\xA0"};
    for (const std::string_view blank : blanks) {
        if (text.starts_with(blank)) {
            return blank.size();
        }
    }
    return 0;
}

} // namespace tarvik
