#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "panel/screen.h"

namespace kv408 {

/// A screen that draws nothing and records what was asked of it, as "refresh 1 0" or "draw 255".
class FakeScreen : public Screen {
public:
    void refresh(Channel channel, int index) override {
        calls.push_back("refresh " + std::to_string(number_of(channel)) + " " +
                        std::to_string(index));
    }
    void ClearTrace(Channel channel) override {
        calls.push_back("ClearTrace " + std::to_string(number_of(channel)));
    }
    void makegrid() override { calls.emplace_back("makegrid"); }
    void calcPersistColors() override { calls.emplace_back("calcPersistColors"); }
    void movepersistance() override { calls.emplace_back("movepersistance"); }
    void set_newest_point(int index) override {
        calls.push_back("newest " + std::to_string(index));
    }
    void draw(unsigned flags) override {
        calls.push_back("draw " + std::to_string(flags));
        if (on_draw) {
            on_draw();
        }
    }
    [[nodiscard]] bool owes_drawing() const override { return owed; }
    void show_labels() override { ++label_updates; }
    void calccursors() override {
        ++cursor_readouts;
        if (on_calccursors) {
            on_calccursors();
        }
    }

    /// Whether the whole picture was drawn after `call` was made last; false where it never was.
    [[nodiscard]] bool shows(const std::string& call) const {
        const auto last = std::find(calls.rbegin(), calls.rend(), call);
        return last != calls.rend() && std::find(calls.rbegin(), last, "draw 255") != last;
    }

    /// Whether both traces have been mapped anew, and shown so.
    [[nodiscard]] bool shows_both_traces_anew() const {
        return shows("refresh 1 0") && shows("refresh 2 0");
    }

    std::vector<std::string> calls;       ///< everything asked to be drawn, oldest first
    bool owed = false;                    ///< a drawing was asked for and did not happen
    int label_updates = 0;                ///< how often the labels were written
    int cursor_readouts = 0;              ///< how often the cursor read-outs were written
    std::function<void()> on_draw;        ///< runs at each drawing
    std::function<void()> on_calccursors; ///< runs at each writing of the cursor read-outs
};

} // namespace kv408
