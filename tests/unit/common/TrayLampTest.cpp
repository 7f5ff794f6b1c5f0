#include "common/TrayLamp.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace tarvik
