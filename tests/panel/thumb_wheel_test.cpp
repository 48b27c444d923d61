#include "panel/thumb_wheel.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

/// A wheel that counts its events.
struct WheelRig {
    WheelRig() {
        wheel.on_change([this] { ++changes; });
        wheel.on_scroll([this] { ++scrolls; });
    }

    /// A wheel over `minimum`..`maximum` at `value`, its events so far forgotten.
    void prepare(int minimum, int maximum, int value, int step) {
        wheel.set_range(minimum, maximum);
        wheel.set_SlideStep(step);
        wheel.set_Value(value);
        changes = 0;
        scrolls = 0;
    }

    ThumbWheel wheel{"Slider1"};
    int changes = 0;
    int scrolls = 0;
};

TEST(ThumbWheel, Defaults) {
    const ThumbWheel wheel("w");
    EXPECT_EQ(wheel.Min(), 0);
    EXPECT_EQ(wheel.Max(), 100);
    EXPECT_EQ(wheel.Value(), 50);
    EXPECT_EQ(wheel.TrackDistance(), 4);
    EXPECT_EQ(wheel.TrackWidth(), 8);
    EXPECT_EQ(wheel.SlideStep(), 1);
    EXPECT_EQ(wheel.phase(), 0);
    EXPECT_FALSE(wheel.uncommitted());
}

TEST(ThumbWheel, DraggingTenPixelsAtStepFourAddsForty) {
    WheelRig rig;
    rig.prepare(0, 1024, 100, 4);
    rig.wheel.mouse_down(20, 5);
    rig.wheel.mouse_move(left_mouse_button, 24, 5);
    rig.wheel.mouse_move(left_mouse_button, 30, 6);
    EXPECT_EQ(rig.wheel.Value(), 140);
    EXPECT_EQ(rig.scrolls, 2);
    EXPECT_EQ(rig.changes, 0);
    rig.wheel.mouse_up();
    EXPECT_EQ(rig.wheel.Value(), 140);
    EXPECT_EQ(rig.changes, 1);
}

TEST(ThumbWheel, DraggingPastTheEndStopsThereButTurnsTheRibs) {
    WheelRig rig;
    rig.prepare(0, 1024, 1020, 4);
    rig.wheel.mouse_down(0, 0);
    rig.wheel.mouse_move(left_mouse_button, 5, 0);
    EXPECT_EQ(rig.wheel.Value(), 1024);
    EXPECT_EQ(rig.scrolls, 1);
    EXPECT_EQ(rig.wheel.phase(), 5);
    rig.wheel.mouse_move(left_mouse_button, 9, 0);
    EXPECT_EQ(rig.wheel.Value(), 1024);
    EXPECT_EQ(rig.scrolls, 1);
    EXPECT_EQ(rig.wheel.phase(), 9);
    rig.wheel.mouse_move(left_mouse_button, -2000, 0);
    EXPECT_EQ(rig.wheel.Value(), 0);
}

TEST(ThumbWheel, OnlyTheLeftButtonHeldAfterAPressDrags) {
    WheelRig rig;
    rig.prepare(0, 100, 50, 1);
    rig.wheel.mouse_move(left_mouse_button, 10, 0);
    EXPECT_EQ(rig.wheel.Value(), 50);
    rig.wheel.mouse_down(0, 0);
    rig.wheel.mouse_move(2, 10, 0);
    EXPECT_EQ(rig.wheel.Value(), 50);
    rig.wheel.mouse_up();
    rig.wheel.mouse_move(left_mouse_button, 10, 0);
    EXPECT_EQ(rig.wheel.Value(), 50);
    EXPECT_EQ(rig.changes, 0);
}

TEST(ThumbWheel, ThePhaseStaysWithinOneRibAndGap) {
    WheelRig rig;
    rig.wheel.mouse_down(0, 0);
    rig.wheel.mouse_move(left_mouse_button, -1, 0);
    EXPECT_EQ(rig.wheel.phase(), 11);
    rig.wheel.mouse_move(left_mouse_button, 12, 0);
    EXPECT_EQ(rig.wheel.phase(), 0);
    rig.wheel.mouse_move(left_mouse_button, -1000, 0);
    EXPECT_EQ(rig.wheel.phase(), 8); // -1012 is 85 periods of 12 less 8 short of 0
}

TEST(ThumbWheel, NarrowRibsAndNegativeGapsAreHeld) {
    ThumbWheel wheel("w");
    wheel.set_TrackWidth(2);
    EXPECT_EQ(wheel.TrackWidth(), 4);
    wheel.set_TrackDistance(-1);
    EXPECT_EQ(wheel.TrackDistance(), 0);
    wheel.set_SlideStep(-300);
    EXPECT_EQ(wheel.SlideStep(), -300);
}

TEST(ThumbWheel, ThePhaseStaysWithinANarrowerPeriod) {
    WheelRig rig;
    rig.prepare(0, 1024, 512, 1);
    rig.wheel.mouse_down(0, 0);
    rig.wheel.mouse_move(left_mouse_button, 11, 0);
    ASSERT_EQ(rig.wheel.phase(), 11); // of a period of 8 + 4
    rig.wheel.set_TrackWidth(4);
    EXPECT_EQ(rig.wheel.phase(), 3);
    rig.wheel.set_TrackDistance(-5);
    EXPECT_EQ(rig.wheel.phase(), 3);
}

TEST(ThumbWheel, TheCommittedValueSetAgainRaisesNoEvent) {
    WheelRig rig;
    rig.wheel.set_Value(70);
    rig.changes = 0;
    rig.wheel.set_Value(70);
    EXPECT_EQ(rig.changes, 0);
    EXPECT_EQ(rig.scrolls, 0);
}

TEST(ThumbWheel, AValueSetByTheProgramRaisesTheChangeEventOnce) {
    WheelRig rig;
    rig.wheel.set_Value(70);
    EXPECT_EQ(rig.wheel.Value(), 70);
    EXPECT_EQ(rig.changes, 1);
    EXPECT_EQ(rig.scrolls, 0);
    rig.wheel.set_Value(1000);
    EXPECT_EQ(rig.wheel.Value(), 100);
}

TEST(ThumbWheel, TheRangeIsThatOfSixteenBits) {
    WheelRig rig;
    rig.prepare(-32768, 32767, 0, 256);
    rig.wheel.mouse_down(0, 0);
    rig.wheel.mouse_move(left_mouse_button, 2000000000, 0);
    EXPECT_EQ(rig.wheel.Value(), 32767);
    rig.wheel.mouse_move(left_mouse_button, -100000000, 0);
    EXPECT_EQ(rig.wheel.Value(), -32768);
}

TEST(ThumbWheel, TurningIsADragThatIsLetGo) {
    WheelRig rig;
    rig.prepare(0, 1024, 512, 4);
    rig.wheel.turn(-10);
    EXPECT_EQ(rig.wheel.Value(), 472);
    EXPECT_EQ(rig.scrolls, 1);
    EXPECT_EQ(rig.changes, 1);
    rig.wheel.turn_to(5000);
    EXPECT_EQ(rig.wheel.Value(), 1024);
    EXPECT_EQ(rig.changes, 2);
    rig.wheel.turn(1);
    EXPECT_EQ(rig.changes, 2);
}

} // namespace
} // namespace kv408
