#include "panel_walk.h"

#include <array>

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTest>

#include "display/box_geometry.h"
#include "panel_walk_view.h"
#include "scope/panel_agreement.h"
#include "scope/set_up_agreement.h"
#include "ui/marker.h"
#include "ui/wheel_widget.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// A box holds what was typed and has not been entered yet.
bool being_typed_into(const QWidget& window, const char* name) {
    // Also while another window is in front, which is no leaving.
    return window.focusWidget() != nullptr &&
           window.focusWidget()->objectName() == QString::fromLatin1(name);
}

/// As the window system does with a window that is clicked into.
void bring_to_front(QWidget& widget) {
    QWidget& window = *widget.window();
    // A window counts as active while a dialog of its own is.
    const auto in_front = [&window] { return QApplication::activeWindow() == &window; };
    if (!in_front()) {
        window.activateWindow();
        static_cast<void>(QTest::qWaitFor(in_front));
    }
}

} // namespace

PanelWalk::PanelWalk(unsigned seed) : random_(seed) {
    simulation_.set_calibrated();
    simulator::silence(simulation_.bench());
    QObject::connect(&file_dialogs_, &QTimer::timeout, &file_dialogs_,
                     [this] { cancel_file_dialogs(); });
    file_dialogs_.start(5);
    MainWindow& window = program_.window();
    timer_ = window.findChild<QTimer*>(u"Timer1"_s);
    // Only the walk lets it tick.
    timer_->blockSignals(true);
    window.resize(1280, 800);
    window.show();
    window.activateWindow();
    ready_ = QTest::qWaitForWindowExposed(&window) &&
             QTest::qWaitFor([this] { return program_.scope().parts().program.loaded; });
    timer_->stop();
    timer_->blockSignals(false);
    settle();
}

int PanelWalk::random(int lowest, int highest) {
    return std::uniform_int_distribution<int>(lowest, highest)(random_);
}

void PanelWalk::note(const QString& what) {
    constexpr qsizetype most = 40;
    done_.append(what);
    if (done_.size() > most) {
        done_.removeFirst();
    }
}

void PanelWalk::ticks(int count) {
    for (; count > 0; --count) {
        constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
        clock_.advance(interval - clock_.now() % interval);
        QMetaObject::invokeMethod(timer_, "timeout");
        QCoreApplication::processEvents();
    }
}

void PanelWalk::settle() {
    QWidget& window = program_.window();
    bring_to_front(window);
    // What is still being typed is entered by leaving the box.
    window.setFocus(Qt::OtherFocusReason);
    // A start uploads everything; what is being swept must have been uploaded without it.
    const AcquisitionState& acquisition = program_.scope().parts().acquisition;
    if (!acquisition.acqrunning || acquisition.scopestate == "calibrationint") {
        QTest::mouseClick(window.findChild<QWidget*>(u"cmdstartsweep"_s), Qt::LeftButton);
    }
    ticks(8);
}

void PanelWalk::step() {
    const bool agree = chance(70);
    answers_.agree = agree ? QList{QMessageBox::Ok, QMessageBox::Yes}
                           : QList{QMessageBox::Cancel, QMessageBox::No, QMessageBox::Ok};
    const int what = random(1, 100);
    if (what <= 6) {
        bring_to_front(program_.window());
        choose_from_menu();
    } else if (what <= 14) {
        bring_to_front(program_.window());
        drag_cursor();
    } else {
        QWidget* const window = any_window();
        bring_to_front(*window);
        if (QWidget* const widget = any_widget(*window)) {
            operate(*widget);
        }
    }
    ticks(chance(30) ? random(2, 6) : 1);
}

QWidget* PanelWalk::any_window() {
    MainWindow& window = program_.window();
    auto* const settings = window.findChild<SettingsWindow*>(u"frmSettings"_s);
    auto* const calibration = window.findChild<QWidget*>(u"frmcalibration"_s);
    if (settings != nullptr && settings->isVisible() && chance(25)) {
        return settings;
    }
    if (calibration != nullptr && calibration->isVisible() && chance(20)) {
        return calibration;
    }
    return window.centralWidget();
}

