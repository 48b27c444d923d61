#pragma once

#include <algorithm>

#include <QAction>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>

#include "program_on_bench.h"
#include "ui/settings_window.h"

namespace kv408::ui {

/// The running program with its settings dialog open.
struct OpenSettings : ProgramOnBench {
    /// Opens the dialog by its menu entry.
    [[nodiscard]] bool open_settings() {
        action("mnusettings").trigger();
        return shown() != nullptr && QTest::qWaitForWindowExposed(shown());
    }

    /// The open dialog; none while it is closed.
    [[nodiscard]] SettingsWindow* shown() {
        for (auto* const dialog :
             window().findChildren<SettingsWindow*>(QString::fromLatin1("frmSettings"))) {
            if (dialog->isVisible()) {
                return dialog;
            }
        }
        return nullptr;
    }

    [[nodiscard]] QAction& action(const char* name) {
        return *window().findChild<QAction*>(QString::fromLatin1(name));
    }

    /// The dialog's widget named `name`.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget& in_dialog(const char* name) {
        auto* const found = shown()->findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("no widget %s", name);
        }
        return *found;
    }

    void click(const char* name) { QTest::mouseClick(&in_dialog(name), Qt::LeftButton); }

    /// Clicks the mark of a check box or option, at its left end.
    void click_mark(const char* name) {
        QWidget& widget = in_dialog(name);
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(9, widget.height() / 2));
    }

    void show_page(int index) {
        auto& tabs = in_dialog<QTabBar>("TabStrip1");
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(index).center());
    }

    void type_over(const char* name, const QString& text) {
        auto& box = in_dialog<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    [[nodiscard]] const ColourTable& colours() { return program.scope().parts().colours; }

    /// The text colour of the main window's widget `name`, and what lies behind it.
    [[nodiscard]] QColor text_colour(const char* name) {
        return main_widget(name).palette().color(QPalette::WindowText);
    }
    [[nodiscard]] QColor back_colour(const char* name) {
        return main_widget(name).palette().color(QPalette::Window);
    }

    /// The main window's widget `name`, not the dialog's.
    [[nodiscard]] QWidget& main_widget(const char* name) {
        return *window().centralWidget()->findChild<QWidget*>(QString::fromLatin1(name));
    }

    /// How many pixels of the picture have the colour `colour`.
    [[nodiscard]] std::ptrdiff_t pixels(Colour colour) {
        const auto all = program.scope().picture().surface().pixels();
        return std::count(all.begin(), all.end(), pixel_of(colour));
    }

    bool open = run_until_sweeping() && open_settings();
};

} // namespace kv408::ui
