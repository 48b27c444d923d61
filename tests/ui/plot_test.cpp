// The plot shows the picture pixel for pixel, paints only what has changed and not too often.

#include <cmath>
#include <random>
#include <utility>

#include <QFontInfo>
#include <QPaintEvent>
#include <QTest>

#include "display/box_geometry.h"
#include "state/plot_geometry.h"
#include "ui/marker.h"
#include "ui/plot_widget.h"
#include "ui/screen_panel.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// A picture in which no two neighbours are alike, at any scale.
struct NoisyPicture {
    ScaledPicture scaled() {
        return {.surface = surface,
                .set_scale =
                    [this](const PlotScale& scale) {
                        surface = Surface(scale.width(), scale.height());
                        std::mt19937 chance(408);
                        for (Pixel& pixel : surface.pixels()) {
                            pixel = 0xFF000000U | (static_cast<Pixel>(chance()) & 0xFFFFFFU);
                        }
                    },
                .take_changed = [this] { return std::exchange(changed, {}); }};
    }

    Surface surface{plot::width, plot::height};
    std::vector<Rectangle> changed;
};

/// A picture of which nothing but its size matters.
struct BarePicture {
    ScaledPicture scaled() {
        return {.surface = surface,
                .set_scale =
                    [this](const PlotScale& scale) {
                        surface = Surface(scale.width(), scale.height());
                    },
                .take_changed = [] { return std::vector<Rectangle>(); }};
    }

    Surface surface{plot::width, plot::height};
};

/// Device pixels of `picture` that are not the surface's.
int wrong_pixels(const QImage& picture, const Surface& surface, const PlotScale& scale) {
    const int left = static_cast<int>(std::lround(32 * scale.factor()));
    const int top = static_cast<int>(std::lround(20 * scale.factor()));
    int wrong = 0;
    for (int y = 0; y < surface.height(); ++y) {
        for (int x = 0; x < surface.width(); ++x) {
            const QRgb shown = picture.pixel(left + x, top + y) | 0xFF000000U;
            wrong += shown == surface.at(x, y) ? 0 : 1;
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
    void the_screen_lets_the_plot_grow_and_shrink();
    void paints_only_what_has_changed();
    void paints_seldom_but_always_the_last_state();
    void markers_keep_their_place_at_any_scale();
    void each_pixel_belongs_to_the_nearest_unit_data();
    void each_pixel_belongs_to_the_nearest_unit();
    void the_plot_is_as_large_as_the_texts_around_it_let_it();
    void round_scales_are_met_exactly();
};

void PlotTest::shows_the_picture_pixel_for_pixel_data() {
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.3, 1.5, 1.9, 2.0, 3.4, 5.0}) {
        QTest::addRow("%g", scale) << scale;
    }
}

void PlotTest::shows_the_picture_pixel_for_pixel() {
    QFETCH(double, scale);
    NoisyPicture noise;
    PlotWidget plot(noise.scaled());
    plot.set_scale(PlotScale(scale));
    QCOMPARE(noise.surface.width(), static_cast<int>(std::lround(641 * scale)));
    QCOMPARE(wrong_pixels(plot.grab().toImage(), noise.surface, PlotScale(scale)), 0);
}

