#include "scripted/TextPicture.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

using MainWindowPictureTest = WorldTest;

TEST_F(MainWindowPictureTest, TheWindowLooksAsItIsMeant) {
    startQuietly();

    // clang-format off
    EXPECT_EQ(textPicture(frmMain()),
        "+- Velmars Tarvik -------------------------------------------------------------------------------------------------------+\n"
        "| +- Recorded transfers (amount and time): ------------------------------------------------------+  < Start Monitoring > |\n"
        "| | Transer                           Sent              Received    Duration       hr:min:sec:ms |  <     Connect      > |\n"
        "| | current (bytes):  (                0 )  (                0 )    Current   (   00:00:00:000 ) |  <    Disconnect    > |\n"
        "| | total (bytes):    (                0 )  (                0 )    Total     (   00:00:00:000 ) |                       |\n"
        "| +----------------------------------------------------------------------------------------------+                       |\n"
        "| +- Status: ------------------------------------------------------------------------------------+                       |\n"
        "| | (*)  Monitoring: inactive                                                                    |  -  Statistics...   - |\n"
        "| | Available connection(s):  [                                                               v] |  -    History...    - |\n"
        "| | Active connection to:     (                                                                ) |  <    Options...    > |\n"
        "| +----------------------------------------------------------------------------------------------+  <       Quit       > |\n"
        "+------------------------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

} // namespace
} // namespace tarvik
