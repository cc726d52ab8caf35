// What the picker shows: the time's colour against the medium, the rearrange button, the
// source position.
#include <gtest/gtest.h>

#include "assembly/track_picker.h"

namespace {

using namespace assembly;

TEST(PickerDisplay, CapacityLeavesThreeSecondsBetweenTwoTracks) {
    EXPECT_EQ(timeCapacity(74, 20), 4383);
    EXPECT_EQ(timeCapacity(74, 1), 4440);
    EXPECT_EQ(timeCapacity(80, 2), 4797);
}

TEST(PickerDisplay, TheTimeTurnsRedOnlyPastTheCapacity) {
    EXPECT_EQ(timeColour(4383, 74, 20), kTimeFitsColour);
    EXPECT_EQ(timeColour(4384, 74, 20), kTimeExceedsColour);
    EXPECT_FALSE(exceedsMedium(4383, 74, 20));
    EXPECT_TRUE(exceedsMedium(4384, 74, 20));
    // One track: red only when it is longer than the medium itself.
    EXPECT_EQ(timeColour(4440, 74, 1), kTimeFitsColour);
    EXPECT_EQ(timeColour(4441, 74, 1), kTimeExceedsColour);
    EXPECT_EQ(kTimeFitsColour, 0x00C000u);
    EXPECT_EQ(kTimeExceedsColour, 0x0000FFu);
}

TEST(PickerDisplay, RearrangingNeedsTwoTracks) {
    EXPECT_FALSE(rearrangeEnabled(0));
    EXPECT_FALSE(rearrangeEnabled(1));
    EXPECT_TRUE(rearrangeEnabled(2));
    EXPECT_TRUE(rearrangeEnabled(150));
}

TEST(PickerDisplay, ThePositionShowsTheRowNumberAndThePassedCount) {
    EXPECT_EQ(sourcePositionText(4, 1432), "5 1432");
    EXPECT_EQ(sourcePositionText(0, 1), "1 1");
    EXPECT_EQ(sourcePositionText(-1, 0), "0 0");
    EXPECT_EQ(sourcePositionText(137000, 137001), "137001 137001");
}

}  // namespace
