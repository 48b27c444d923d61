// An instrument that falls silent, in the window: what it says, and the ways out. And what can be
// used while a dialog is open.

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "box_answers.h"
#include "demo/test_bench_window.h"
#include "program_on_bench.h"
#include "ui/look.h"
#include "ui/picture_folder.h"
#include "ui/qt_picture_coder.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The demo: the program sweeping, with the window of its bench.
struct Demo : ProgramOnBench {
    /// Shows both windows and waits for the sweeps; false when there are none.
    [[nodiscard]] bool begin() {
        window().resize(1280, 750);
        bench.show();
        return run_until_sweeping() && QTest::qWaitForWindowExposed(&bench);
    }

    /// Chooses the next entry of `list` as a person does by key.
    void choose_next(const char* list) {
        auto* const box = widget<QComboBox>(list);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
    }

    [[nodiscard]] QCheckBox* fault(const char* name) {
        return bench.findChild<QCheckBox*>(QString::fromLatin1(name));
    }

    [[nodiscard]] std::size_t settings_saved() const {
        return static_cast<std::size_t>(std::count(files.written.begin(), files.written.end(),
                                                   "/settings/kv408/ConfigsLM4RX.TXT"));
    }

    TestBenchWindow bench{simulation.bench(), [this] { simulation.notice_faults(); }};
    bool sweeps = begin();
};

/// The further button of `box`, null where it has none.
QPushButton* extra_of(const QMessageBox& box) {
    return box.findChild<QPushButton*>(u"extraButton"_s);
}

/// The file dialog that is open, null without one.
QFileDialog* open_file_dialog() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const dialog = qobject_cast<QFileDialog*>(widget);
            dialog && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

/// Runs `action` once, as soon as `look` finds something.
template <typename Look>
class Once {
public:
    Once(Look look, std::function<void()> action)
        : look_(std::move(look)), action_(std::move(action)) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            if (look_() != nullptr) {
                timer_.stop();
                ran_ = true;
                action_();
            }
        });
        timer_.start(5);
    }

    [[nodiscard]] bool ran() const { return ran_; }

private:
    Look look_;
    std::function<void()> action_;
    QTimer timer_;
    bool ran_ = false;
};

/// What the window system tells a window whose close button is pressed.
void press_close_button(QWidget& window) {
    QCloseEvent event;
    QCoreApplication::sendEvent(window.windowHandle(), &event);
}

void save(QWidget& widget, const char* name) {
    QVERIFY(widget.grab().save(picture_folder() + u"/screenshot-"_s + QString::fromLatin1(name) +
                               u".png"_s));
}

class SilentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { apply_look(Look::dark); }
    void one_press_of_stop_ends_the_boxes();
    void escape_and_enter_press_ok_and_not_stop();
    void the_bench_can_be_used_beside_a_box();
    void the_panel_waits_for_the_box();
    void the_title_bar_closes_the_window_under_a_box_data();
    void the_title_bar_closes_the_window_under_a_box();
    void the_title_bar_closes_the_window_under_a_file_dialog();
    void sweeps_go_on_under_a_file_dialog();
    void a_box_over_a_file_dialog_is_answered_first();
    void silence_is_told_and_what_is_old_is_dimmed();
    void old_results_are_dimmed_under_an_empty_plot();
};

void SilentTest::one_press_of_stop_ends_the_boxes() {
    for (const char* const fault : {"no_power", "acknowledge_lost"}) {
        Demo on;
        QVERIFY(on.sweeps);
        QStringList texts;
        QTimer answer;
        connect(&answer, &QTimer::timeout, &answer, [&] {
            if (QMessageBox* const box = open_box()) {
                texts.append(box->text());
                QPushButton* const stop = extra_of(*box);
                if (texts.size() == 1) {
                    save(*box, "box-with-stop");
                }
                if (stop != nullptr && stop->text() == u"Stop"_s) {
                    QTest::mouseClick(stop, Qt::LeftButton);
                } else {
                    box->button(QMessageBox::Ok)->click();
                }
            }
        });
        answer.start(5);
        QTest::mouseClick(on.fault(fault), Qt::LeftButton);
        QVERIFY(on.fault(fault)->isChecked());
        // From "0.1V" to "50mV".
        on.choose_next("ch1vdiv");
        QTest::qWait(600);
        QCOMPARE(texts, QStringList{u"_SET AMP GAIN_Comm timed out"_s});
        QCOMPARE(on.panel().textstatus.text(), std::string("Stopped"));
        QTest::mouseClick(on.fault(fault), Qt::LeftButton);
        QTest::mouseClick(on.widget("cmdstartsweep"), Qt::LeftButton);
        QTRY_COMPARE(on.panel().textstatus.text(), std::string("Running"));
        QCOMPARE(texts.size(), 1);
    }
}

