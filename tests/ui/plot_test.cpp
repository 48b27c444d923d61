// The plot shows the picture pixel for pixel, paints only what has changed and not too often.

#include <random>

#include <QPaintEvent>
#include <QTest>

#include "state/plot_geometry.h"
#include "ui/marker.h"
#include "ui/plot_widget.h"
#include "ui/screen_panel.h"

namespace kv408::ui {
namespace {

/// A picture in which no two neighbours are alike.
Surface noisy_surface() {
    Surface surface(plot::width, plot::height);
    std::mt19937 chance(408);
    for (Pixel& pixel : surface.pixels()) {
        pixel = 0xFF000000U | (static_cast<Pixel>(chance()) & 0xFFFFFFU);
    }
    return surface;
}

/// Device pixels of `picture` that are not the surface's pixel at `scale`.
int wrong_pixels(const QImage& picture, const Surface& surface, int scale) {
    int wrong = 0;
    for (int y = 0; y < surface.height() * scale; ++y) {
        for (int x = 0; x < surface.width() * scale; ++x) {
            const QRgb shown =
                picture.pixel(plot::left * scale + x, plot::top * scale + y) | 0xFF000000U;
            wrong += shown == surface.at(x / scale, y / scale) ? 0 : 1;
        }
    }
    return wrong;
}

/// Notes what is painted of a widget.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent*>(event)->region();
            ++paintings;
        }
        return QObject::eventFilter(watched, event);
    }

    QRegion painted;
    int paintings = 0;
};

class PlotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shows_the_picture_pixel_for_pixel_data();
    void shows_the_picture_pixel_for_pixel();
    void takes_the_largest_scale_that_fits_data();
    void takes_the_largest_scale_that_fits();
    void the_screen_lets_the_plot_grow_and_shrink();
    void paints_only_the_changed_columns();
    void paints_seldom_but_always_the_last_state();
    void markers_keep_their_place_at_any_scale();
};

void PlotTest::shows_the_picture_pixel_for_pixel_data() {
    QTest::addColumn<int>("scale");
    QTest::newRow("1") << 1;
    QTest::newRow("2") << 2;
    QTest::newRow("3") << 3;
}

void PlotTest::shows_the_picture_pixel_for_pixel() {
    QFETCH(int, scale);
    const Surface surface = noisy_surface();
    PlotWidget plot(surface);
    plot.set_scale(scale);
    const QImage picture = plot.grab().toImage();
    QVERIFY(picture.width() >= plot::box_width * scale);
    QCOMPARE(wrong_pixels(picture, surface, scale), 0);
}

void PlotTest::takes_the_largest_scale_that_fits_data() {
    QTest::addColumn<QSizeF>("room");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("scale");
    QTest::newRow("exactly one") << QSizeF(705, 540) << 1.0 << 1;
    QTest::newRow("too small") << QSizeF(300, 200) << 1.0 << 1;
    QTest::newRow("nearly two") << QSizeF(1409, 1080) << 1.0 << 1;
    QTest::newRow("two") << QSizeF(1410, 1080) << 1.0 << 2;
    QTest::newRow("low") << QSizeF(3000, 1079) << 1.0 << 1;
    QTest::newRow("dense screen") << QSizeF(705, 540) << 2.0 << 2;
    QTest::newRow("dense screen, three") << QSizeF(1060, 810) << 2.0 << 3;
    QTest::newRow("half steps") << QSizeF(705, 540) << 1.5 << 1;
    QTest::newRow("half steps, two") << QSizeF(940, 720) << 1.5 << 2;
}

void PlotTest::takes_the_largest_scale_that_fits() {
    QFETCH(QSizeF, room);
    QFETCH(qreal, ratio);
    QFETCH(int, scale);
    QCOMPARE(PlotWidget::scale_for(room, ratio), scale);
}

void PlotTest::the_screen_lets_the_plot_grow_and_shrink() {
    const Surface surface = noisy_surface();
    FrontPanel panel;
    ScreenPanel screen(surface, panel);
    screen.resize(screen.minimumSizeHint());
    screen.show();
    const int smallest = screen.plot().scale();
    QCOMPARE(smallest, 1);
    // The least width leaves out the empty columns at the plot's edges; this has room for two.
    screen.resize(screen.sizeHint() + QSize(705, 540));
    QVERIFY(screen.plot().scale() >= smallest + 1);
    QVERIFY(screen.rect().contains(screen.plot().geometry()));
    QVERIFY(std::abs(screen.plot().geometry().center().x() - screen.rect().center().x()) <= 1);
    const QPoint corner = screen.plot().mapTo(&screen, QPoint(0, 0));
    if (screen.devicePixelRatioF() == std::floor(screen.devicePixelRatioF())) {
        const int ratio = static_cast<int>(screen.devicePixelRatioF());
        QImage whole = screen.grab().toImage();
        whole = whole.copy(corner.x() * ratio, corner.y() * ratio, screen.plot().width() * ratio,
                           screen.plot().height() * ratio);
        QCOMPARE(wrong_pixels(whole, surface, screen.plot().scale()), 0);
    }
    screen.resize(screen.minimumSizeHint());
    QCOMPARE(screen.plot().scale(), smallest);
}

void PlotTest::paints_only_the_changed_columns() {
    const Surface surface = noisy_surface();
    PlotWidget plot(surface);
    plot.set_scale(1);
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    QTest::qWait(50);
    PaintWatch watch(plot);
    plot.show_columns({100, 110});
    QTRY_VERIFY(watch.paintings > 0);
    const QRectF expected(plot.place_of(plot::left + 100, plot::top),
                          plot.place_of(plot::left + 110, plot::top + plot::height));
    QCOMPARE(watch.painted.boundingRect(), expected.toAlignedRect());
}

void PlotTest::paints_seldom_but_always_the_last_state() {
    Surface surface(plot::width, plot::height);
    PlotWidget plot(surface);
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    QTest::qWait(50);
    PaintWatch watch(plot);
    const auto begin = std::chrono::steady_clock::now();
    for (int column = 0; column < plot::width; ++column) {
        plot.show_columns({column, column + 1});
        QCoreApplication::processEvents();
    }
    const auto lasted = std::chrono::steady_clock::now() - begin;
    QVERIFY(watch.paintings <= 3 + lasted / std::chrono::milliseconds(15));
    const QRectF last(plot.place_of(plot::left + plot::width - 1, plot::top), QSizeF(1, 1));
    QTRY_VERIFY(watch.painted.intersects(last.toAlignedRect()));
    const QRectF middle(plot.place_of(plot::left + 300, plot::top), QSizeF(1, 1));
    QVERIFY(watch.painted.intersects(middle.toAlignedRect()));
}

void PlotTest::markers_keep_their_place_at_any_scale() {
    const Surface surface(plot::width, plot::height);
    PlotWidget plot(surface);
    Label control("ch1text");
    auto* const marker = new Marker(&plot, Marker::Direction::right);
    bind(marker, control);
    control.move(17, 269);
    for (const int scale : {1, 2, 3}) {
        plot.set_scale(scale);
        plot.grab();
        const double unit = scale / plot.devicePixelRatioF();
        QVERIFY(std::abs(marker->x() - 17 * unit) < 1.0);
        QVERIFY(std::abs(marker->geometry().center().y() + 0.5 - (269 + 7.5) * unit) <= 1.0);
        QVERIFY(marker->geometry().right() < plot.place_of(plot::left, 0).x());
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::PlotTest)
#include "plot_test.moc"
