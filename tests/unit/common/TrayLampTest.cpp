#include "common/TrayLamp.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarvik {
namespace {

TEST(TrayLampTest, EachIconHasItsLamp) {
    EXPECT_EQ(face::lampOf(TrayIcon::imgSysTray), LampState::NotMonitoring);
    EXPECT_EQ(face::lampOf(TrayIcon::imgSysTrayOnline), LampState::Online);
    EXPECT_EQ(face::lampOf(TrayIcon::imgSysTrayOffline), LampState::Waiting);
}

TEST(TrayLampTest, AnUnknownIconShowsTheFirst) {
    EXPECT_EQ(face::lampOf(static_cast<TrayIcon>(3)), LampState::NotMonitoring);
}

TEST(TrayLampTest, AnIconWithoutAMarkIsItsLampAlone) {
    EXPECT_EQ(face::trayDrawing(0), statusLamp(LampState::NotMonitoring));
    EXPECT_EQ(face::trayDrawing(1), statusLamp(LampState::Online));
    EXPECT_EQ(face::trayDrawing(2), statusLamp(LampState::Waiting));
}

TEST(TrayLampTest, AnUnknownNumberLooksLikeTheFirst) {
    EXPECT_EQ(face::trayDrawing(9), statusLamp(LampState::NotMonitoring));
    EXPECT_EQ(face::trayDrawing(0xFFFFFFFF), statusLamp(LampState::NotMonitoring));
}

TEST(TrayLampTest, MarksAreCountedInThrees) {
    EXPECT_EQ(iconNumber(TrayIcon::imgSysTrayOffline, TrayMark::None), 2U);
    EXPECT_EQ(iconNumber(TrayIcon::imgSysTray, TrayMark::First), 3U);
    EXPECT_EQ(iconNumber(TrayIcon::imgSysTrayOnline, TrayMark::Last), 7U);
}

TEST(TrayLampTest, AMarkStandsAboveTheLampOfItsIcon) {
    const Drawing plain = statusLamp(LampState::Online);

    const Drawing marked =
        face::trayDrawing(iconNumber(TrayIcon::imgSysTrayOnline, TrayMark::Last));

    ASSERT_GT(marked.shapes.size(), plain.shapes.size());
    EXPECT_TRUE(std::equal(plain.shapes.begin(), plain.shapes.end(), marked.shapes.begin()));
}

} // namespace
} // namespace tarvik
