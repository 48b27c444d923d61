#include "panel_walk_view.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>

#include "calibration/calibration_form.h"
#include "display/settings_dialog.h"
#include "state/plot_geometry.h"
#include "ui/settings_window.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

/// Compares the widgets of one window with their controls, which they are named as.
class View {
public:
    /// `root` holds the widgets; those of a window over it do not count.
    explicit View(QWidget& root) : root_(root) {}

    [[nodiscard]] const QStringList& differences() const { return differences_; }

    /// Compares all controls of a window.
    void compare(const ControlList& controls) {
        for (Control* const control : controls) {
            if (const auto* const entry = root_.findChild<QAction*>(text_of(control->name()))) {
                same(*control, entry->isEnabled(), control->enabled());
                if (auto* const box = dynamic_cast<CheckBox*>(control)) {
                    same(*control, entry->isChecked(), box->checked());
                }
                continue;
            }
            std::visit(
                [this](auto kind) {
                    if constexpr (!std::is_same_v<decltype(kind), std::monostate>) {
                        compare(*kind);
                    }
                },
                control->kind());
        }
    }

private:
    void compare(const Button& control) {
        if (const auto* const widget = find<QPushButton>(control)) {
            common(*widget, control);
            if (!control.caption().empty()) {
                same(control, widget->text(), text_of(control.caption()));
            }
        }
    }
    void compare(const CheckBox& control) {
        if (const auto* const widget = find<QCheckBox>(control)) {
            common(*widget, control);
            same(control, widget->isChecked(), control.checked());
        }
    }
    void compare(const OptionButton& control) {
        if (const auto* const widget = find<QRadioButton>(control)) {
            common(*widget, control);
            same(control, widget->isChecked(), control.checked());
        }
    }
    void compare(const ListBox& control) {
        if (const auto* const widget = find<QComboBox>(control)) {
            common(*widget, control);
            same(control, widget->count(), static_cast<int>(control.entries().size()));
            same(control, widget->currentIndex(), control.index());
            same(control, widget->currentText(), text_of(control.text()));
        }
    }
    void compare(const TextBox& control) {
        if (const auto* const widget = find<QLineEdit>(control)) {
            common(*widget, control);
            same(control, widget->text(), text_of(control.text()));
        }
    }
    void compare(const Label& control) {
        if (const auto* const widget = find<QWidget>(control)) {
            common(*widget, control);
            // A picture, a page or a swatch is a label without a text.
            if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
                same(control, label->text(), text_of(control.caption()));
            }
        }
    }
    void compare(const Slider& control) {
        if (const auto* const widget = find<QSlider>(control)) {
            common(*widget, control);
            same(control, widget->value(), control.value());
        }
    }
    void compare(const TabStrip& control) {
        const auto* const widget = find<QTabBar>(control);
        if (widget == nullptr) {
            return;
        }
        common(*widget, control);
        same(control, widget->currentIndex(), control.selected() - 1);
        QStringList shown;
        QStringList there;
        for (int index = 0; index < widget->count(); ++index) {
            shown.append(widget->tabText(index));
        }
        for (const Tab& tab : control.tabs()) {
            there.append(text_of(tab.caption));
        }
        same(control, shown.join(u", "_s), there.join(u", "_s));
    }
    void compare(const ThumbWheel& control) {
        if (const auto* const widget = find<QWidget>(control)) {
            common(*widget, control);
        }
    }

    template <typename Widget>
    const Widget* find(const Control& control) {
        for (const Widget* const widget : root_.findChildren<Widget*>(text_of(control.name()))) {
            if (widget->window() == root_.window()) {
                return widget;
            }
        }
        differences_.append(u"no widget for "_s + text_of(control.name()));
        return nullptr;
    }

    void common(const QWidget& widget, const Control& control) {
        same(control, !widget.isHidden(), control.visible());
        same(control, widget.isEnabled(), control.enabled());
    }

    template <typename Value>
    void same(const Control& control, const Value& shown, const Value& is) {
        if (shown != is) {
            differences_.append(u"widget %1 shows %2, its control has %3"_s.arg(
                text_of(control.name()), QVariant(shown).toString(), QVariant(is).toString()));
        }
    }

    QWidget& root_;
    QStringList differences_;
};

/// Pixels of `picture` that have the colour `colour`, in the columns and rows given.
std::ptrdiff_t pixels(const Surface& picture, Colour colour, QRect area) {
    std::ptrdiff_t count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += picture.at(x, y) == pixel_of(colour) ? 1 : 0;
        }
    }
    return count;
}

constexpr QRect whole_plot(0, 0, plot::width, plot::height);