void PlotTest::the_screen_lets_the_plot_grow_and_shrink() {
    NoisyPicture noise;
    FrontPanel panel;
    ScreenPanel screen(noise.scaled(), panel);
    screen.resize(screen.minimumSizeHint());
    screen.show();
    QCOMPARE(screen.plot().scale().factor(), 1.0);
    for (const int more : {100, 237, 400, 705}) {
        screen.resize(screen.sizeHint() + QSize(more, more));
        const PlotScale scale = screen.plot().scale();
        QVERIFY(scale.factor() > 1.0);
        QVERIFY(screen.rect().contains(screen.plot().geometry()));
        QVERIFY(std::abs(screen.plot().geometry().center().x() - screen.rect().center().x()) <= 1);
        // A little more has no room: the width or the height is used up.
        const QWidget& last = *screen.findChild<QWidget*>(u"picMeasure"_s);
        QVERIFY(last.geometry().bottom() <= screen.rect().bottom());
        QVERIFY(screen.plot().width() > screen.width() - 12 ||
                last.geometry().bottom() > screen.height() - 30);
        const QPoint corner = screen.plot().pos();
        if (screen.devicePixelRatioF() == std::floor(screen.devicePixelRatioF())) {
            const int ratio = static_cast<int>(screen.devicePixelRatioF());
            const QRect place(corner * ratio, screen.plot().size() * ratio);
            QCOMPARE(wrong_pixels(screen.grab().toImage().copy(place), noise.surface, scale), 0);
        }
    }
    screen.resize(screen.minimumSizeHint());
    QCOMPARE(screen.plot().scale().factor(), 1.0);
}

void PlotTest::paints_only_what_has_changed() {
    NoisyPicture noise;
    PlotWidget plot(noise.scaled());
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    QTest::qWait(50);
    PaintWatch watch(plot);
    noise.changed = {{100, 32, 110, 64}, {300, 32, 641, 64}, {0, 480, 8, 513}};
    QRegion expected;
    for (const Rectangle& area : noise.changed) {
        const QRectF pixels(plot.place_of(box::left + area.left, box::top + area.top),
                            plot.place_of(box::left + area.right, box::top + area.bottom));
        expected += pixels.toAlignedRect();
    }
    plot.show_changes();
    QTRY_VERIFY(watch.paintings > 0);
    QCOMPARE(watch.painted, expected);
}

void PlotTest::paints_seldom_but_always_the_last_state() {
    NoisyPicture noise;
    PlotWidget plot(noise.scaled());
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    QTest::qWait(50);
    PaintWatch watch(plot);
    const auto begin = std::chrono::steady_clock::now();
    for (int column = 0; column < plot::width; ++column) {
        noise.changed.push_back({column, 0, column + 1, plot::height});
        plot.show_changes();
        QCoreApplication::processEvents();
    }
    const auto lasted = std::chrono::steady_clock::now() - begin;
    QVERIFY(watch.paintings <= 3 + lasted / std::chrono::milliseconds(15));
    const QRectF last(plot.place_of(box::left + plot::width - 1, box::top), QSizeF(1, 1));
    QTRY_VERIFY(watch.painted.intersects(last.toAlignedRect()));
    const QRectF middle(plot.place_of(box::left + 300, box::top), QSizeF(1, 1));
    QVERIFY(watch.painted.intersects(middle.toAlignedRect()));
}

void PlotTest::markers_keep_their_place_at_any_scale() {
    NoisyPicture noise;
    PlotWidget plot(noise.scaled());
    MarkerLabel control("ch1text");
    auto* const marker = new Marker(&plot, Marker::Direction::right);
    bind(marker, control);
    control.mark(256); // at natural size from (17, 269), 14 by 15 pixels, letters of 11
    const int desktop = QFontInfo(plot.font()).pixelSize();
    for (const auto& [scale, growth] :
         {std::pair{0.5, 0.5}, {1.0, 1.0}, {1.3, 1.25}, {1.9, 1.75}, {2.0, 2.0}, {4.0, 0.0}}) {
        const double ratio = plot.devicePixelRatioF();
        if (scale * ratio < 1.0) {
            continue; // no screen shows less
        }
        plot.set_scale(PlotScale(scale * ratio));
        plot.grab();
        const QRect place = marker->geometry();
        // The plot area begins on a whole pixel, and so does each widget.
        QVERIFY(std::abs(place.right() + 1 - 31 * scale) <= 1.5);
        QVERIFY(std::abs(QRectF(place).center().y() - (269 + 7.5) * scale) <= 1.0);
        QVERIFY(place.right() < plot.place_of(box::left, 0).x());
        QVERIFY(marker->font().pixelSize() <= 2 * desktop);
        if (growth > 0.0) {
            QVERIFY(std::abs(place.width() - 14 * growth) <= 2.0);
            QCOMPARE(marker->font().pixelSize(), static_cast<int>(11 * growth));
        } else { // as large as they get: nearly twice the desktop's letters
            QVERIFY(marker->font().pixelSize() > 1.6 * desktop);
        }
    }
}