void SilentTest::escape_and_enter_press_ok_and_not_stop() {
    QtMessageBoxes boxes;
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        const Once pressed(open_box, [key] { QTest::keyClick(open_box(), key); });
        QCOMPARE(boxes.show({.text = "?", .extra_button = "Stop"}), MessageAnswer::ok);
    }
    const Once closed(open_box, [] { open_box()->close(); });
    QCOMPARE(boxes.show({.text = "?", .extra_button = "Stop"}), MessageAnswer::ok);
    const Once stopped(open_box, [] { extra_of(*open_box())->click(); });
    QCOMPARE(boxes.show({.text = "?", .extra_button = "Stop"}), MessageAnswer::extra);
    const Once dismissed(open_box, [&boxes] { boxes.dismiss(); });
    QCOMPARE(boxes.show({.text = "?", .extra_button = "Stop"}), MessageAnswer::ok);
}

void SilentTest::the_bench_can_be_used_beside_a_box() {
    Demo on;
    QVERIFY(on.sweeps);
    on.fault("acknowledge_lost")->click();
    // The fault is taken back while the first box is open: what comes next succeeds.
    bool taken_back = false;
    QStringList texts;
    QTimer answer;
    connect(&answer, &QTimer::timeout, &answer, [&] {
        if (QMessageBox* const box = open_box()) {
            if (texts.isEmpty()) {
                QTest::mouseClick(on.fault("acknowledge_lost"), Qt::LeftButton);
                const simulator::Faults& faults = on.simulation.bench().faults;
                taken_back = faults.acknowledge == simulator::AcknowledgeFault::none;
            }
            texts.append(box->text());
            box->button(QMessageBox::Ok)->click();
        }
    });
    answer.start(5);
    on.choose_next("ch1vdiv");
    QTest::qWait(500);
    QVERIFY(taken_back);
    // Only those of the one command that had failed by then.
    QCOMPARE(texts, (QStringList{u"_SET AMP GAIN_Comm timed out"_s, u"Error Sending Data."_s,
                                 u"Error Vold/div set"_s}));
    QTRY_COMPARE(on.panel().textstatus.text(), std::string("Running"));
    QCOMPARE(on.simulation.settings().range[0], 1);
}

void SilentTest::the_panel_waits_for_the_box() {
    Demo on;
    QVERIFY(on.sweeps);
    on.panel().mnusettings.click();
    bool grid = false;
    std::string state;
    bool settings_open = false;
    const Once opened(open_box, [&] {
        grid = on.panel().gridenable.checked();
        state = on.state();
        QTest::mouseClick(on.widget("gridenable"), Qt::LeftButton);
        QTest::keyClick(on.widget("gridenable"), Qt::Key_Space);
        QTest::mouseClick(on.widget("cmdstartsweep"), Qt::LeftButton);
        QTest::keyClick(&on.window(), Qt::Key_R, Qt::AltModifier);
        auto* const settings = on.widget("frmSettings");
        QTest::keyClick(settings, Qt::Key_Escape);
        press_close_button(*settings);
        settings_open = settings->isVisible();
        QCOMPARE(on.panel().gridenable.checked(), grid);
        QCOMPARE(on.state(), state);
        extra_of(*open_box())->click();
    });
    on.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    on.choose_next("ch1vdiv");
    QTRY_VERIFY(opened.ran());
    QVERIFY(settings_open);
    QTRY_COMPARE(on.panel().textstatus.text(), std::string("Stopped"));
    // And afterwards it does not.
    QTest::mouseClick(on.widget("gridenable"), Qt::LeftButton);
    QCOMPARE(on.panel().gridenable.checked(), !grid);
}

void SilentTest::the_title_bar_closes_the_window_under_a_box_data() {
    QTest::addColumn<bool>("powerless");
    QTest::newRow("no power") << true;
    QTest::newRow("acknowledge lost") << false;
}