QWidget* PanelWalk::any_widget(QWidget& window) {
    // Besides the controls the markers that can be dragged.
    QStringList operable = {u"ch1text"_s, u"ch2text"_s, u"trigertext"_s};
    Scope& scope = program_.scope();
    for (const ControlList* const list :
         {&scope.panel().all, &scope.settings_dialog().controls().all,
          &scope.calibration_form().all}) {
        for (const Control* const control : *list) {
            if (control->about().outside != Outside::read) {
                operable.append(QString::fromStdString(control->name()));
            }
        }
    }
    QList<QWidget*> usable;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (operable.contains(widget->objectName()) && widget->isVisible() && widget->isEnabled()) {
            usable.append(widget);
        }
    }
    return usable.isEmpty() ? nullptr : usable.at(random(0, static_cast<int>(usable.size()) - 1));
}

void PanelWalk::operate(QWidget& widget) {
    note(widget.objectName());
    if (auto* const list = qobject_cast<QComboBox*>(&widget)) {
        choose_entry(*list);
    } else if (auto* const box = qobject_cast<QLineEdit*>(&widget)) {
        type_into(*box);
    } else if (auto* const slider = qobject_cast<QSlider*>(&widget)) {
        move_slider(*slider);
    } else if (auto* const tabs = qobject_cast<QTabBar*>(&widget)) {
        choose_tab(*tabs);
    } else if (dynamic_cast<WheelWidget*>(&widget) != nullptr) {
        turn_wheel(widget);
    } else if (dynamic_cast<Marker*>(&widget) != nullptr) {
        drag(widget, widget.rect().center(), {3, 120});
    } else if (qobject_cast<QCheckBox*>(&widget) != nullptr ||
               qobject_cast<QRadioButton*>(&widget) != nullptr) {
        chance(70) ? click(widget, {9, widget.height() / 2})
                   : QTest::keyClick(&widget, Qt::Key_Space);
    } else {
        click(widget, widget.rect().center());
    }
}

void PanelWalk::click(QWidget& widget, QPoint place) {
    Mouse mouse(widget);
    mouse.press(widget, place);
    mouse.release();
}

void PanelWalk::choose_entry(QComboBox& list) {
    switch (random(0, 2)) {
    case 0: {
        constexpr std::array keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
        const Qt::Key key = keys.at(static_cast<std::size_t>(random(0, 3)));
        list.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&list, key);
        break;
    }
    case 1: {
        const QPoint place = list.rect().center();
        const int notches = chance(50) ? 120 : -120;
        list.setFocus(Qt::TabFocusReason);
        QWheelEvent event(place, list.mapToGlobal(place), {}, {0, notches}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&list, &event);
        break;
    }
    default: {
        const int entry = random(0, list.count() - 1);
        QTest::mouseClick(&list, Qt::LeftButton);
        const auto place = list.view()->visualRect(list.model()->index(entry, 0)).center();
        QTest::mouseMove(list.view()->viewport(), place);
        QTest::mouseClick(list.view()->viewport(), Qt::LeftButton, {}, place);
        list.hidePopup();
        break;
    }
    }
    note(u"  -> "_s + list.currentText());
}

void PanelWalk::type_into(QLineEdit& box) {
    const QStringList texts = {u"0"_s, u"-5"_s, u"120"_s, u"70000"_s, u"x"_s, u"9"_s, {}};
    const QString text = chance(50) ? QString::number(random(0, 65535)) : texts.at(random(0, 6));
    click(box, {box.width() / 2, box.height() / 2});
    if (chance(80)) {
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    }
    QTest::keyClicks(&box, text);
    if (text.isEmpty()) {
        QTest::keyClick(&box, Qt::Key_Backspace);
    }
    switch (random(0, 3)) {
    case 0:
        QTest::keyClick(&box, Qt::Key_Return);
        break;
    case 1:
        QTest::keyClick(&box, Qt::Key_Tab);
        break;
    default:
        break; // is left when something else is done
    }
    note(u"  -> "_s + text);
}

void PanelWalk::move_slider(QSlider& slider) {
    constexpr std::array keys{Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Home,
                              Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End};
    if (chance(50)) {
        QTest::keyClick(&slider, keys.at(static_cast<std::size_t>(random(0, 5))));
    } else {
        drag(slider, {random(0, slider.width() - 1), slider.height() / 2}, {100, 0});
    }
    note(u"  -> "_s + QString::number(slider.value()));
}

void PanelWalk::choose_tab(QTabBar& tabs) {
    if (chance(20)) {
        QTest::keyClick(&tabs, chance(50) ? Qt::Key_Left : Qt::Key_Right);
    } else {
        click(tabs, tabs.tabRect(random(0, tabs.count() - 1)).center());
    }
    note(u"  -> "_s + tabs.tabText(tabs.currentIndex()));
}

