// Each kind of widget and its control, both ways.

#include <QPushButton>
#include <QTest>

#include "entered.h"
#include "ui/bind.h"
#include "ui/colours.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

class BindTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_click_presses_the_button_once();
    void a_click_checks_the_box_and_code_shows_in_it();
    void one_of_several_options_is_chosen();
    void choosing_in_a_list_reaches_the_control_also_the_same_entry();
    void a_list_set_from_code_shows_and_runs_its_handler_once();
    void a_list_takes_new_entries();
    void a_list_shows_what_a_stranger_made_of_it_without_obeying();
    void typing_enter_and_focus_reach_the_text_box();
    void focus_that_goes_to_a_popup_is_no_leaving();
    void a_read_only_box_only_shows();
    void a_label_shows_caption_colours_and_visibility();
    void a_slider_goes_both_ways();
    void of_moves_that_wait_the_last_one_counts();
    void what_comes_after_a_move_finds_it_done();
    void tabs_come_go_and_are_chosen();
    void a_menu_entry_presses_its_button();
    void a_menu_entry_with_a_check_mark_shows_its_box();
    void a_text_that_cannot_be_taken_is_marked();
    void a_control_outlives_its_widget();
};

void BindTest::a_click_presses_the_button_once() {
    Entered entered;
    Button control("cmdstop");
    int clicks = 0;
    control.on_click([&] { ++clicks; });
    QPushButton widget(u"Stop"_s);
    bind(&widget, control, entered.driver);
    QCOMPARE(widget.objectName(), u"cmdstop"_s);
    QTest::mouseClick(&widget, Qt::LeftButton);
    QCOMPARE(clicks, 1);
    control.set_enabled(false);
    QVERIFY(!widget.isEnabled());
    QTest::mouseClick(&widget, Qt::LeftButton);
    QCOMPARE(clicks, 1);
    QCOMPARE(widget.text(), u"Stop"_s);
    control.set_caption("Halt");
    QCOMPARE(widget.text(), u"Halt"_s);
}

void BindTest::a_click_checks_the_box_and_code_shows_in_it() {
    Entered entered;
    CheckBox control("eyeon");
    int runs = 0;
    control.on_click([&] { ++runs; });
    QCheckBox widget;
    bind(&widget, control, entered.driver);
    widget.click();
    QVERIFY(control.checked());
    QCOMPARE(runs, 1);
    control.set_checked(false);
    QVERIFY(!widget.isChecked());
    QCOMPARE(runs, 2);
}

void BindTest::one_of_several_options_is_chosen() {
    Entered entered;
    OptionButton first("optColor(0)");
    OptionButton second("optColor(1)");
    first.set_caption("CH1 trace");
    first.on_click([&] { second.clear(); });
    second.on_click([&] { first.clear(); });
    QWidget group;
    auto* const upper = new QRadioButton(&group);
    auto* const lower = new QRadioButton(&group);
    bind(upper, first, entered.driver);
    bind(lower, second, entered.driver);
    QCOMPARE(upper->objectName(), u"optColor(0)"_s);
    QCOMPARE(upper->text(), u"CH1 trace"_s);
    upper->click();
    QVERIFY(first.checked() && upper->isChecked());
    lower->click();
    QVERIFY(second.checked() && lower->isChecked());
    QVERIFY(!first.checked() && !upper->isChecked());
    first.choose();
    QVERIFY(upper->isChecked() && !lower->isChecked());
}

void BindTest::choosing_in_a_list_reaches_the_control_also_the_same_entry() {
    Entered entered;
    ListBox control("trigeredge");
    control.set_entries({"Positive", "Negative"});
    int runs = 0;
    control.on_click([&] { ++runs; });
    QComboBox widget;
    bind(&widget, control, entered.driver);
    QCOMPARE(widget.currentIndex(), -1);
    QTest::keyClick(&widget, Qt::Key_Down);
    QCOMPARE(control.index(), 0);
    QTest::keyClick(&widget, Qt::Key_Down);
    QCOMPARE(control.index(), 1);
    QCOMPARE(runs, 2);
    Q_EMIT widget.activated(1);
    QCOMPARE(runs, 3);
}

void BindTest::a_list_set_from_code_shows_and_runs_its_handler_once() {
    Entered entered;
    ListBox control("trigeredge");
    QComboBox widget;
    bind(&widget, control, entered.driver);
    control.set_entries({"Positive", "Negative"});
    int runs = 0;
    control.on_click([&] { ++runs; });
    control.set_index(1);
    QCOMPARE(widget.currentText(), u"Negative"_s);
    QCOMPARE(runs, 1);
    control.set_index(-1);
    QCOMPARE(widget.currentIndex(), -1);
}

void BindTest::a_list_takes_new_entries() {
    Entered entered;
    ListBox control("cmbDevice");
    control.set_entries({"one", "two"});
    QComboBox widget;
    bind(&widget, control, entered.driver);
    control.set_entries({"one", "three", "four"});
    QCOMPARE(widget.count(), 3);
    QCOMPARE(widget.itemText(1), u"three"_s);
}

