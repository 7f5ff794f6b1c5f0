#pragma once

#include "types/LocaleData.h"

namespace tarvik {

/// The user's conventions for numbers, dates and times.
class Locale {
public:
    virtual ~Locale() = default;

    /// Stays the same object with the same content for the life of the process.
    virtual const LocaleData& data() = 0;
};

} // namespace tarvik
