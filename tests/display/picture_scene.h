#pragma once

#include "display/picture.h"
#include "state/plot_geometry.h"

namespace kv408::test {

/// The colours of the two traces as the program comes.
inline constexpr Pixel yellow = pixel_of(rgb(255, 255, 0));
inline constexpr Pixel blue = pixel_of(rgb(128, 220, 255));

/// A picture with everything that it is made from, ready to be drawn: start-up is complete, a
/// sweep is held, both channels are on, every code is that of 0 V and lies on the centre row.
struct PictureScene {
    PictureScene() {
        program.loaded = true;
        acquisition.scopestate = "scope";
        acquisition.ready = {true, true};
        for (SampleBuffer& buffer : samples) {
            buffer.raw.fill(zero_volt_code);
        }
        for (ChannelState& channel : channels) {
            channel.scale = 1.0; // a row per code: row 256 + 2048 - code
        }
        picture.makegrid();
        refresh_all();
        // As in the window: each draw composes.
        picture.on_drawn([](Columns) {});
    }

    /// Maps both channels anew, as after a change of the panel.
    void refresh_all() {
        picture.refreshCH1(0);
        picture.refreshCH2(0);
    }

    /// Gives sample `index` of `channel` the code that lies on row `row`, without mapping it.
    void set_row(Channel channel, int index, int row) {
        samples[static_cast<std::size_t>(channel)].raw[static_cast<std::size_t>(index)] =
            static_cast<std::uint16_t>(zero_volt_code + plot::centre_y - row);
    }

    /// Gives all samples of `channel` that row and maps them, history included.
    void set_flat(Channel channel, int row) {
        for (int index = 0; index < plot::points; ++index) {
            set_row(channel, index, row);
        }
        picture.refresh(channel, 0);
    }

    /// The pixel of the composed picture at (`x`, `y`).
    [[nodiscard]] Pixel at(int x, int y) { return picture.surface().at(x, y); }

    FrontPanel panel;
    Samples samples;
    Channels channels;
    AcquisitionState acquisition;
    ProgramState program;
    ColourTable colours;
    CursorState cursors;
    TriggerState trigger;
    DisplaySettings settings;
    AnnotationMarks marks;
    Picture picture{{panel, samples, channels, acquisition, program, colours, cursors, trigger,
                     settings, marks}};
};

} // namespace kv408::test
