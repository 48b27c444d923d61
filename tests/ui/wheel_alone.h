#pragma once

#include <QTest>

#include "entered.h"
#include "ui/wheel_widget.h"

namespace kv408::ui {

/// A wheel over 0..1024 with a step of 4, standing at 100, in a window of its own.
struct WheelAlone {
    WheelAlone() {
        wheel.set_range(0, 1024);
        wheel.set_SlideStep(4);
        wheel.set_Value(100);
        wheel.on_scroll([this] { ++scrolls; });
        wheel.on_change([this] { ++changes; });
        widget.resize(300, 32);
    }

    [[nodiscard]] bool show() {
        widget.show();
        widget.activateWindow();
        return QTest::qWaitForWindowActive(&widget);
    }

    /// The picture at 1 pixel a unit.
    [[nodiscard]] QImage picture() { return widget.grab().toImage(); }

    Entered entered;
    ThumbWheel wheel{"Slider1"};
    int scrolls = 0;
    int changes = 0;
    WheelWidget widget{wheel, entered.driver};
};

} // namespace kv408::ui
