#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <random>
#include <vector>

#include "display/picture.h"

namespace kv408::bench {

/// What the two channels measure.
enum class Signal {
    sine,  ///< a sine of 5 periods and 6 divisions with noise of a tenth of a division
    noise, ///< noise over the whole height: lines that cover as much as lines can
};

/// Where both channels' drawn points of one sweep lie in the picture.
using SweepPoints = std::array<std::vector<Point>, 2>;

/// The program around a picture as it is with both channels on, in lines, with persistence.
class ScopeScene {
public:
    /// A scene of `signal` with persistence of `depth` generations, `scale` pixels for each unit of
    /// the plot. The history is full, each generation a sweep of its own, and the picture is drawn.
    ScopeScene(Signal signal, int depth, double scale);

    /// Maps a whole new sweep of both channels and moves the history on, without drawing.
    void sweep();

    /// Takes a new sample of each channel for the next point of a point-by-point pass, without
    /// mapping it. The first one starts the passes.
    void sample_next_point();

    /// Maps and draws the point that was sampled last.
    void show_point();

    /// The last ten sweeps, the newest first.
    [[nodiscard]] const std::deque<SweepPoints>& sweeps() const { return sweeps_; }

    [[nodiscard]] Picture& picture() { return picture_; }
    [[nodiscard]] const ColourTable& colours() const { return colours_; }
    [[nodiscard]] int depth() const { return depth_; }

private:
    void sample(int index);

    Signal signal_;
    int depth_;
    std::mt19937 random_{408};
    FrontPanel panel_;
    Samples samples_;
    Channels channels_;
    AcquisitionState acquisition_;
    ProgramState program_;
    ColourTable colours_;
    CursorState cursors_;
    TriggerState trigger_;
    DisplaySettings settings_;
    AnnotationMarks marks_;
    Picture picture_;
    std::deque<SweepPoints> sweeps_;
    int newest_point_ = 0;
};

} // namespace kv408::bench
