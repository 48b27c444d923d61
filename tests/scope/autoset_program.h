#pragma once

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "autoset/autoset.h"
#include "config/undo.h"
#include "scope/panel_agreement.h"
#include "scope/program.h"
#include "scope/set_up_agreement.h"

namespace kv408 {

/// The program on the usual bench: a sine of 400 mVpp and 10 MHz at CH1 and TRIG1, a pulse of
/// 300 mVpp and 20 MHz at CH2 and TRIG2.
struct AutosetProgram : testing::Test, protected Program {
    AutosetProgram() : Program(false) {
        EXPECT_TRUE(scope.start());
        ticks(10);
    }

    [[nodiscard]] Autoset& autoset() { return scope.autoset(); }

    void start() {
        scope.act([this] { autoset().controls().mnuautoset.click(); });
    }

    /// Lets it come to its end.
    void finish() {
        for (int tick = 0; autoset().under_way() && tick < 100; ++tick) {
            ticks(1);
        }
        EXPECT_FALSE(autoset().under_way());
    }

    /// The set-up to the byte.
    [[nodiscard]] PanelSetUp set_up() {
        return set_up_of(scope.panel(), scope.settings_file().bytes());
    }

    /// Panel and instrument agree, and nothing was told in a box.
    void expect_agreement() {
        ticks(10);
        EXPECT_THAT(set_up_differences(scope.parts(), simulation.settings()), testing::IsEmpty());
        EXPECT_TRUE(boxes.texts().empty()) << testing::PrintToString(boxes.texts());
    }
};

} // namespace kv408
