// Whoever does anything at all in the window, by mouse and keyboard, finds what it shows, what the
// program works with and what the instrument has been set to in agreement.

#include <QTest>

#include "panel_walk.h"
#include "support/series_stride.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

class PanelWalkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everything_agrees_after_each_step_data();
    void everything_agrees_after_each_step();
};

/// The number that the environment gives as `name`.
int setting(const char* name, int usual) {
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : usual;
}

void PanelWalkTest::everything_agrees_after_each_step_data() {
    QTest::addColumn<int>("seed");
    const int first = setting("KV408_WALK_SEED", 1);
    const int seeds = setting("KV408_WALK_SEEDS", series_stride == 1 ? 3 : 2);
    for (int seed = first; seed < first + seeds; ++seed) {
        QTest::addRow("seed %d", seed) << seed;
    }
}

void PanelWalkTest::everything_agrees_after_each_step() {
    QFETCH(int, seed);
    PanelWalk walk(static_cast<unsigned>(seed));
    QVERIFY(walk.ready());
    const int steps = setting("KV408_WALK_STEPS", 150);
    constexpr int steps_between = 12;
    for (int step = 1; step <= steps; ++step) {
        walk.step();
        QStringList differences = walk.differences();
        if (differences.isEmpty() && step % steps_between == 0) {
            walk.settle();
            differences = walk.settled_differences();
        }
        QVERIFY2(!walk.ended() && differences.isEmpty(),
                 qPrintable(u"KV408_WALK_SEED=%1, step %2:\n  %3\nafter\n  %4"_s.arg(
                     QString::number(seed), QString::number(step), differences.join(u"\n  "_s),
                     walk.done().join(u"\n  "_s))));
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::PanelWalkTest)
#include "panel_walk_test.moc"
