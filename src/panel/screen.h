#pragma once

#include "state/channel.h"

namespace kv408 {

/// What a drawing request redraws, as bits of the flags of `Screen::draw`.
namespace draw_flags {
inline constexpr unsigned ch1 = 1;      ///< CH1 trace, with persistence
inline constexpr unsigned ch2 = 2;      ///< CH2 trace, with persistence
inline constexpr unsigned overlays = 4; ///< cursor lines, annotation marks, trigger-level line
inline constexpr unsigned labels = 8;   ///< offset labels, trigger marker and level, side markers
inline constexpr unsigned all = 255;    ///< everything
} // namespace draw_flags

/// What the panel's handlers and the acquisition ask of the picture.
class Screen {
public:
    virtual ~Screen() = default;

    /// Maps the samples of `channel` to plot points. Index 0 remaps all points 1..639 and resets
    /// the history to the new trace; 1..640 remaps that point; any other index changes nothing.
    virtual void refresh(Channel channel, int index) = 0;
    void refreshCH1(int index) { refresh(ch1, index); }
    void refreshCH2(int index) { refresh(ch2, index); }

    /// Draws the graticule onto its surface.
    virtual void makegrid() = 0;

    /// Clears the trace of `channel`, over its whole width and height, to the background: nothing
    /// of it that was drawn is kept, and the next draw composes all of it anew.
    virtual void ClearTrace(Channel channel) = 0;

    /// Recomputes the colours in which older sweeps fade.
    virtual void calcPersistColors() = 0;

    /// Shifts both persistence histories by one generation, the current traces become the newest.
    virtual void movepersistance() = 0;

    /// Writes the cursor read-outs anew.
    virtual void calccursors() = 0;

    /// Writes the offset read-outs and the trigger level and places the markers, also while the
    /// picture itself is not drawn; not before start-up is complete.
    virtual void show_labels() = 0;

    /// Notes `index` (1..640) as the newest point of a running point-by-point pass.
    virtual void set_newest_point(int index) = 0;

    /// Composes the picture out of the parts that `flags` names (bits of draw_flags) and shows it.
    virtual void draw(unsigned flags) = 0;

    /// True when a drawing was asked for while a set-up was under way, which lets nothing be drawn,
    /// and everything has not been drawn since.
    [[nodiscard]] virtual bool owes_drawing() const = 0;
};

} // namespace kv408