void PlotTest::each_pixel_belongs_to_the_nearest_unit_data() {
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.5, 1.9, 2.0, 3.4, 5.0}) {
        QTest::addRow("%g", scale) << scale;
    }
}

// What the mouse points at is the unit that is drawn there, and between two of them no farther off
// than half a unit.
void PlotTest::each_pixel_belongs_to_the_nearest_unit() {
    QFETCH(double, scale);
    BarePicture bare;
    QWidget window;
    PlotWidget plot(bare.scaled(), &window);
    plot.move(5, 5); // on denser screens between two pixels: it begins at the nearest
    plot.set_scale(PlotScale(scale));
    const double ratio = plot.devicePixelRatioF();
    const double begin = std::round(5 * ratio);
    const auto corner = [scale](int margin) { return std::floor(margin * scale + 0.5); };
    const auto unit_at = [&](int column, int row) {
        const QPointF place(begin + corner(32) + column, begin + corner(20) + row);
        return plot.box_place_at(window.mapToGlobal(place / ratio)) - QPointF(32, 20);
    };
    for (int unit = 0; unit < 641; ++unit) {
        const int pixel = static_cast<int>(std::floor((unit + 0.5) * scale));
        const QPointF at = unit_at(pixel, unit < 513 ? pixel : 0);
        QCOMPARE(std::nearbyint(at.x()), static_cast<double>(unit));
        if (unit < 513) {
            QCOMPARE(std::nearbyint(at.y()), static_cast<double>(unit));
        }
    }
    for (int pixel = 0; pixel < bare.surface.width(); ++pixel) {
        const double middle = (pixel + 0.5) / scale - 0.5;
        QVERIFY(std::abs(unit_at(pixel, 0).x() - middle) < 1e-5);
    }
}

// With texts half as large again the read-outs take fewer lines beside a larger plot.
void PlotTest::the_plot_is_as_large_as_the_texts_around_it_let_it() {
    BarePicture bare;
    FrontPanel panel;
    ScreenPanel screen(bare.scaled(), panel);
    QFont larger = screen.font();
    larger.setPointSizeF(larger.pointSizeF() * 1.5);
    screen.setFont(larger);
    screen.show();
    for (int width = 760; width < 1600; width += 31) {
        screen.resize(width, 3000);
        const double wanted = screen.plot().scale().factor();
        const QWidget& last = *screen.findChild<QWidget*>(u"picMeasure"_s);
        const QWidget& first = *screen.findChild<QWidget*>(u"tdivtext"_s)->parentWidget();
        const int high = last.geometry().bottom() + 1 - first.geometry().top() + 2 * 4;
        screen.resize(width, high);
        QCOMPARE(screen.plot().scale().factor(), wanted);
        QVERIFY(screen.rect().contains(first.geometry()));
        QVERIFY(screen.rect().contains(last.geometry()));
    }
}

// Divisions are of one size, and the window opens at exactly natural size on any screen.
void PlotTest::round_scales_are_met_exactly() {
    BarePicture bare;
    FrontPanel panel;
    ScreenPanel screen(bare.scaled(), panel);
    const double ratio = screen.devicePixelRatioF();
    screen.resize(screen.sizeHint());
    screen.show();
    QCOMPARE(screen.plot().scale().factor(), ratio);
    for (const double scale : {1.25, 1.5, 1.9, 2.0, 3.4, 5.0}) {
        if (scale >= ratio) {
            const QSize plot = PlotWidget::size_at(PlotScale(scale), ratio);
            screen.resize(plot.width() + 8, plot.height() + 600);
            QCOMPARE(screen.plot().scale().factor(), scale);
        }
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::PlotTest)
#include "plot_test.moc"
