// Nothing of a tool's window is cut off, whatever it tells, how large the letters are and how small
// the screen is.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include "cut_off.h"
#include "program_on_bench.h"
#include "scope/tools.h"
#include "text_size.h"
#include "tool_entries.h"
#include "ui/lengths.h"
#include "ui/spectrum_plot.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The program with one tool's window.
struct OneTool : ProgramOnBench {
    /// Opens the window `name` with the menu entry `entry`; null where it does not come.
    [[nodiscard]] QWidget* open(const char* entry, const char* name) {
        if (!run_until_sweeping()) {
            return nullptr;
        }
        widget<QAction>(entry)->trigger();
        auto* const found = window().findChild<QWidget*>(QString::fromLatin1(name));
        return found != nullptr && QTest::qWaitForWindowExposed(found) ? found : nullptr;
    }
};

QString size_text(QSize size) {
    return u": %1x%2"_s.arg(size.width()).arg(size.height());
}

/// The letters after `&` in `window`, in lower case.
QStringList tool_mnemonics(const QWidget& window) {
    QStringList texts;
    for (const QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        texts.append(button->text());
    }
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            texts.append(label->text());
        }
    }
    QStringList letters;
    for (const QString& text : texts) {
        const qsizetype sign = text.indexOf(u'&');
        if (sign >= 0) {
            letters.append(text.mid(sign + 1, 1).toLower());
        }
    }
    letters.sort();
    return letters;
}

class ToolLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values_stay_whole_while_texts_grow();
    void none_gets_wider_once_it_is_placed();
    void clipping_takes_nothing_from_the_readouts();
    void a_high_window_grows_with_its_texts();
    void small_screens_have_room();
    void large_letters_leave_the_buttons_in_sight();
    void mnemonics_are_unique();
    void frequencies_at_the_axis_do_not_touch();
    void each_peak_of_the_spectrum_has_a_line();
};

void ToolLayoutTest::values_stay_whole_while_texts_grow() {
    OneTool on;
    for (const auto& [entry, window, operated] : tool_entries) {
        QWidget* const tool = on.open(entry, window);
        QVERIFY2(tool != nullptr, window);
        QTRY_COMPARE(cut_off(*tool).join(u'\n'), QString());
        // As low as it may be: no room is spare.
        tool->resize(tool->minimumSizeHint());
        QApplication::processEvents();
        QTRY_COMPARE(cut_off(*tool).join(u'\n'), QString());
        for (QLabel* const label : tool->findChildren<QLabel*>()) {
            if (label->wordWrap() && label->isVisibleTo(tool)) {
                label->setText(
                    u"What is to be known of it takes more than one line. "_s.repeated(3));
            }
        }
        QApplication::processEvents();
        QTRY_COMPARE(cut_off(*tool).join(u'\n'), QString());
        tool->hide();
    }
}

void ToolLayoutTest::none_gets_wider_once_it_is_placed() {
    OneTool on;
    QVERIFY(on.run_until_sweeping());
    for (const auto& [entry, window, operated] : tool_entries) {
        on.widget<QAction>(entry)->trigger();
        auto* const tool = on.window().findChild<QWidget*>(QString::fromLatin1(window));
        QVERIFY2(tool != nullptr, window);
        const int width = tool->width();
        QVERIFY(QTest::qWaitForWindowExposed(tool));
        QTest::qWait(20);
        QVERIFY2(tool->width() == width, qPrintable(described(*tool) + size_text(tool->size())));
        tool->hide();
    }
}