void BindTest::a_list_shows_what_a_stranger_made_of_it_without_obeying() {
    Entered entered;
    ListBox control("cmbDevice");
    QComboBox widget;
    bind(&widget, control, entered.driver);
    const std::string forged = "lm4rxa1\x1B\nx\xE2\x80\xAE\xFF";
    control.set_entries({"lm4rxa0SERIAL1", "M\xC3\xA4rz", forged});
    QCOMPARE(widget.itemText(0), u"lm4rxa0SERIAL1"_s);
    QCOMPARE(widget.itemText(1), u"M\u00E4rz"_s);
    QCOMPARE(widget.itemText(2), uR"(lm4rxa1\x1b\x0ax\xe2\x80\xae\xff)"_s);
    QTest::keyClick(&widget, Qt::Key_End);
    QCOMPARE(control.text(), forged);
}

void BindTest::typing_enter_and_focus_reach_the_text_box() {
    Entered entered;
    TextBox control("psofsetch1");
    control.set_text("1");
    QStringList heard;
    control.on_change([&] { heard.append(u"change "_s + QString::fromStdString(control.text())); });
    control.on_enter([&] { heard.append(u"enter"_s); });
    control.on_focus([&] { heard.append(u"focus"_s); });
    control.on_leave([&] { heard.append(u"leave"_s); });
    QLineEdit widget;
    bind(&widget, control, entered.driver);
    QFocusEvent in(QEvent::FocusIn, Qt::MouseFocusReason);
    QCoreApplication::sendEvent(&widget, &in);
    widget.end(false);
    QTest::keyClick(&widget, Qt::Key_2);
    QTest::keyClick(&widget, Qt::Key_Return);
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&widget, &out);
    QCOMPARE(heard, (QStringList{u"focus"_s, u"change 12"_s, u"enter"_s, u"leave"_s}));
    control.set_text("77");
    QCOMPARE(widget.text(), u"77"_s);
}

void BindTest::focus_that_goes_to_a_popup_is_no_leaving() {
    Entered entered;
    TextBox control("psofsetch1");
    int left = 0;
    control.on_leave([&] { ++left; });
    QLineEdit widget;
    bind(&widget, control, entered.driver);
    for (const Qt::FocusReason reason :
         {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::MenuBarFocusReason}) {
        QFocusEvent out(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(&widget, &out);
    }
    QCOMPARE(left, 0);
    QFocusEvent out(QEvent::FocusOut, Qt::MouseFocusReason);
    QCoreApplication::sendEvent(&widget, &out);
    QCOMPARE(left, 1);
}

void BindTest::a_read_only_box_only_shows() {
    Entered entered;
    TextBox control("textstatus");
    QLineEdit widget;
    widget.setReadOnly(true);
    bind(&widget, control, entered.driver);
    control.set_back_colour(rgb(192, 255, 192));
    control.set_text("Running");
    QCOMPARE(widget.text(), u"Running"_s);
    QCOMPARE(widget.palette().color(QPalette::Base), QColor(192, 255, 192));
    QVERIFY(contrast(widget.palette().color(QPalette::Text), QColor(192, 255, 192)) > 7.0);
    QTest::keyClick(&widget, Qt::Key_X);
    QCOMPARE(control.text(), std::string("Running"));
}

void BindTest::a_label_shows_caption_colours_and_visibility() {
    Label control("tdivtext");
    QWidget parent;
    auto* const widget = new QLabel(&parent);
    bind(widget, control);
    parent.show();
    control.set_caption("20ns/div");
    control.set_fore_colour(rgb(1, 2, 3));
    QCOMPARE(widget->text(), u"20ns/div"_s);
    QCOMPARE(widget->palette().color(QPalette::WindowText), QColor(1, 2, 3));
    control.set_visible(false);
    QVERIFY(!widget->isVisible());
    control.set_visible(true);
    QVERIFY(widget->isVisible());
}

void BindTest::a_slider_goes_both_ways() {
    Entered entered;
    Slider control("shyst", 0, 255, 10);
    QSlider widget(Qt::Horizontal);
    bind(&widget, control, entered.driver);
    QCOMPARE(widget.maximum(), 255);
    QCOMPARE(widget.value(), 10);
    QTest::keyClick(&widget, Qt::Key_Right);
    QCOMPARE(control.value(), 11);
    int runs = 0;
    control.on_change([&] { ++runs; });
    control.set_value(200);
    QCOMPARE(widget.value(), 200);
    QCOMPARE(runs, 1);
}

void BindTest::of_moves_that_wait_the_last_one_counts() {
    Entered entered;
    Slider control("shyst", 0, 255, 10);
    std::vector<int> values;
    control.on_change([&] { values.push_back(control.value()); });
    QSlider widget(Qt::Horizontal);
    bind(&widget, control, entered.driver, Moves::last_of_the_waiting);
    const auto press = [&widget](int times) {
        for (int time = 0; time < times; ++time) {
            QCoreApplication::postEvent(&widget,
                                        new QKeyEvent(QEvent::KeyPress, Qt::Key_Right, {}));
        }
    };
    press(20);
    QTRY_COMPARE(values, std::vector<int>{30});
    // What is pressed while a move is being handled waits in its turn.
    control.on_change([&] {
        values.push_back(control.value());
        if (values.size() == 2) {
            press(5);
        }
    });
    press(1);
    QTRY_COMPARE(values, (std::vector<int>{30, 31, 36}));
    QCOMPARE(widget.value(), 36);
}

void BindTest::what_comes_after_a_move_finds_it_done() {
    Entered entered;
    Slider first("shyst", 0, 255, 10);
    Slider second("persist", 0, 255, 10);
    QSlider first_widget(Qt::Horizontal);
    QSlider second_widget(Qt::Horizontal);
    bind(&first_widget, first, entered.driver, Moves::last_of_the_waiting);
    bind(&second_widget, second, entered.driver, Moves::last_of_the_waiting);
    first_widget.setValue(50);
    QCOMPARE(first.value(), 10);
    int seen = 0;
    entered.driver.act([&] { seen = first.value(); });
    QCOMPARE(seen, 50);
    first_widget.setValue(60);
    second_widget.setValue(70);
    QCOMPARE(first.value(), 60);
    QCOMPARE(second.value(), 10);
    entered.driver.tick();
    QCOMPARE(second.value(), 70);
    // A control that has gone to another value since is not set back.
    entered.driver.act([&] { second.set_value(80); });
    QCoreApplication::processEvents();
    QCOMPARE(second.value(), 80);
}

void BindTest::tabs_come_go_and_are_chosen() {
    Entered entered;
    TabStrip control("TabStrip2");
    control.add({"CH1", "CH1"});
    QTabBar widget;
    bind(&widget, control, entered.driver);
    int runs = 0;
    control.on_click([&] { ++runs; });
    control.add({"HPOS", "Hor. Position"});
    QCOMPARE(widget.count(), 2);
    QCOMPARE(widget.tabText(1), u"Hor. Position"_s);
    QCOMPARE(widget.currentIndex(), 0);
    widget.show();
    QTest::mouseClick(&widget, Qt::LeftButton, {}, widget.tabRect(1).center());
    QCOMPARE(control.selected_key(), std::string("HPOS"));
    QCOMPARE(runs, 1);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, widget.tabRect(1).center());
    QCOMPARE(runs, 2);
    control.remove(2);
    QCOMPARE(widget.count(), 1);
    QCOMPARE(runs, 2);
}

