// The pictures of trigger, delays, cursors and measurements.

#include "manual_scenes.h"

#include "state/samples.h"
#include "support/measurement_lines.h"

namespace kv408::ui {
namespace {

/// CH1 alone on a noisy pulse train with slow edges: -150 mV to 250 mV, 40 % high, 80 ns.
void connect_pulses(SteadyProgram& on) {
    on.simulation.bench().sources[0] = {.kind = simulator::SignalKind::pulse,
                                        .amplitude_mvpp = 400.0,
                                        .frequency_hz = 12.5e6,
                                        .offset_mv = 50.0,
                                        .rise_time_ps = 12e3,
                                        .duty = 0.4,
                                        .noise_mv = 5.0};
}

void show_ch1_alone(SteadyProgram& on) {
    on.act([&] { on.channel(1).enable.set_checked(false); });
    on.ticks(20);
}

/// Lets slot 0 measure `measurement`, marked on the trace.
void annotate(SteadyProgram& on, const std::string& measurement) {
    on.choose(on.panel().measurement[0].selector, measurement);
    on.ticks(10);
    on.act([&] { on.panel().measurement[0].annotate.press(true); });
}

/// The name of a measurement's picture: "tPuls+" is in "measure-tpuls-high.png".
QString picture_name(const QString& measurement) {
    QString name = measurement.toLower();
    name.replace(u"+"_s, u"-high"_s);
    if (name.endsWith(u'-')) {
        name.append(u"low"_s);
    }
    return u"measure-"_s + name;
}

} // namespace

void show_trigger(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    constexpr int hundred_millivolts = (2048 + 100) / 4;
    on.drag_wheel("TRIG", hundred_millivolts - 5);
    on.drag_wheel("TRIG", hundred_millivolts);
    gallery.add(u"trigger-level"_s, on.window());
    on.let_wheel_go();
    on.ticks(30);
    gallery.add(u"trigger-level-set"_s, on.screen());
    on.turn("TRIG", (2048 + 400) / 4);
    on.ticks(30);
    gallery.add(u"trigger-waiting"_s, on.window());
}

void show_delays(Gallery& gallery) {
    SteadyProgram on;
    on.start_sweeping();
    on.choose(on.panel().seltimediv, "10ns/div");
    on.ticks(20);
    gallery.add(u"delay-none"_s, on.screen());
    const auto type = [&](TextBox& box, const char* text) {
        on.act([&] {
            box.focus();
            box.set_text(text);
            box.enter();
            box.leave();
        });
    };
    type(on.channel(0).psofset, "25000");
    type(on.channel(1).psofset, "25000");
    on.ticks(20);
    gallery.add(u"delay-both"_s, on.window());
    type(on.panel().delaytrttdis, "-30000");
    type(on.channel(0).psofset, "0");
    on.ticks(20);
    gallery.add(u"delay-ch2"_s, on.screen());
}

void show_cursors(Gallery& gallery) {
    SteadyProgram on;
    connect_pulses(on);
    on.start_sweeping();
    show_ch1_alone(on);
    on.act([&] { on.panel().tabstrip3.select(1); });
    on.turn("C1", 832);
    on.turn("C2", 320);
    on.ticks(10);
    gallery.add(u"cursors-voltage"_s, on.window());
    on.act([&] { on.panel().tabstrip3.select(2); });
    on.turn("C1", 128);
    on.turn("C2", 384);
    on.ticks(10);
    gallery.add(u"cursors-time"_s, on.screen());
}

void show_measurements(Gallery& gallery) {
    SteadyProgram on;
    connect_pulses(on);
    on.start_sweeping();
    show_ch1_alone(on);
    annotate(on, "Period");
    gallery.add(u"measurements"_s, on.window());
}

void show_each_measurement(Gallery& gallery) {
    SteadyProgram on;
    connect_pulses(on);
    on.start_sweeping();
    show_ch1_alone(on);
    for (const MeasurementLine& line : measurement_lines) {
        const std::string measurement(line.name);
        annotate(on, measurement);
        const auto pixels = on.program.scope().picture().surface().pixels();
        QVERIFY2(std::count(pixels.begin(), pixels.end(), pixel_of(ColourTable{}.annotations)) > 0,
                 measurement.c_str());
        gallery.add(picture_name(QString::fromStdString(measurement)), on.widget("Picture1"));
    }
}

} // namespace kv408::ui
