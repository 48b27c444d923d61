// Dragging the cursor lines in the whole window.

#include <QLabel>

#include "dragging.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

class CursorDragTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cursor_lines_are_dragged_data();
    void cursor_lines_are_dragged();
    void every_column_and_row_is_reached_data();
    void every_column_and_row_is_reached();
    void a_cursor_line_is_grabbed_from_near_only();
    void shift_moves_both_cursor_lines();
    void the_mouse_shows_what_it_can_drag();
};

void CursorDragTest::cursor_lines_are_dragged_data() {
    QTest::addColumn<bool>("voltage");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<double>("scale");
    for (const double scale : drag_scales()) {
        QTest::addRow("voltage 1 at %g", scale) << true << 0 << scale;
        QTest::addRow("time 2 at %g", scale) << false << 1 << scale;
    }
    QTest::newRow("voltage 2") << true << 1 << 1.0;
    QTest::newRow("time 1") << false << 0 << 1.0;
}

void CursorDragTest::cursor_lines_are_dragged() {
    QFETCH(bool, voltage);
    QFETCH(int, cursor);
    QFETCH(double, scale);
    const auto index = static_cast<std::size_t>(cursor);
    Dragging on;
    QVERIFY(on.begin(scale));
    on.choose_tab("TabStrip3", voltage ? 0 : 1);
    on.choose_tab("TabStrip2", 0);
    const auto& places = voltage ? on.cursors().vpos : on.cursors().hpos;
    const int before = places[index];
    const int other = places[1 - index];
    Mouse mouse(on.window());
    const auto pixel = [&](int unit) {
        return voltage ? on.pixel_of_unit(500, unit) : on.pixel_of_unit(unit, 100);
    };
    mouse.press_pixel(on.window().plot(), pixel(before + 2));
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string(cursor == 0 ? "C1" : "C2"));
    QCOMPARE(static_cast<int>(on.cursors().cursormode), (voltage ? 1 : 3) + cursor);
    mouse.drag_to_pixel(on.window().plot(), pixel(before + 50));
    QCOMPARE(static_cast<int>(places[index]), before + 50);
    QCOMPARE(static_cast<int>(places[1 - index]), other);
    const QString shown = on.widget<QLabel>(cursor == 0 ? "lblC1" : "lblC2")->text();
    QVERIFY2(shown.startsWith(cursor == 0 ? u"C1: "_s : u"C2: "_s), qPrintable(shown));
    const std::size_t from = on.log.frames.size();
    mouse.release();
    QVERIFY(on.uploads_after(from));
    QCOMPARE(static_cast<int>(places[index]), before + 50);
    // Let go, it stays.
    mouse.go(on.window().plot(), on.on_plot(20, 20));
    QCOMPARE(static_cast<int>(places[index]), before + 50);
}

void CursorDragTest::every_column_and_row_is_reached_data() {
    QTest::addColumn<bool>("voltage");
    QTest::addColumn<double>("scale");
    for (const double scale : pixel_scales(qApp->devicePixelRatio())) {
        QTest::addRow("rows at %g", scale) << true << scale;
        QTest::addRow("columns at %g", scale) << false << scale;
    }
}

// A cursor line stands where the mouse is, wherever the pixel in which a unit lies is pointed at.
void CursorDragTest::every_column_and_row_is_reached() {
    QFETCH(bool, voltage);
    QFETCH(double, scale);
    Dragging on;
    QVERIFY(on.begin(scale / on.window().devicePixelRatioF()));
    on.choose_tab("TabStrip3", voltage ? 0 : 1);
    const auto& places = voltage ? on.cursors().vpos : on.cursors().hpos;
    Mouse mouse(on.window());
    const auto pixel = [&](int unit) {
        return voltage ? on.pixel_of_unit(500, unit) : on.pixel_of_unit(unit, 100);
    };
    mouse.press_pixel(on.window().plot(), pixel(places[0]));
    const int last = voltage ? 512 : 640;
    for (const int from : {0, 100, last - 30}) {
        for (int unit = from; unit <= from + 30; ++unit) {
            mouse.drag_to_pixel(on.window().plot(), pixel(unit));
            QCOMPARE(static_cast<int>(places[0]), unit);
        }
    }
}