void ToolLayoutTest::clipping_takes_nothing_from_the_readouts() {
    OneTool on;
    QWidget* const window = on.open("mnureadouts", "frmReadouts");
    QVERIFY(window != nullptr);
    on.program.scope().act([&] { on.panel().tabstrip3.select(2); }); // the time cursors
    auto* const values = on.widget<QLabel>("lblReadoutsValues");
    auto* const clipping = on.widget<QLabel>("lblReadoutsClipping");
    QTRY_COMPARE(values->text().count(u'\n'), 7);
    QCOMPARE(clipping->text(), u"Nothing clips"_s);
    for (auto& source : on.simulation.bench().sources) {
        source.amplitude_mvpp = 6000.0;
    }
    QTRY_COMPARE_WITH_TIMEOUT(clipping->text().count(u'\n'), 1, 60'000);
    QTRY_VERIFY(clipping->height() >= clipping->heightForWidth(clipping->width()));
    QVERIFY(values->height() >= values->sizeHint().height());
}

void ToolLayoutTest::a_high_window_grows_with_its_texts() {
    OneTool on;
    QWidget* const mask = on.open("mnumask", "frmMask");
    QVERIFY(mask != nullptr);
    QTest::qWait(20);
    const QSize before = mask->size();
    const std::string line = "What falsifies the values takes several lines in this window. ";
    on.program.scope().tools().mask().controls().lblMaskRemark.set_caption(
        line + line + line + line + line + line + line);
    QTRY_VERIFY(mask->height() > before.height());
    QTest::qWait(20);
    const auto* const area = mask->findChild<QScrollArea*>();
    QVERIFY(!area->verticalScrollBar()->isVisible() && !area->horizontalScrollBar()->isVisible());
    QCOMPARE(mask->width(), before.width());
    // Who has made it smaller scrolls.
    mask->resize(mask->minimumSizeHint());
    QTRY_VERIFY(area->verticalScrollBar()->isVisible());
    QTRY_VERIFY(!area->horizontalScrollBar()->isVisible());
}

void ToolLayoutTest::small_screens_have_room() {
    OneTool on;
    for (const auto& [entry, window, operated] : tool_entries) {
        QWidget* const tool = on.open(entry, window);
        QVERIFY2(tool != nullptr, window);
        // 1024x600 less the desktop's own bars.
        const QSize least = tool->minimumSizeHint();
        QVERIFY2(least.width() <= 1024 && least.height() <= 600 - 2 * title_bar_height,
                 qPrintable(described(*tool) + size_text(least)));
        tool->resize(least);
        QApplication::processEvents();
        QTRY_COMPARE(cut_off(*tool).join(u'\n'), QString());
        save_picture(*tool, QString::fromLatin1(window) + u"-least"_s);
        // What the keyboard goes to comes into sight.
        for (QWidget* const widget : tool->findChildren<QWidget*>()) {
            if (widget->isVisible() && widget->isEnabled() &&
                (widget->focusPolicy() & Qt::TabFocus) != 0 &&
                qobject_cast<QAbstractScrollArea*>(widget) == nullptr) {
                widget->setFocus(Qt::TabFocusReason);
                QVERIFY2(widget->visibleRegion().boundingRect() == widget->rect(),
                         qPrintable(described(*widget)));
            }
        }
        tool->hide();
    }
}

void ToolLayoutTest::large_letters_leave_the_buttons_in_sight() {
    const TextSize text(150);
    OneTool on;
    for (const auto& [entry, window, operated] : tool_entries) {
        QWidget* const tool = on.open(entry, window);
        QVERIFY2(tool != nullptr, window);
        // 1280x800 less the desktop's own bars.
        const QSize least = tool->minimumSizeHint();
        QVERIFY2(least.width() <= 1280 && least.height() <= 800 - 2 * title_bar_height,
                 qPrintable(described(*tool) + size_text(least)));
        tool->resize(least);
        QApplication::processEvents();
        QTRY_COMPARE(cut_off(*tool).join(u'\n'), QString());
        save_picture(*tool, QString::fromLatin1(window) + u"-large-letters"_s);
        for (const QPushButton* const button : tool->findChildren<QPushButton*>()) {
            QVERIFY2(!button->objectName().endsWith(u"Close"_s) ||
                         button->visibleRegion().boundingRect() == button->rect(),
                     qPrintable(described(*button)));
        }
        tool->hide();
    }
}

void ToolLayoutTest::mnemonics_are_unique() {
    OneTool on;
    for (const auto& [entry, window, operated] : tool_entries) {
        QWidget* const tool = on.open(entry, window);
        QVERIFY2(tool != nullptr, window);
        QStringList letters = tool_mnemonics(*tool);
        QVERIFY2(!letters.isEmpty(), window);
        const QString all = letters.join(QString());
        letters.removeDuplicates();
        QVERIFY2(all == letters.join(QString()), qPrintable(described(*tool) + all));
        tool->hide();
    }
}

void ToolLayoutTest::frequencies_at_the_axis_do_not_touch() {
    OneTool on;
    QVERIFY(on.open("mnuspectrum", "frmSpectrum") != nullptr);
    const auto* const plot =
        dynamic_cast<const SpectrumPlot*>(on.widget("picSpectrum")); // it has no meta object
    QVERIFY(plot != nullptr);
    on.widget<QCheckBox>("chkSpectrumLog")->click();
    ListBox& times = on.panel().seltimediv;
    for (const std::string time : {"10ns/div", "20ns/div", "50ns/div", "100ns/div", "200ns/div"}) {
        const auto place = std::find(times.entries().begin(), times.entries().end(), time);
        on.program.scope().act(
            [&] { times.set_index(static_cast<int>(place - times.entries().begin())); });
        QCOMPARE(times.text(), time);
        const auto before = on.program.scope().parts().sweeps.last_complete()->number;
        QTRY_VERIFY_WITH_TIMEOUT(
            on.program.scope().parts().sweeps.last_complete()->number > before + 2, 60'000);
        const auto texts = plot->frequency_texts();
        QVERIFY(texts.size() >= 2);
        for (std::size_t next = 1; next < texts.size(); ++next) {
            QVERIFY2(texts[next - 1].place.right() + 4 <= texts[next].place.left(),
                     qPrintable(QString::fromStdString(time) + u' ' + texts[next - 1].text + u' ' +
                                texts[next].text));
        }
    }
}

void ToolLayoutTest::each_peak_of_the_spectrum_has_a_line() {
    OneTool on;
    QVERIFY(on.open("mnuspectrum", "frmSpectrum") != nullptr);
    auto* const peaks = on.widget<QLabel>("lblSpectrumPeaks");
    QTRY_VERIFY(!peaks->text().isEmpty());
    QTest::qWait(20);
    for (const int count : {1, 2, 5}) {
        peaks->setText(u"123.456MHz   -116.77 dBV\n"_s.repeated(count).chopped(1));
        QTest::qWait(20);
        QVERIFY2(peaks->heightForWidth(peaks->width()) <
                     (count + 1) * peaks->fontMetrics().height(),
                 qPrintable(size_text(peaks->size())));
    }
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::ToolLayoutTest)
#include "tool_layout_test.moc"
