// The marks of clipping at the plot's edge, at any scale.

#include <QCheckBox>
#include <QLabel>
#include <QTest>

#include "dragging.h"
#include "scope/tools.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

class ClippingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marks_stand_at_the_edges_of_the_plot_data();
    void marks_stand_at_the_edges_of_the_plot();
};

void ClippingTest::marks_stand_at_the_edges_of_the_plot_data() {
    QTest::addColumn<double>("scale");
    QTest::newRow("1.0") << 1.0;
    QTest::newRow("1.9") << 1.9;
}

void ClippingTest::marks_stand_at_the_edges_of_the_plot() {
    QFETCH(double, scale);
    Dragging on;
    QVERIFY(on.begin(scale));
    auto* const above = on.widget<QLabel>("lblClipAbove1");
    auto* const below = on.widget<QLabel>("lblClipBelow1");
    QVERIFY(!above->isVisible() && !below->isVisible());
    on.program.scope().act(
        [&] { on.program.scope().tools().readouts().controls().mnureadouts.click(); });
    QTest::mouseClick(on.widget<QCheckBox>("chkClippingMark"), Qt::LeftButton, {}, QPoint(8, 8));
    on.simulation.bench().sources[0].amplitude_mvpp = 6000.0;
    QTRY_VERIFY_WITH_TIMEOUT(above->isVisible() && below->isVisible(), 60'000);
    QCOMPARE(above->text(), u"CH1 clips"_s);
    QVERIFY(!on.widget("lblClipAbove2")->isVisible());

    const PlotWidget& plot = on.window().plot();
    const QPointF first = plot.place_of(box::left, box::top);
    const QPointF last = plot.place_of(box::left + plot::width, box::top + plot::height);
    const double unit = (last.y() - first.y()) / plot::height;
    const auto on_widget = [&](const QWidget& mark) {
        return QRectF(QPointF(mark.mapTo(&plot, QPoint())), QSizeF(mark.size()));
    };
    for (const QLabel* const mark : {above, below}) {
        const QRectF place = on_widget(*mark);
        QVERIFY(QRectF(first, last).contains(place));
        QVERIFY(std::abs(place.center().x() - (first.x() + last.x()) / 2.0) <= place.width());
    }
    // Within five units of the edge.
    QVERIFY(on_widget(*above).top() - first.y() <= 5.0 * unit);
    QVERIFY(last.y() - on_widget(*below).bottom() <= 5.0 * unit);
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ClippingTest)
#include "clipping_test.moc"
