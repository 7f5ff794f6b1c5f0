#pragma once

#include "contracts/FaceUnderTest.h"

#include <memory>
#include <string>

namespace tarvik {

/// A face whose texts can hold a mark that turns the order of what follows.
struct OutsideNamesUnderTest {
    std::unique_ptr<FaceUnderTest> face;
    std::string turned; ///< a name with such a mark
    std::string told;   ///< what is seen of it
};
OutsideNamesUnderTest outsideNamesUnderTest();

} // namespace tarvik
