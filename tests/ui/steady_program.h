#pragma once

// The program for pictures that come out the same every time: on a clock that only moves when it is
// told to, with ticks that come by hand.

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "display/picture.h"
#include "scope/parts.h"
#include "simulator/simulation.h"
#include "simulator/wire_log.h"
#include "support/fake_files.h"
#include "support/virtual_clock.h"
#include "ui/program.h"

namespace kv408::ui {

using namespace Qt::StringLiterals;

/// The picture of `widget`, without the frame of the keyboard's focus, which may come sooner or
/// later.
inline QImage picture_of(QWidget& widget) {
    if (QWidget* const focus = widget.window()->focusWidget()) {
        focus->clearFocus();
    }
    return widget.grab().toImage();
}

/// The pictures by name, as they are made.
class Gallery {
public:
    /// The pictures are kept as files in `folder` too, which is made where it is missing.
    explicit Gallery(const QString& folder) : folder_(folder) { QDir().mkpath(folder); }

    /// Keeps `picture` under `name`, which is that of its file without ".png".
    void add(const QString& name, const QImage& picture) {
        QImage plain = picture.convertToFormat(QImage::Format_RGB32);
        plain.setDevicePixelRatio(1.0);
        if (!plain.save(folder_.filePath(name + u".png"_s))) {
            qFatal("%s cannot be written", qPrintable(name));
        }
        pictures_[name] = plain;
    }
    void add(const QString& name, QWidget& widget) { add(name, picture_of(widget)); }

    [[nodiscard]] const std::map<QString, QImage>& pictures() const { return pictures_; }

private:
    QDir folder_;
    std::map<QString, QImage> pictures_;
};

/// The whole program with its window on a simulated instrument as delivered, noise included.
struct SteadyProgram {
    SteadyProgram() {
        clock.set_local_time({2026, 11, 16, 1, 9, 37});
        simulation.set_calibrated();
        // No tick but those by hand.
        window().findChild<QTimer*>(u"Timer1"_s)->setInterval(std::chrono::hours(1));
        window().resize(1280, 750);
    }

    [[nodiscard]] MainWindow& window() { return program.window(); }
    [[nodiscard]] const Parts& parts() { return program.scope().parts(); }
    [[nodiscard]] FrontPanel& panel() { return program.scope().panel(); }
    [[nodiscard]] ChannelControls& channel(std::size_t index) { return panel().channel.at(index); }
    void act(const std::function<void()>& action) { program.scope().act(action); }

    /// Shows the window and waits until the program has looked for the instrument.
    void start() {
        window().show();
        if (!QTest::qWaitForWindowExposed(&window()) ||
            !QTest::qWaitFor([this] { return parts().program.loaded; })) {
            qFatal("the program does not start");
        }
        // Qt makes a list that has got new entries as small as they are, 20 ms later and for a
        // moment.
        QTest::qWait(100);
    }

    /// The next `count` ticks of the window's timer.
    void ticks(int count) {
        for (int tick = 0; tick < count; ++tick) {
            clock.advance(std::chrono::milliseconds(100));
            program.scope().tick();
        }
        QApplication::processEvents();
    }

    /// Starts, and sweeps until the measurements have settled.
    void start_sweeping() {
        start();
        ticks(20);
    }

    /// Chooses the entry `text` of `list`, as a click does.
    void choose(ListBox& list, const std::string& text) {
        const auto found = std::find(list.entries().begin(), list.entries().end(), text);
        if (found == list.entries().end()) {
            qFatal("no entry %s", text.c_str());
        }
        act([&] { list.set_index(static_cast<int>(found - list.entries().begin())); });
    }

    /// Chooses what the adjust wheel turns, and drags it to `value`; it is not let go.
    void drag_wheel(const std::string& key, int value) {
        act([&] {
            int position = 0;
            if (hasnotab(panel().tabstrip2, key, position)) {
                qFatal("no tab %s", key.c_str());
            }
            panel().tabstrip2.select(position);
            panel().slider1.drag_to(value);
        });
    }
    void let_wheel_go() {
        act([this] { panel().slider1.mouse_up(); });
    }

    /// Turns what `key` names to `value`.
    void turn(const std::string& key, int value) {
        drag_wheel(key, value);
        let_wheel_go();
    }

    /// The window's widget named `name`.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget& widget(const char* name) {
        auto* const found = window().findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("no widget %s", name);
        }
        return *found;
    }

    /// The window `name` of a tool, as large as it wants to be.
    [[nodiscard]] QWidget& tool_window(const char* name) {
        // Qt makes a list that has got new entries as small as they are, 20 ms later and for a
        // moment.
        QTest::qWait(100);
        QWidget& found = widget(name);
        found.resize(found.sizeHint());
        QApplication::processEvents();
        return found;
    }

    /// The screen: the plot with all that stands around it.
    [[nodiscard]] QImage screen() { return picture_of(*widget("Picture1").parentWidget()); }

    VirtualClock clock;
    simulator::WireLog log;
    simulator::Simulation simulation{clock, {}, 1, &log};
    FakeFiles files;
    Program program{clock,
                    simulation.bridge(),
                    files,
                    {.settings = "/home/you/.config/kv408", .program = "/home/you/kv408"}};
};

/// Looks out for the next message box, keeps its picture under `name` (none: not kept), and presses
/// `button`.
class NextBox {
public:
    NextBox(Gallery& gallery, QString name, QMessageBox::StandardButton button)
        : gallery_(gallery), name_(std::move(name)), button_(button) {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] { look(); });
        look_.start(1);
    }

    /// Whether it has come.
    [[nodiscard]] bool came() const { return came_; }

private:
    void look() {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            auto* const box = qobject_cast<QMessageBox*>(widget);
            if (box == nullptr || !box->isVisible()) {
                continue;
            }
            if (!name_.isEmpty()) {
                gallery_.add(name_, *box);
            }
            came_ = true;
            look_.stop();
            box->button(button_)->click();
            return;
        }
    }

    Gallery& gallery_;
    QString name_;
    QMessageBox::StandardButton button_;
    bool came_ = false;
    QTimer look_;
};

} // namespace kv408::ui
