#pragma once

#include "contracts/DialogsUnderTest.h"
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

/// The same of file dialogs, with a name that a file can have.
struct OutsideDialogsUnderTest {
    std::unique_ptr<DialogsUnderTest> machine;
    std::string turned;
    std::string told;
};
OutsideDialogsUnderTest outsideDialogsUnderTest();

} // namespace tarvik
