// The pictures of what many sweeps tell.

#include "manual_scenes.h"

#include "scope/tools.h"
#include "shipped_files.h"
#include "simulator/test_connections.h"

namespace kv408::ui {
namespace {

/// The program over an eye of the bench.
struct OverEye : SteadyProgram {
    explicit OverEye(simulator::TestConnection connection) {
        simulator::connect(simulation.bench(), connection);
        add_shipped_masks(files, "/home/you/kv408/masks");
        start_sweeping();
        act([this] {
            channel(ch2).enable.set_checked(false);
            panel().eyeon.set_checked(true); // lines would hide the density
        });
        ticks(10);
    }

    Tools& tools() { return program.scope().tools(); }

    /// Presses the menu entry `entry` and sweeps until its window shows much.
    void collect(Button& entry, int sweeps = 300) {
        act([&] {
            entry.click();
            CheckBox& collecting = tools().density().controls().chkDensity;
            collecting.set_checked(true);
        });
        while (tools().density().collected(ch1) == nullptr ||
               tools().density().collected(ch1)->sweeps < static_cast<std::uint64_t>(sweeps)) {
            ticks(1);
        }
        ticks(10); // for what is brought up to date once a second
    }
};

} // namespace

void show_density(Gallery& gallery) {
    OverEye on(simulator::TestConnection::eye_jitter_noise);
    on.collect(on.panel().mnudensity);
    gallery.add(u"density"_s, on.screen());
    gallery.add(u"density-window"_s, on.tool_window("frmDensity"));
    on.collect(on.tools().histogram().controls().mnuhistogram);
    on.act([&] { on.tools().histogram().set_window({295, 60, 345, 450}); });
    gallery.add(u"histogram"_s, on.screen());
    gallery.add(u"histogram-window"_s, on.tool_window("frmHistogram"));
}

void show_jitter(Gallery& gallery) {
    OverEye on(simulator::TestConnection::eye_jitter_noise);
    on.collect(on.tools().jitter().controls().mnujitter, 600);
    gallery.add(u"jitter"_s, on.tool_window("frmJitter"));
}

void show_mask(Gallery& gallery) {
    OverEye on(simulator::TestConnection::eye_jitter_noise);
    on.act([&] { on.tools().mask().controls().cmbMask.set_index(1); });
    on.collect(on.tools().mask().controls().mnumask);
    gallery.add(u"mask"_s, on.screen());
    gallery.add(u"mask-window"_s, on.tool_window("frmMask"));
}

void show_eye(Gallery& gallery) {
    OverEye on(simulator::TestConnection::eye_jitter_noise);
    on.collect(on.tools().eye().controls().mnueye, 600);
    gallery.add(u"eye"_s, on.screen());
    gallery.add(u"eye-window"_s, on.tool_window("frmEye"));
}

} // namespace kv408::ui
