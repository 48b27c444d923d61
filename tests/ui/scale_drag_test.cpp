// Whatever size the plot has, the same drags give the same: settings, frames and read-outs.

#include <QLabel>
#include <QTabBar>

#include "dragging.h"
#include "export/histogram_dialog.h"
#include "scope/tools.h"
#include "steady_program.h"

namespace kv408::ui {
namespace {

/// A drag from the pixel of one unit of the plot to that of another.
struct UnitDrag {
    const char* name;
    int cursors; ///< tab of the cursor strip: 0 voltage, 1 time, 2 none
    QPoint from; ///< of a marker only the row counts
    QPoint to;
    const char* marker = nullptr; ///< name of the marker that is dragged, where it is one
    bool shift = false;
    std::vector<std::pair<const char*, const char*>> texts; ///< read-outs then, by label
};

// As delivered both channels have 0.1 V/div, 64 rows, and the time base 20 ns/div, 64 columns; both
// zero lines lie on row 256. The markers' drags are of 20 rows and multiples, which are whole
// pixels at each of the scales: elsewhere a marker stands as near to the mouse as half a row.
const std::vector<UnitDrag> unit_drags = {
    {.name = "CH1's marker",
     .cursors = 2,
     .from = {-10, 256},
     .to = {-10, 216},
     .marker = "ch1text",
     .texts = {}},
    {.name = "CH2's marker",
     .cursors = 2,
     .from = {-10, 256},
     .to = {-10, 316},
     .marker = "ch2text",
     .texts = {}},
    // 20 rows up are 31.25 mV; the wheel has every fourth whole millivolt.
    {.name = "trigger marker",
     .cursors = 2,
     .from = {plot::width + 6, 216},
     .to = {plot::width + 6, 196},
     .marker = "trigertext",
     .texts = {{"trlevelmv", " 32mV"}}},
    // CH1's zero line lies on row 216 now, 125 rows below row 91.
    {.name = "voltage cursor 1",
     .cursors = 0,
     .from = {500, 193},
     .to = {500, 91},
     .texts = {{"lblC1", "C1: 195mV"}}},
    {.name = "voltage cursor 2",
     .cursors = 0,
     .from = {500, 320},
     .to = {500, 401},
     .texts = {{"lblC2", "C2: -289mV"}, {"centerfr", "Delta Cursor : 484mV"}}},
    {.name = "both voltage cursors",
     .cursors = 0,
     .from = {500, 401},
     .to = {500, 414},
     .shift = true,
     .texts = {{"lblC1", "C1: 175mV"},
               {"lblC2", "C2: -309mV"},
               {"centerfr", "Delta Cursor : 484mV"}}},
    {.name = "time cursor 1",
     .cursors = 1,
     .from = {191, 100},
     .to = {101, 100},
     .texts = {{"lblC1", "C1: 31.5ns"}}},
    {.name = "time cursor 2",
     .cursors = 1,
     .from = {448, 100},
     .to = {555, 100},
     .texts = {{"lblC2", "C2: 173ns"}, {"centerfr", "Delta Cursor: 141ns"}}},
    {.name = "both time cursors",
     .cursors = 1,
     .from = {101, 100},
     .to = {130, 100},
     .shift = true,
     .texts = {{"lblC1", "C1: 40.6ns"},
               {"lblC2", "C2: 182ns"},
               {"centerfr", "Delta Cursor: 141ns"}}},
};

/// The instrument's part of what a user would see differ.
struct DragOutcome {
    std::map<std::string, std::string> files;             ///< the settings, as they are kept
    std::vector<std::pair<int, std::vector<int>>> frames; ///< code and argument bytes
    QStringList texts;                                    ///< read-outs after each drag
    PlotWindow rectangle;                                 ///< of the histogram
};

/// The program with the plot at a scale, on a clock of its own: what it sends depends on nothing
/// but what is done.
struct ScaledDragging : SteadyProgram {
    explicit ScaledDragging(double scale) {
        make_room(window(), PlotScale(scale));
        start_sweeping();
    }

    void drag(const UnitDrag& drag) {
        Mouse mouse(window());
        PlotWidget& plot = window().plot();
        QPoint from = pixel_of_unit(plot, drag.from.x(), drag.from.y());
        QPoint to = pixel_of_unit(plot, drag.to.x(), drag.to.y());
        if (drag.marker != nullptr) { // markers do not grow as far as the plot does
            const QRect place = widget<QWidget>(drag.marker).geometry();
            from.setX(qRound(place.center().x() * window().devicePixelRatioF()));
            to.setX(from.x());
        }
        mouse.press_pixel(plot, from, drag.shift ? Qt::ShiftModifier : Qt::NoModifier);
        mouse.drag_to_pixel(plot, to);
        mouse.release();
        ticks(5);
    }

