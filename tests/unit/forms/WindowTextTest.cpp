#include "history/HistoryTest.h"
#include "scripted/TextPicture.h"

namespace tarvik {
namespace {

using WindowTextTest = WorldTest;
using HistoryTextTest = HistoryTest;

TEST_F(WindowTextTest, TheMainWindowLooksAsItIsMeant) {
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
        "| | (*)  Monitoring: inactive                                                                    |  <  Statistics...   > |\n"
        "| | Available connection(s):  [                                                               v] |  <    History...    > |\n"
        "| | Active connection to:     (                                                                ) |  <    Options...    > |\n"
        "| +----------------------------------------------------------------------------------------------+  <       Quit       > |\n"
        "+------------------------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

TEST_F(WindowTextTest, TheOptionsLookAsTheyAreMeant) {
    startQuietly();

    // clang-format off
    EXPECT_EQ(textPicture(frmOptions()),
        "+- Velmars Tarvik - Options ------------------------------------------------------------------------------------------+\n"
        "| +- StartUp behaviour... ------------------------------------------+  +- Transfer limit, warnings... --------------+ |\n"
        "| | [ ] Run monitoring on startup                                   |  | [ ] Bytes:         [ 0                   ] | |\n"
        "| | [ ] Minimise on startup                                         |  | [ ] Time (hh:mm):  [ 0      ]  :  [ 0    ] | |\n"
        "| +-----------------------------------------------------------------+  | Action if limit has been reached:          | |\n"
        "| +- Show transfer in... -------------------------------------------+  | [ ] Show a warning message                 | |\n"
        "| | [Bytes          v]  (current conn.)                             |  | [ ] Hang up connection                     | |\n"
        "| | [Bytes          v]  (total conn.)                               |  +--------------------------------------------+ |\n"
        "| +-----------------------------------------------------------------+  +- Transfer reset... ------------------------+ |\n"
        "| +- Miscellanous... -----------------------------------------------+  | [ ] Reset transfer records every:          | |\n"
        "| | Refresh-interval (ms):  [ 1000    ]                             |  | [middle of day                          v] | |\n"
        "| | [ ] Log IP addresses                                            |  | [ ] Make backup of records                 | |\n"
        "| | [ ] Show transfer ticker every:  [ 100    ]  MB (ME/2K/XP only) |  | <      Reset recorded transfer now       > | |\n"
        "| +-----------------------------------------------------------------+  +--------------------------------------------+ |\n"
        "| < Plan... >                                                                                  <   OK   >  < Cancel > |\n"
        "+---------------------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

TEST_F(WindowTextTest, TheWarningLooksAsItIsMeant) {
    startQuietly();

    // clang-format off
    EXPECT_EQ(textPicture(world->forms.frmWarning),
        "+- Velmars Tarvik - Warning ------------------------------------+\n"
        "|      The transfer limit that has been setup has been reached. |\n"
        "|      If \"HangUp\" was selected the connection has been         |\n"
        "| (*)  automatically disconnected.                              |\n"
        "|      If you want to disconnect manually now press the         |\n"
        "|      \"Disconnect\" button. If you want to reset the overall    |\n"
        "|      transfer now press the \"Reset\" button.                   |\n"
        "|                < Disconnect >  <   Reset    >  <   Close    > |\n"
        "+---------------------------------------------------------------+\n");
    // clang-format on
}

TEST_F(WindowTextTest, TheStatisticsLookAsTheyAreMeant) {
    startQuietly();

    // clang-format off
    EXPECT_EQ(textPicture(world->forms.frmStatistics),
        "+- Velmars Tarvik - Connection Statistics ---------------------------------------------------------------------+\n"
        "| +- Active connection statistics: ----------------------+  +- Internet connected state: --------------------+ |\n"
        "| | [ ] Enable                                           |  | [ ] Enable                                     | |\n"
        "| | Hostname:                 (                        ) |  | [ ] Computer is connected to the Internet      | |\n"
        "| | IP-adress(es):            (                        ) |  | [ ] An Internet connection is configured       | |\n"
        "| | Connect duration (ms):    (                        ) |  | [ ] A modem is used to connect to the Internet | |\n"
        "| | Aver. throughput (bps):   (                        ) |  | [ ] A LAN is used to connect to the Internet   | |\n"
        "| | Bitrate (bps):            (                        ) |  | [ ] A proxy is used to connect to the Internet | |\n"
        "| | Fames (rcvd/sent):        (                        ) |  | [ ] RAS is used to connect to the Internet     | |\n"
        "| | Compression ration (in):  (                        ) |  | [ ] Computer is currently in offline mode      | |\n"
        "| | Compression ratio (out):  (                        ) |  | [ ] The modem is currently busy                | |\n"
        "| | CRC errors:               (                        ) |  | Name of current Connection to the Internet:    | |\n"
        "| | Timeout errors:           (                        ) |  | ( (not obtained)                             ) | |\n"
        "| | Alignment errors:         (                        ) |  |                                                | |\n"
        "| | Framing errors:           (                        ) |  |                                                | |\n"
        "| | HW overrun errors:        (                        ) |  |                                                | |\n"
        "| | Buffer overrun errors:    (                        ) |  |                                                | |\n"
        "| +------------------------------------------------------+  +------------------------------------------------+ |\n"
        "| Updated at: (Not yet obtained.)                                                                   < Cancel > |\n"
        "+--------------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

TEST_F(HistoryTextTest, TheChartLooksAsItIsMeant) {
    // clang-format off
    EXPECT_EQ(textPicture(window()),
        "+- Velmars Tarvik - History -------------------------------------------------------------------------------+\n"
        "| (o) History  ( ) Statistics  ( ) Statistics (IP)                                                         |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "| | [chart: Data sent/received]                                                                          | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "| +- Import/Setup: --------------------------------------------------------------------------------------+ |\n"
        "| | [plot as line         v]  [total transfer         v]  [Rcvd and Sent         v]  [Bytes           v] | |\n"
        "| | [x] Show X-lines  [x] Show Y-lines                                         < Import... >  < Cancel > | |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "+----------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

TEST_F(HistoryTextTest, TheCompleteLogLooksAsItIsMeant) {
    import(Log{{"12.05.2005|14:03:11", "123456", "987654", "760000", "10.0.0.1"},
               { "13.05.2005|09:10:00",
                 "2048",
                 "4096",
                 "62000",
                 "" }});
    select(2);

    window().optStatistics.setValue(true);

    // clang-format off
    EXPECT_EQ(textPicture(window()),
        "+- Velmars Tarvik - History -------------------------------------------------------------------------------+\n"
        "| ( ) History  (o) Statistics  ( ) Statistics (IP)                                                         |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "| | Complete log:                                                                                        | |\n"
        "| |   ID|Date|Time|Duration|Bytes sent|Bytes rcvd|IP address                                             | |\n"
        "| |   1|12.05.2005|14:03:11|00:12:40:000|123456|987654|10.0.0.1                                          | |\n"
        "| | > 2|13.05.2005|09:10:00|00:01:02:000|2048|4096|[no IP logged]                                        | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| | Current start:                                                                                       | |\n"
        "| | ( 1.) 12.05.2005/14:03:11 (00:12:40:000) S:123456; R:987654 (IP: 10.0.0.1)                         ) | |\n"
        "| | Current stop:                                                                                        | |\n"
        "| | ( 2.) 13.05.2005/09:10:00 (00:01:02:000) S:2048; R:4096 (IP: )                                     ) | |\n"
        "| | < Set start >  < Set stop >                                                            < Export... > | |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "| +- Import/Setup: --------------------------------------------------------------------------------------+ |\n"
        "| | [plot as line         v]  [total transfer         v]  [Rcvd and Sent         v]  [Bytes           v] | |\n"
        "| | [x] Show X-lines  [x] Show Y-lines                                         < Import... >  < Cancel > | |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "+----------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

TEST_F(HistoryTextTest, TheAddressesLookAsTheyAreMeant) {
    import(numberedLog(2));

    window().optStatisticsIP.setValue(true);

    // clang-format off
    EXPECT_EQ(textPicture(window()),
        "+- Velmars Tarvik - History -------------------------------------------------------------------------------+\n"
        "| ( ) History  ( ) Statistics  (o) Statistics (IP)                                                         |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "| | This is a list with all different IP addresses that have been recorded:                              | |\n"
        "| | ( 10.0.0.1                                                                                         ) | |\n"
        "| | ( 10.0.0.2                                                                                         ) | |\n"
        "| | (                                                                                                  ) | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| |                                                                                                      | |\n"
        "| | Sort by:  < Time >  < IP address >                                                                   | |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "| +- Import/Setup: --------------------------------------------------------------------------------------+ |\n"
        "| | [plot as line         v]  [total transfer         v]  [Rcvd and Sent         v]  [Bytes           v] | |\n"
        "| | [x] Show X-lines  [x] Show Y-lines                                         < Import... >  < Cancel > | |\n"
        "| +------------------------------------------------------------------------------------------------------+ |\n"
        "+----------------------------------------------------------------------------------------------------------+\n");
    // clang-format on
}

} // namespace
} // namespace tarvik
