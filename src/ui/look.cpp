#include "ui/look.h"

#include <utility>

#include <QApplication>
#include <QEvent>
#include <QSettings>
#include <QWidget>

#include "ui/colours.h"
#include "ui/flat_style.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The colours that a look is made of.
struct Paints {
    QRgb window;
    QRgb frame;
    QRgb outline;
    QRgb field;
    QRgb button;
    QRgb text;
    QRgb faint_text;
    QRgb accent;
};

constexpr Paints dark_paints = {.window = 0xFF1B1E23,
                                .frame = 0xFF24282E,
                                .outline = 0xFF3A4049,
                                .field = 0xFF15181C,
                                .button = 0xFF353B44,
                                .text = 0xFFE6E8EB,
                                .faint_text = 0xFF858D98,
                                .accent = 0xFF3D8FD6};

constexpr Paints light_paints = {.window = 0xFFE4E7EB,
                                 .frame = 0xFFF6F7F9,
                                 .outline = 0xFFC3C9D1,
                                 .field = 0xFFFFFFFF,
                                 .button = 0xFFECEFF3,
                                 .text = 0xFF1B1E23,
                                 .faint_text = 0xFF737B86,
                                 .accent = 0xFF1F6FB5};

void set_all(QPalette& palette, const Paints& paints) {
    const QColor button(paints.button);
    palette.setColor(QPalette::Window, paints.window);
    palette.setColor(QPalette::AlternateBase, paints.frame);
    palette.setColor(QPalette::Base, paints.field);
    palette.setColor(QPalette::Button, button);
    palette.setColor(QPalette::Light, mixed(button, Qt::white, 0.2));
    palette.setColor(QPalette::Midlight, mixed(button, Qt::white, 0.1));
    palette.setColor(QPalette::Mid, paints.outline);
    palette.setColor(QPalette::Dark, mixed(button, Qt::black, 0.35));
    palette.setColor(QPalette::Shadow, mixed(button, Qt::black, 0.6));
    palette.setColor(QPalette::Highlight, paints.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, paints.accent);
    palette.setColor(QPalette::ToolTipBase, paints.frame);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, paints.text);
        palette.setColor(QPalette::Disabled, role, paints.faint_text);
    }
    palette.setColor(QPalette::PlaceholderText, paints.faint_text);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, paints.outline);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, paints.faint_text);
    palette.setColor(QPalette::Disabled, QPalette::Base, paints.frame);
}

/// Takes the desktop's look over when a window is told that the desktop's theme has changed.
class LookFollower : public QObject {
public:
    LookFollower(QWidget& window, std::function<Look()> desktop)
        : QObject(&window), desktop_(std::move(desktop)) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ThemeChange) {
            QApplication::setPalette(palette_of(desktop_()));
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<Look()> desktop_;
};

} // namespace

Look desktop_look() {
#ifdef Q_OS_WIN
    const QSettings personal(
        u"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize"_s,
        QSettings::NativeFormat);
    return personal.value(u"AppsUseLightTheme"_s, 1).toInt() != 0 ? Look::light : Look::dark;
#else
    if (qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP")) {
        return Look::dark;
    }
    // Without one of our own the application has the desktop's palette.
    const QPalette ours = QApplication::palette();
    QApplication::setPalette(QPalette());
    const QPalette palette = QApplication::palette();
    QApplication::setPalette(ours);
    return palette.color(QPalette::Window).lightness() >
                   palette.color(QPalette::WindowText).lightness()
               ? Look::light
               : Look::dark;
#endif
}

QPalette palette_of(Look look) {
    QPalette palette;
    set_all(palette, look == Look::dark ? dark_paints : light_paints);
    return palette;
}

void apply_look(Look look) {
    QApplication::setStyle(new FlatStyle);
    QApplication::setPalette(palette_of(look));
}

void follow_desktop_look(QWidget& window, std::function<Look()> desktop) {
    new LookFollower(window, std::move(desktop));
}

} // namespace kv408::ui