void BindTest::a_menu_entry_presses_its_button() {
    Entered entered;
    Button control("MenuExit");
    int clicks = 0;
    control.on_click([&] { ++clicks; });
    QAction action;
    bind(&action, control, entered.driver);
    action.trigger();
    QCOMPARE(clicks, 1);
    control.set_enabled(false);
    QVERIFY(!action.isEnabled());
}

void BindTest::a_menu_entry_with_a_check_mark_shows_its_box() {
    Entered entered;
    CheckBox control("cmdcaloofset");
    QList<bool> seen;
    control.on_click([&] { seen.append(control.checked()); });
    QAction action;
    bind(&action, control, entered.driver);
    QCOMPARE(action.objectName(), u"cmdcaloofset"_s);
    QVERIFY(action.isCheckable() && !action.isChecked());
    action.trigger();
    QVERIFY(control.checked());
    control.put_checked(false);
    QVERIFY(!action.isChecked());
    action.trigger();
    action.trigger();
    QVERIFY(!control.checked());
    QCOMPARE(seen, (QList<bool>{true, true, false}));
    control.set_enabled(false);
    QVERIFY(!action.isEnabled());
}

void BindTest::a_text_that_cannot_be_taken_is_marked() {
    Entered entered;
    TextBox control("cald(0)");
    QLineEdit widget;
    bind(&widget, control, entered.driver);
    const QPalette usual = widget.palette();
    control.set_faulty(true);
    QCOMPARE(widget.palette().color(QPalette::Base), QColor(255, 192, 192));
    QVERIFY(contrast(widget.palette().color(QPalette::Text), QColor(255, 192, 192)) > 7.0);
    control.set_faulty(false);
    QCOMPARE(widget.palette().color(QPalette::Base), usual.color(QPalette::Base));
}

void BindTest::a_control_outlives_its_widget() {
    Label control("lblDate");
    {
        QLabel widget;
        bind(&widget, control);
        control.set_caption("now");
        QCOMPARE(widget.text(), u"now"_s);
    }
    control.set_caption("later");
    QCOMPARE(control.caption(), std::string("later"));
}

} // namespace
} // namespace kv408::ui

QTEST_MAIN(kv408::ui::BindTest)
#include "bind_test.moc"
