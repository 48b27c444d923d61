#pragma once

#include <string>
#include <vector>

#include "panel/screen.h"

namespace kv408 {

/// A screen that draws nothing and records what was asked of it, as "refresh 1 0" or "draw 255".
class FakeScreen : public Screen {
public:
    void refresh(int channel, int index) override {
        calls.push_back("refresh " + std::to_string(channel + 1) + " " + std::to_string(index));
    }
    void makegrid() override { calls.emplace_back("makegrid"); }
    void ClearTrace(int channel) override {
        calls.push_back("ClearTrace " + std::to_string(channel));
    }
    void movepersistance() override { calls.emplace_back("movepersistance"); }
    void set_newest_point(int index) override {
        calls.push_back("newest " + std::to_string(index));
    }
    void draw(unsigned flags) override { calls.push_back("draw " + std::to_string(flags)); }

    std::vector<std::string> calls; ///< everything asked, oldest first
};

} // namespace kv408
