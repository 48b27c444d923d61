#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "acquisition/block_sweep.h"
#include "acquisition/point_pass.h"
#include "acquisition/set_up_upload.h"
#include "acquisition/state_machine.h"
#include "acquisition/status.h"
#include "host/ending.h"
#include "link/device_link.h"
#include "panel/device_list.h"
#include "panel/display_controls.h"
#include "panel/front_panel.h"
#include "panel/time_base.h"
#include "panel/vertical.h"
#include "scope/start_up.h"
#include "support/fake_bridge.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_measuring.h"
#include "support/fake_screen.h"
#include "support/virtual_clock.h"

namespace kv408 {

using Texts = std::vector<std::string>;

/// The acquisition with everything that it drives, connected as in the program, over a fake
/// bridge; nothing is listed or opened yet.
struct AcquisitionRig {
    AcquisitionRig() {
        link.on_listing(
            [this](const DeviceListing& devices) { show_devices(panel.device, devices); });
        sweeps.on_finished([this](const auto&) { screen.movepersistance(); });
        sweeps.on_finished([this](const auto&) { measuring.makemeasurement(); });
    }

    /// Makes the instrument acknowledge every set-up frame. The sweep and the single point have
    /// replies of their own.
    void acknowledge_set_up() {
        bridge.on_frame = [this](const FakeBridge::Frame& frame) {
            if (frame.at(1) != 26 && frame.at(1) != 32) {
                bridge.receive({6});
            }
        };
    }

    /// Brings the program up on a good instrument: "0.1V", "20ns/div", TRIG1, positive edge.
    void start() {
        acknowledge_set_up();
        start_up.Form_Load();
        forget();
    }

    /// Forgets what was sent, shown and drawn so far.
    void forget() {
        bridge.calls.clear();
        boxes.shown.clear();
        messages.repainted.clear();
        screen.calls.clear();
    }

    /// Sets which channels are on without running their handlers.
    void enable(bool first, bool second) {
        const std::array<bool, 2> on = {first, second};
        for (std::size_t index = 0; index < 2; ++index) {
            CheckBox& box = panel.channel[index].enable;
            box.on_click({});
            box.set_checked(on[index]);
        }
    }

    void tick() { state_machine.Timer1_Timer(false); }

    [[nodiscard]] const std::string& status() const { return panel.textstatus.text(); }

    VirtualClock clock;
    FakeBridge bridge{clock};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeScreen screen;
    FakeMeasuring measuring;
    ProgramState program;
    AcquisitionState acquisition;
    TimeBaseState time_base_state;
    TriggerState trigger;
    CursorState cursor_state;
    Channels channels;
    Samples samples;
    Sweeps sweeps;
    CalibrationRecord calibration = {};
    FrontPanel panel;
    EndingMessageBoxes ending_boxes{boxes, program};
    EndingWindowMessages ending_messages{messages, program};
    std::string diagnosis; ///< what a look at the devices tells
    DeviceLink link{bridge, clock, ending_boxes, program, [this] { return diagnosis; }};
    Surroundings around{.panel = panel,
                        .channels = channels,
                        .trigger = trigger,
                        .cursors = cursor_state,
                        .time_base = time_base_state,
                        .acquisition = acquisition,
                        .link = link,
                        .clock = clock,
                        .boxes = ending_boxes,
                        .messages = ending_messages,
                        .screen = screen,
                        .measuring = measuring};
    Vertical vertical{around};
    Trigger trigger_frame{around};
    Adjust adjust{around, vertical, trigger_frame};
    TimeBase time_base{around, trigger_frame, adjust};
    Cursors cursors{panel, cursor_state, adjust, screen};
    DisplayControls display_controls{around};
    SetUpUpload upload{around, trigger_frame};
    BlockSweep block{around, samples, sweeps};
    PointPass pass{around, samples, sweeps};
    StateMachine state_machine{
        around, {.vertical = vertical, .upload = upload, .block = block, .pass = pass}};
    FakeFiles files;
    FakeFileChoosers choosers;
    Places places = fake_places();
    ColourTable colours;
    ColourUpdate colour_update{panel, colours, screen};
    DisplaySettings settings;
    SettingsFile settings_file{
        {.panel = panel,
         .channels = channels,
         .trigger = trigger,
         .cursors = cursor_state,
         .colours = colours,
         .display = settings,
         .adjust = adjust},
        {.files = files,
         .choosers = choosers,
         .boxes = ending_boxes,
         .places = places,
         .clock = clock,
         .messages = ending_messages,
         .program = program},
        {.apply = [this] { start_up.apply_settings(); }, .cancel_edits = [] {}}};
    StartUp start_up{around,
                     {.program = program,
                      .samples = samples,
                      .calibration = calibration,
                      .time_base = time_base,
                      .vertical = vertical,
                      .trigger = trigger_frame,
                      .adjust = adjust,
                      .cursors = cursors,
                      .colour_update = colour_update,
                      .settings = settings_file}};
};

} // namespace kv408
