// What dragging the adjust wheel takes in the real window: the whole program on the simulated
// instrument in real time, both channels sweeping in lines with full persistence; a mouse that
// moves 60 times per second, and the paintings of the plot that come of it.

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string_view>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QTimer>

#include "display/box_geometry.h"
#include "display/settings_dialog.h"
#include "host/system_clock.h"
#include "simulator/simulation.h"
#include "state/plot_geometry.h"
#include "support/fake_files.h"
#include "ui/look.h"
#include "ui/plot_widget.h"
#include "ui/program.h"

namespace {

using namespace kv408;
using namespace std::chrono_literals;

constexpr std::chrono::nanoseconds between_moves = std::chrono::nanoseconds(1s) / 60;
constexpr std::chrono::milliseconds settling_to_drag = 3s;
constexpr std::chrono::milliseconds dragging_measured = 10s;

/// Counts the paintings of the plot that show a new picture; markers that have moved are painted by
/// themselves, beside the picture.
class PaintCounter : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            const auto& plot = static_cast<const ui::PlotWidget&>(*watched);
            const QRectF picture(
                plot.place_of(box::left + plot::width / 8.0, box::top),
                plot.place_of(box::left + plot::width * 7 / 8.0, box::top + plot::height));
            count +=
                static_cast<QPaintEvent*>(event)->region().intersects(picture.toRect()) ? 1 : 0;
        }
        return QObject::eventFilter(watched, event);
    }
    int count = 0;
};

/// Lets the window's messages run for `duration`.
void run_for(std::chrono::milliseconds duration) {
    QTimer::singleShot(duration, Qt::PreciseTimer, qApp, [] { QApplication::exit(); });
    QApplication::exec();
}

void send_mouse(QWidget& widget, QEvent::Type type, QPointF place) {
    const bool move = type == QEvent::MouseMove;
    const bool release = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, widget.mapToGlobal(place), move ? Qt::NoButton : Qt::LeftButton,
                      release ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

/// Processor time of this program so far, seconds.
double processor_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// What a stretch of time took.
struct Taken {
    int moves = 0;
    double pictures_per_second = 0.0;
    double core_share = 0.0;
};

/// Watches the plot for the measured time; with a wheel, the mouse drags on it to and fro.
Taken watch(PaintCounter& paintings, QWidget* wheel) {
    Taken taken;
    QTimer mouse;
    mouse.setTimerType(Qt::PreciseTimer);
    mouse.setInterval(1);
    QElapsedTimer time;
    QObject::connect(&mouse, &QTimer::timeout, &mouse, [&] {
        if (std::chrono::nanoseconds(time.nsecsElapsed()) < taken.moves * between_moves) {
            return;
        }
        ++taken.moves;
        const int phase = taken.moves % 60;
        send_mouse(*wheel, QEvent::MouseMove, QPointF(phase < 30 ? phase : 60 - phase, 5));
    });
    paintings.count = 0;
    const double processor_before = processor_seconds();
    time.start();
    if (wheel != nullptr) {
        send_mouse(*wheel, QEvent::MouseButtonPress, QPointF(0, 5));
        mouse.start();
    }
    run_for(dragging_measured);
    const double seconds = static_cast<double>(time.nsecsElapsed()) * 1e-9;
    taken.pictures_per_second = paintings.count / seconds;
    taken.core_share = (processor_seconds() - processor_before) / seconds;
    if (wheel != nullptr) {
        mouse.stop();
        send_mouse(*wheel, QEvent::MouseButtonRelease, QPointF(0, 5));
    }
    return taken;
}

void print(std::string_view name, const Taken& taken) {
    std::printf("%-10s %5.1f moves a second, %5.1f pictures per second, %5.1f %% of a core\n",
                name.data(), taken.moves / std::chrono::duration<double>(dragging_measured).count(),
                taken.pictures_per_second, 100.0 * taken.core_share);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ui::apply_look(ui::Look::dark);
    SystemClock clock;
    simulator::Simulation simulation(clock);
    FakeFiles files;
    ui::Program program(clock, simulation.bridge(), files, fake_places());
    const bool sized = argc == 3; // the window's width and height may be given
    program.window().resize(sized ? QString::fromLatin1(argv[1]).toInt() : 1280,
                            sized ? QString::fromLatin1(argv[2]).toInt() : 800);
    program.window().show();
    run_for(settling_to_drag);
    FrontPanel& panel = program.scope().panel();
    program.scope().act([&] {
        panel.mnusettings.click();
        program.scope().settings_dialog().controls().persist.set_value(9);
        program.scope().settings_dialog().controls().cmdok.click();
        panel.persist.set_checked(true);
        panel.channel[0].slenps.set_checked(true);
        panel.channel[1].slenps.set_checked(true);
    });
    PaintCounter paintings;
    program.window().plot().installEventFilter(&paintings);
    run_for(settling_to_drag);
    auto* const wheel = program.window().findChild<QWidget*>(QStringLiteral("Slider1"));
    print("sweeping", watch(paintings, nullptr));
    for (const std::string_view key : {"CH1", "TRIG", "HPOS"}) {
        int tab = 0;
        if (wheel == nullptr || hasnotab(panel.tabstrip2, key, tab)) {
            std::printf("nothing to drag for %s\n", key.data());
            return 1;
        }
        program.scope().act([&] {
            panel.tabstrip2.select(tab);
            panel.slider1.turn_to((panel.slider1.Min() + panel.slider1.Max()) / 2);
        });
        print(key, watch(paintings, wheel));
    }
    program.window().close();
    return 0;
}