Colour half_way(Colour one, Colour other) {
    const auto half = [](int first, int second) {
        const int sum = first + second;
        // Of two neighbours the even one.
        return static_cast<std::uint8_t>(sum / 2 + (sum % 2 != 0 && sum / 2 % 2 != 0 ? 1 : 0));
    };
    const auto part = [](Colour colour, unsigned shift) {
        return static_cast<int>(colour.value >> shift & 0xFFU);
    };
    return rgb(half(part(one, 0), part(other, 0)), half(part(one, 8), part(other, 8)),
               half(part(one, 16), part(other, 16)));
}

void compare_cursor_lines(const Surface& picture, const Parts& parts, QStringList& differences) {
    const CursorState& cursors = parts.cursor_state;
    const Colour colour = half_way(cursors.channel == ch1 ? parts.colours.ch1 : parts.colours.ch2,
                                   parts.colours.normal_text);
    const int mode = cursors.cursormode;
    if (mode == 0) {
        if (pixels(picture, colour, whole_plot) > 0) {
            differences.append(u"cursor lines are drawn while they are off"_s);
        }
        return;
    }
    // Lines of annotations and of the other cursor may lie over them.
    const bool alone =
        cursors.vpos[0] != cursors.vpos[1] && cursors.hpos[0] != cursors.hpos[1] &&
        !parts.acquisition.holdoff &&
        std::none_of(parts.panel.measurement.begin(), parts.panel.measurement.end(),
                     [](const MeasurementControls& slot) { return slot.annotate.checked(); });
    for (int cursor = 0; alone && cursor < 2; ++cursor) {
        const auto place = static_cast<std::size_t>(cursor);
        const bool voltage = mode <= 2;
        const QRect line = voltage ? QRect(0, cursors.vpos.at(place), plot::width, 1)
                                   : QRect(cursors.hpos.at(place), 0, 1, plot::height);
        const bool solid = mode == (voltage ? 1 : 3) + cursor;
        const auto count = pixels(picture, colour, line);
        const int length = voltage ? plot::width : plot::height;
        // The last pixel of a line is not drawn.
        if (solid ? count < length - 1 : (count < length * 3 / 10 || count > length * 7 / 10)) {
            differences.append(u"the line of cursor %1 has %2 pixels"_s.arg(cursor + 1).arg(count));
        }
    }
}

} // namespace

QStringList view_differences(QWidget& window, Scope& scope) {
    View main(window);
    main.compare(scope.panel().all);
    QStringList all = main.differences();
    auto* const settings = window.findChild<SettingsWindow*>(u"frmSettings"_s);
    const bool open = settings != nullptr && settings->isVisible();
    if (open != scope.settings_dialog().is_open()) {
        all.append(u"the settings dialog is open or closed without its window"_s);
    }
    if (open) {
        View dialog(*settings);
        dialog.compare(scope.settings_dialog().controls().all);
        all += dialog.differences();
    }
    auto* const calibration = window.findChild<QWidget*>(u"frmcalibration"_s);
    const bool shown = calibration != nullptr && calibration->isVisible();
    if (shown != scope.calibration_form().window.is_open()) {
        all.append(u"the calibration form is open or closed without its window"_s);
    }
    if (shown) {
        View form(*calibration);
        form.compare(scope.calibration_form().all);
        all += form.differences();
    }
    return all;
}

QStringList picture_differences(const Surface& picture, const Parts& parts) {
    QStringList differences;
    if (parts.colours != ColourTable{}) {
        return differences; // of colours that may be each other's nothing can be told
    }
    const FrontPanel& panel = parts.panel;
    if (panel.textstatus.text() != "Running" ||
        (!panel.channel[0].enable.checked() && !panel.channel[1].enable.checked())) {
        return differences; // no sweep brings a new picture
    }
    for (std::size_t index = 0; index < 2; ++index) {
        const bool on = panel.channel.at(index).enable.checked();
        // CH1 may cover CH2, where both leave the plot on the same side.
        const bool on_top = on && (index == 0 || !panel.channel[0].enable.checked());
        const auto count =
            pixels(picture, index == 0 ? parts.colours.ch1 : parts.colours.ch2, whole_plot);
        if ((on_top && count < 50) || (!on && count > 0)) {
            differences.append(u"CH%1 has %2 pixels"_s.arg(index + 1).arg(count));
        }
    }
    // The border alone has 2304 pixels. Of what lies within it the traces cover their share.
    const auto grid =
        pixels(picture, parts.colours.grid, {1, 1, plot::width - 2, plot::height - 2});
    const auto covered = pixels(picture, parts.colours.ch1, whole_plot) +
                         pixels(picture, parts.colours.ch2, whole_plot);
    constexpr double area = double{plot::width} * plot::height;
    const double least = 500.0 * (1.0 - static_cast<double>(covered) / area);
    if (panel.gridenable.checked() ? static_cast<double>(grid) < least : grid > 0) {
        differences.append(u"the grid has %1 pixels, the traces %2"_s.arg(grid).arg(covered));
    }
    compare_cursor_lines(picture, parts, differences);
    return differences;
}

} // namespace kv408::ui