void PanelWalk::turn_wheel(QWidget& wheel) {
    constexpr std::array keys{Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Home, Qt::Key_End,
                              Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Up,   Qt::Key_Down};
    switch (random(0, 3)) {
    case 0:
        QTest::keyClick(&wheel, keys.at(static_cast<std::size_t>(random(0, 7))));
        break;
    case 1: {
        const QPoint place = wheel.rect().center();
        QWheelEvent event(place, wheel.mapToGlobal(place), {}, {0, 40 * random(-9, 9)},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&wheel, &event);
        break;
    }
    default:
        drag(wheel, wheel.rect().center(), {150, 5});
        break;
    }
}

void PanelWalk::drag(QWidget& widget, QPoint from, QPoint most) {
    Mouse mouse(widget);
    mouse.press(widget, from);
    for (int moves = random(1, 4); moves > 0; --moves) {
        mouse.drag({random(-most.x(), most.x()), random(-most.y(), most.y())});
        if (chance(30)) {
            ticks(random(1, 3));
        }
    }
    mouse.release();
}

void PanelWalk::drag_cursor() {
    const CursorState& cursors = program_.scope().parts().cursor_state;
    PlotWidget& plot = program_.window().plot();
    const auto cursor = static_cast<std::size_t>(random(0, 1));
    const QPoint place = plot.place_of(box::left + cursors.hpos.at(cursor) + random(-6, 6),
                                       box::top + cursors.vpos.at(cursor) + random(-6, 6))
                             .toPoint();
    const bool together = chance(30);
    note(together ? u"both cursors"_s : u"cursor"_s);
    Mouse mouse(plot);
    mouse.press(plot, place, together ? Qt::ShiftModifier : Qt::NoModifier);
    for (int moves = random(1, 3); moves > 0; --moves) {
        mouse.drag({random(-80, 80), random(-80, 80)});
        if (chance(30)) {
            ticks(1);
        }
    }
    mouse.release();
}

void PanelWalk::choose_from_menu() {
    QMenuBar& bar = *program_.window().menuBar();
    const auto titles = bar.actions();
    QAction* const title = titles.at(random(0, static_cast<int>(titles.size()) - 1));
    QList<QAction*> entries;
    for (QAction* const entry : title->menu()->actions()) {
        if (!entry->isSeparator() && entry->isEnabled() && entry->objectName() != u"MenuExit"_s) {
            entries.append(entry);
        }
    }
    QAction* const entry = entries.at(random(0, static_cast<int>(entries.size()) - 1));
    note(u"menu: "_s + entry->objectName());
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(title).center());
    QMenu& menu = *title->menu();
    QTest::mouseMove(&menu, menu.actionGeometry(entry).center());
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(entry).center());
    menu.close();
}

void PanelWalk::cancel_file_dialogs() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<QFileDialog*>(widget);
        if (dialog != nullptr && dialog->isVisible()) {
            dialog->reject();
        }
    }
}

QStringList PanelWalk::differences() {
    const Parts& parts = program_.scope().parts();
    QStringList all = view_differences(program_.window(), program_.scope());
    PanelMoment moment;
    moment.swept = false;
    moment.delays_typed = being_typed_into(program_.window(), "psofsetch1") ||
                          being_typed_into(program_.window(), "psofsetch2");
    moment.additional_typed = being_typed_into(program_.window(), "delaytrttdis");
    for (const std::string& text : panel_differences(parts, moment)) {
        all.append(QString::fromStdString(text));
    }
    return all;
}

QStringList PanelWalk::settled_differences() {
    const Parts& parts = program_.scope().parts();
    const FrontPanel& panel = parts.panel;
    QStringList all = view_differences(program_.window(), program_.scope());
    const bool any_on = panel.channel[0].enable.checked() || panel.channel[1].enable.checked();
    const bool swept = panel.textstatus.text() == "Running" && any_on;
    for (const auto& texts : {panel_differences(parts, {.swept = swept}),
                              set_up_differences(parts, simulation_.settings())}) {
        for (const std::string& text : texts) {
            all.append(QString::fromStdString(text));
        }
    }
    return all + picture_differences(program_.scope().picture().at_natural_size(), parts);
}

} // namespace kv408::ui