    /// Where the rectangle of the histogram is after it was moved, then made larger at a corner.
    [[nodiscard]] PlotWindow drag_rectangle() {
        HistogramDialog& dialog = program.scope().tools().histogram();
        act([&] { dialog.open(); });
        drag(
            {.name = "rectangle", .cursors = 1, .from = {321, 257}, .to = {350, 270}, .texts = {}});
        drag({.name = "corner", .cursors = 1, .from = {381, 461}, .to = {402, 482}, .texts = {}});
        return dialog.window();
    }

    /// Ends the program, which saves its settings.
    [[nodiscard]] DragOutcome outcome(const QStringList& texts, PlotWindow rectangle) {
        window().close();
        DragOutcome result{
            .files = files.files, .frames = {}, .texts = texts, .rectangle = rectangle};
        for (const simulator::WireFrame& frame : log.frames) {
            const auto& arguments = frame.command.arguments;
            result.frames.emplace_back(frame.command.code,
                                       std::vector<int>(arguments.begin(), arguments.end()));
        }
        return result;
    }
};

class ScaleDragTest : public QObject {
    Q_OBJECT

    void drag_all(double scale, DragOutcome& outcome);

    std::optional<DragOutcome> natural_;

private Q_SLOTS:
    void the_same_drags_give_the_same_data();
    void the_same_drags_give_the_same();
};

/// Drags everything at `scale`, and looks at what is known of it.
void ScaleDragTest::drag_all(double scale, DragOutcome& outcome) {
    ScaledDragging on(scale);
    QCOMPARE(on.window().plot().scale().factor(), scale);
    QStringList texts;
    for (const UnitDrag& drag : unit_drags) {
        on.act([&] { on.panel().tabstrip3.select(drag.cursors + 1); });
        on.drag(drag);
        for (const auto& [label, text] : drag.texts) {
            QVERIFY2(
                on.widget<QLabel>(label).text() == QLatin1String(text),
                qPrintable(QLatin1String(drag.name) + u": "_s + on.widget<QLabel>(label).text()));
        }
        for (const char* const label : {"trlevelmv", "centerfr", "lblC1", "lblC2"}) {
            texts.append(on.widget<QLabel>(label).text());
        }
    }
    const PlotWindow rectangle = on.drag_rectangle();
    texts.append(on.widget<QLabel>("lblHistogramWindow").text());
    outcome = on.outcome(texts, rectangle);
}

void ScaleDragTest::the_same_drags_give_the_same_data() {
    QTest::addColumn<double>("scale");
    for (const double scale : drag_scales()) {
        QTest::addRow("at %g", scale) << scale;
    }
}

void ScaleDragTest::the_same_drags_give_the_same() {
    QFETCH(double, scale);
    DragOutcome here;
    drag_all(scale, here);
    if (QTest::currentTestFailed()) {
        return;
    }
    QCOMPARE(here.files.size(), std::size_t{1});
    const QString settings = QString::fromStdString(here.files.begin()->second);
    for (const QString& line :
         {u"ch1text.top\t 592 "_s, u"ch2text.top\t 392 "_s, u"intcr1vpos\t 104 "_s,
          u"intcr2vpos\t 414 "_s, u"intcr1hpos\t 130 "_s, u"intcr2hpos\t 584 "_s}) {
        QVERIFY2(settings.contains(line + u"\r\n"_s), qPrintable(line + u"\n"_s + settings));
    }
    // The level is code 2048 and a code for each millivolt, high byte first.
    const auto trigger =
        std::find_if(here.frames.rbegin(), here.frames.rend(),
                     [](const auto& frame) { return frame.first == command::set_trigger; });
    QVERIFY(trigger != here.frames.rend());
    QCOMPARE(trigger->second[0] * 256 + trigger->second[1], 2048 + 32);
    QCOMPARE(here.rectangle.left, 288 + 29);
    QCOMPARE(here.rectangle.top, 64 + 13);
    QCOMPARE(here.rectangle.right, 352 + 29 + 21);
    QCOMPARE(here.rectangle.bottom, 449 + 13 + 21);
    if (!natural_) {
        QCOMPARE(scale, 1.0);
        natural_ = here;
    }
    QVERIFY(here.files == natural_->files);
    QVERIFY(here.frames == natural_->frames);
    QCOMPARE(here.texts, natural_->texts);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ScaleDragTest)
#include "scale_drag_test.moc"
