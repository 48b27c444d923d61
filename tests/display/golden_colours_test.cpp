// The picture in other colours than those as delivered, against the list of its pixels.

#include "display/colour_update.h"
#include "golden_scene.h"

namespace kv408::test {
namespace {

struct GoldenColours : GoldenTest {
    GoldenColours() {
        show_only(true, true);
        set_flat(ch1, 100);
        set_flat(ch2, 300);
        colours = {.ch1 = rgb(160, 80, 0),
                   .ch2 = rgb(0, 60, 160),
                   .background = rgb(250, 250, 250),
                   .normal_text = rgb(20, 20, 20),
                   .grid = rgb(170, 170, 180),
                   .text_background = rgb(240, 240, 255),
                   .annotations = rgb(200, 0, 0)};
        golden = Golden(pixel_of(colours.background));
        golden.graticule(pixel_of(colours.grid));
    }

    /// A new sweep of both channels, 20 rows below the first one.
    void sweep_below() {
        sweep(ch1, [](int) { return 120; });
        sweep(ch2, [](int) { return 320; });
    }

    ColourUpdate update{panel, colours, picture};
};

// One generation has faded. At depth 3 CH1 fades by a quarter of the way to the background, rounded
// toward minus infinity: red (160 - 250) / 4 = -22.5 gives -23, green (80 - 250) / 4 = -42.5 gives
// -43, blue (0 - 250) / 4 = -62.5 gives -63. CH2: -62.5, -47.5 and -22.5 give -63, -48 and -23. The
// history holds nothing but the first sweep, so its newest generation covers the older ones.
TEST_F(GoldenColours, TraceGridBackgroundAndRampFollow) {
    panel.persist.set_checked(true);
    update.colorupdate();
    picture.movepersistance();
    sweep_below();
    golden.across(1, 638, 100, pixel_of(rgb(183, 123, 63)));
    golden.across(1, 638, 300, pixel_of(rgb(63, 108, 183)));
    golden.across(1, 638, 120, pixel_of(rgb(160, 80, 0)));
    golden.across(1, 638, 320, pixel_of(rgb(0, 60, 160)));
    EXPECT_TRUE(is_golden("other_colours"));
}

// Taking over colours maps the channels anew, and with that forgets the older sweeps.
TEST_F(GoldenColours, AnUpdateForgetsTheOlderSweeps) {
    panel.persist.set_checked(true);
    picture.movepersistance();
    sweep_below();
    update.colorupdate();
    picture.draw(draw_flags::all);
    golden.across(1, 638, 120, pixel_of(rgb(160, 80, 0)));
    golden.across(1, 638, 320, pixel_of(rgb(0, 60, 160)));
    EXPECT_TRUE(same(picture.surface(), golden));
}

} // namespace
} // namespace kv408::test