void CursorDragTest::a_cursor_line_is_grabbed_from_near_only() {
    Dragging on;
    QVERIFY(on.begin());
    Mouse mouse(on.window());
    const auto drag_from = [&](int x, int y) {
        mouse.press_pixel(on.window().plot(), on.pixel_of_unit(x, y));
        mouse.drag_to_pixel(on.window().plot(), on.pixel_of_unit(x, y + 30));
        mouse.release();
    };
    const int line = on.cursors().vpos[0];
    drag_from(300, line);
    QCOMPARE(static_cast<int>(on.cursors().vpos[0]), line); // no cursors shown
    on.choose_tab("TabStrip3", 0);
    on.choose_tab("TabStrip2", 1);
    drag_from(300, line - 5);
    drag_from(300, line + 5);
    QCOMPARE(static_cast<int>(on.cursors().vpos[0]), line);
    QCOMPARE(on.panel().tabstrip2.selected_key(), std::string("CH2"));
    drag_from(-8, line);
    QCOMPARE(static_cast<int>(on.cursors().vpos[0]), line);
    drag_from(300, line - 4);
    QCOMPARE(static_cast<int>(on.cursors().vpos[0]), line + 26);
}

void CursorDragTest::shift_moves_both_cursor_lines() {
    Dragging on;
    QVERIFY(on.begin());
    on.choose_tab("TabStrip3", 1);
    const auto before = on.cursors().hpos;
    const QString distance = on.widget<QLabel>("centerfr")->text();
    Mouse mouse(on.window());
    mouse.press(on.window().plot(), on.on_plot(before[1], 300), Qt::ShiftModifier);
    QCOMPARE(on.cursors().cursormode, cursor_mode::time_both);
    mouse.drag(on.units(-60, 0));
    QCOMPARE(static_cast<int>(on.cursors().hpos[0]), before[0] - 60);
    QCOMPARE(static_cast<int>(on.cursors().hpos[1]), before[1] - 60);
    mouse.release();
    QCOMPARE(on.cursors().cursormode, cursor_mode::time_2);
    QCOMPARE(on.widget<QLabel>("centerfr")->text(), distance);
    // Without Shift again only the one that is grabbed.
    mouse.press_pixel(on.window().plot(), on.pixel_of_unit(before[0] - 60, 300));
    mouse.drag_to_pixel(on.window().plot(), on.pixel_of_unit(before[0] - 50, 300));
    mouse.release();
    QCOMPARE(static_cast<int>(on.cursors().hpos[0]), before[0] - 50);
    QCOMPARE(static_cast<int>(on.cursors().hpos[1]), before[1] - 60);
}

void CursorDragTest::the_mouse_shows_what_it_can_drag() {
    Dragging on;
    QVERIFY(on.begin());
    PlotWidget& plot_widget = on.window().plot();
    Mouse mouse(on.window());
    const auto shape_at = [&](int x, int y) {
        mouse.go_to_pixel(plot_widget, on.pixel_of_unit(x, y));
        return plot_widget.cursor().shape();
    };
    const int row = on.cursors().vpos[1];
    const int column = on.cursors().hpos[0];
    QCOMPARE(shape_at(column, row), Qt::ArrowCursor);
    on.choose_tab("TabStrip3", 0);
    QCOMPARE(shape_at(column, row + 4), Qt::SizeVerCursor);
    QCOMPARE(shape_at(column, row + 5), Qt::ArrowCursor);
    on.choose_tab("TabStrip3", 1);
    QCOMPARE(shape_at(column - 4, row), Qt::SizeHorCursor);
    QCOMPARE(shape_at(column - 5, row), Qt::ArrowCursor);
    on.choose_tab("TabStrip3", 2);
    QCOMPARE(shape_at(column, row), Qt::ArrowCursor);
    QCOMPARE(on.widget("Slider1")->cursor().shape(), Qt::SizeHorCursor);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::CursorDragTest)
#include "cursor_drag_test.moc"