void SilentTest::the_title_bar_closes_the_window_under_a_box() {
    QFETCH(bool, powerless);
    Demo on;
    QVERIFY(on.sweeps);
    const std::size_t saved = on.settings_saved();
    bool modal = true;
    const Once opened(open_box, [&] {
        // Nothing modal: the window system hands such a window no press of its close button.
        modal = QGuiApplication::modalWindow() != nullptr;
        press_close_button(on.window());
    });
    on.simulation.bench().faults.no_power = powerless;
    if (!powerless) {
        on.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
    }
    on.choose_next("ch1vdiv");
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(!modal);
    QVERIFY(on.program.scope().ended());
    QVERIFY(open_box() == nullptr);
    QCOMPARE(on.settings_saved(), saved + 1);
    QCOMPARE(on.log.operations.back().operation, simulator::Operation::close);
}

void SilentTest::the_title_bar_closes_the_window_under_a_file_dialog() {
    Demo on;
    QVERIFY(on.sweeps);
    bool modal = true;
    const Once opened(open_file_dialog, [&] {
        modal = QGuiApplication::modalWindow() != nullptr;
        press_close_button(on.window());
    });
    on.window().findChild<QAction*>(u"saveconfig"_s)->trigger();
    QTRY_COMPARE(on.closed, 1);
    QVERIFY(!modal);
    QVERIFY(open_file_dialog() == nullptr);
    QCOMPARE(on.log.operations.back().operation, simulator::Operation::close);
}

void SilentTest::sweeps_go_on_under_a_file_dialog() {
    for (const char* const time_div : {"20ns/div", "1us/div"}) {
        Demo on;
        QVERIFY(on.sweeps);
        const auto& entries = on.panel().seltimediv.entries();
        on.panel().seltimediv.set_index(static_cast<int>(
            std::find(entries.begin(), entries.end(), time_div) - entries.begin()));
        QTRY_COMPARE(on.panel().textstatus.text(), std::string("Running"));
        std::size_t frames = 0;
        const Once opened(open_file_dialog, [&] {
            const std::size_t before = on.log.frames.size();
            QTest::qWait(1000);
            frames = on.log.frames.size() - before;
            save(*open_file_dialog(), "file-dialog-over-sweep");
            QTest::keyClick(open_file_dialog(), Qt::Key_Escape);
        });
        QTest::qWait(300);
        on.program.scope().act([&] { on.panel().saveconfig.click(); });
        QVERIFY(opened.ran());
        QVERIFY2(frames >= 5, qPrintable(QString::number(frames)));
    }
}

void SilentTest::a_box_over_a_file_dialog_is_answered_first() {
    Demo on;
    QVERIFY(on.sweeps);
    bool dialog_was_blocked = false;
    const Once dialog(open_file_dialog, [&] {
        on.simulation.bench().faults.acknowledge = simulator::AcknowledgeFault::lost;
        on.program.scope().act([&] { on.panel().cmdstartsweep.click(); });
    });
    const Once box(open_box, [&] {
        QTest::keyClick(open_file_dialog(), Qt::Key_Escape);
        dialog_was_blocked = open_file_dialog() != nullptr;
        QTest::mouseClick(extra_of(*open_box()), Qt::LeftButton);
        QTimer::singleShot(50, qApp, [] { QTest::keyClick(open_file_dialog(), Qt::Key_Escape); });
    });
    on.program.scope().act([&] { on.panel().saveconfig.click(); });
    QVERIFY(box.ran());
    QVERIFY(dialog_was_blocked);
    QCOMPARE(on.state(), std::string("stoped"));
}

/// The mean brightness of `image` within `area`.
double brightness(const QImage& image, const QRect& area) {
    double sum = 0.0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            sum += qGray(image.pixel(x, y));
        }
    }
    return sum / (area.width() * area.height());
}

/// How bright what people see of the results is, one value each: as it stands on the screen, after
/// whatever was painted anew.
std::vector<double> brightness_of_results(Demo& on) {
    const QImage seen = on.window().screen()->grabWindow(on.window().winId()).toImage();
    std::vector<double> values;
    for (const char* const name : {"lblMeas(0)", "txtMeasCH1(0)", "txtMeasCH2(0)", "txtMeasCH1(2)",
                                   "txtMeasCH2(2)", "lblMeas(2)"}) {
        const QWidget& label = *on.widget(name);
        values.push_back(
            brightness(seen, QRect(label.mapTo(&on.window(), QPoint()), label.size())));
    }
    return values;
}

