#include "contracts/FaceContract.h"
#include "contracts/painted/PaintedFace.h"

#include <thread>

namespace tarvik {
namespace {

using BlockingCallContract = FaceContract;

TEST_F(BlockingCallContract, TheWindowIsServedMeanwhileButTakesNoInput) {
    show();
    int clicks = 0;
    form.cmdOk.Click.connect([&] { ++clicks; });
    std::thread::id worker;
    bool waits = false;

    face->desktop().runBlocking([&] {
        worker = std::this_thread::get_id();
        waits = clickDuringCall(form.cmdOk);
    });
    face->settle();

    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(waits);
    EXPECT_NE(worker, std::this_thread::get_id());
}

} // namespace
} // namespace tarvik
