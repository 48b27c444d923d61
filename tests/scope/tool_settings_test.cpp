// What the next program takes over of the tools from one whose instrument has been lost.

#include <gtest/gtest.h>

#include "scope/program.h"
#include "scope/tool_settings.h"

namespace kv408 {
namespace {

/// A program that has taken over what is set in `tools`.
struct TakenOver : Program {
    explicit TakenOver(Tools& tools) {
        const ToolSettings settings = settings_of(tools);
        EXPECT_TRUE(scope.start());
        scope.act([&] { set_tools(scope.tools(), settings); });
    }
};

TEST(ToolSettings, ADensityThatIsOffStaysOffBesideTheWindowsThatSwitchItOn) {
    Program lost;
    ASSERT_TRUE(lost.scope.start());
    lost.scope.act([&] {
        lost.scope.tools().eye().open();
        lost.scope.tools().density().controls().chkDensity.press(false);
        lost.scope.tools().readouts().controls().chkClippingMark.press(true);
    });
    TakenOver next(lost.scope.tools());
    EXPECT_TRUE(next.scope.tools().eye().is_open());
    EXPECT_FALSE(next.scope.tools().density().controls().chkDensity.checked());
    EXPECT_TRUE(next.scope.tools().readouts().controls().chkClippingMark.checked());
}

TEST(ToolSettings, AMaskFromAFileIsNotThereAnyMore) {
    Program lost;
    ASSERT_TRUE(lost.scope.start());
    lost.files.files["/own.yaml"] = "name: Own\nx: ui\ny: amplitude\npolygons:\n  - points:\n"
                                    "      - [0.3, 0.5]\n      - [0.5, 0.3]\n      - [0.7, 0.5]\n";
    lost.scope.act([&] { lost.scope.tools().mask().load("/own.yaml"); });
    lost.scope.act([&] { lost.scope.tools().mask().controls().txtMaskRatio.set_text("0.5"); });
    ASSERT_TRUE(lost.scope.tools().mask().has_loaded());
    TakenOver next(lost.scope.tools());
    EXPECT_EQ(next.scope.tools().mask().controls().cmbMask.index(), 0);
    EXPECT_EQ(next.scope.tools().mask().ratio(), 0.5);
}

} // namespace
} // namespace kv408