/// The same of results that are new, once there are any.
std::vector<double> brightness_of_new_results(Demo& on) {
    const auto known = [&on](const char* name) {
        return on.widget<QLabel>(name)->text().trimmed().endsWith(u"Hz"_s);
    };
    if (!QTest::qWaitFor([&] { return known("txtMeasCH1(2)") && known("txtMeasCH2(2)"); })) {
        return {};
    }
    QTest::qWait(50);
    return brightness_of_results(on);
}

/// Every one of `dim` is less than six tenths of what it is in `bright`.
bool all_dimmed(const std::vector<double>& dim, const std::vector<double>& bright) {
    return std::equal(dim.begin(), dim.end(), bright.begin(), bright.end(),
                      [](double now, double before) { return now < 0.6 * before; });
}

void SilentTest::silence_is_told_and_what_is_old_is_dimmed() {
    Demo on;
    QVERIFY(on.sweeps);
    auto* const line = on.widget<QLabel>("lblNoData");
    QVERIFY(!line->isVisible());
    const auto plot = [&on] { return on.window().plot().grab().toImage(); };
    const auto results = [&on] { return on.widget("picMeasure")->grab().toImage(); };
    const QImage bright_results = results();
    const double bright_plot = brightness(plot(), plot().rect());
    const std::vector<double> bright_values = brightness_of_new_results(on);
    const QRect status_place = on.widget("textstatus")->geometry();
    on.fault("no_power")->click();
    QTRY_VERIFY(line->isVisible());
    QVERIFY2(line->text().startsWith(u"No data for "_s), qPrintable(line->text()));
    QVERIFY(line->text().endsWith(u" s"_s));
    QVERIFY(line->parentWidget()->rect().contains(line->geometry()));
    QCOMPARE(on.panel().textstatus.text(), std::string("Running"));
    QCOMPARE(on.widget("textstatus")->geometry(), status_place);
    for (int times = 0; times < 4; ++times) {
        QTest::qWait(250);
        QVERIFY(all_dimmed(brightness_of_results(on), bright_values));
    }
    save(on.window(), "no-data");
    QVERIFY(brightness(plot(), plot().rect()) < 0.8 * bright_plot);
    QVERIFY(brightness(results(), results().rect()) <
            0.8 * brightness(bright_results, bright_results.rect()));
    // What is copied is as bright as ever.
    const auto& picture = on.program.scope().picture().surface();
    QCOMPARE(brightness(image_of(picture), image_of(picture).rect()) > 0.5 * bright_plot, true);
    on.fault("no_power")->click();
    QTRY_VERIFY(!line->isVisible());
    QTRY_COMPARE(results().size(), bright_results.size());
    // The first data after a silence may still lack a channel.
    QTRY_VERIFY(brightness(plot(), plot().rect()) > 0.9 * bright_plot);
    QTRY_VERIFY(!all_dimmed(brightness_of_results(on), bright_values));
    QTRY_VERIFY(brightness(results(), results().rect()) >
                0.9 * brightness(bright_results, bright_results.rect()));
}

void SilentTest::old_results_are_dimmed_under_an_empty_plot() {
    Demo on;
    QVERIFY(on.sweeps);
    auto* const results = on.widget("picMeasure");
    const QImage bright = results->grab().toImage();
    const std::vector<double> bright_values = brightness_of_new_results(on);
    on.fault("no_trigger")->click();
    QTRY_COMPARE(on.panel().textstatus.text(), std::string("Waiting For TRIGGER"));
    QTest::qWait(150);
    const QImage dim = results->grab().toImage();
    QVERIFY(brightness(dim, dim.rect()) < 0.8 * brightness(bright, bright.rect()));
    for (int times = 0; times < 3; ++times) {
        QTest::qWait(250);
        QVERIFY(all_dimmed(brightness_of_results(on), bright_values));
    }
    QVERIFY(!on.widget("lblNoData")->isVisible());
    save(on.window(), "old-results");
    on.fault("no_trigger")->click();
    QTRY_COMPARE(on.panel().textstatus.text(), std::string("Running"));
    QTest::qWait(300);
    const QImage again = results->grab().toImage();
    QVERIFY(brightness(again, again.rect()) > 0.9 * brightness(bright, bright.rect()));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::SilentTest)
#include "silent_test.moc"
