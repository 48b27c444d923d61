#pragma once

#include <functional>
#include <random>

#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSlider>
#include <QStringList>
#include <QTabBar>
#include <QTimer>

#include "box_answers.h"
#include "mouse.h"
#include "scope/parts.h"
#include "simulator/simulation.h"
#include "support/fake_files.h"
#include "support/virtual_clock.h"
#include "ui/program.h"

namespace kv408::ui {

/// A random walk over everything that can be operated in the window, the settings dialog and the
/// calibration form, by the events of mouse and keyboard, decided by a seed. The program runs on a
/// virtual clock; its timer ticks when the walk says so.
class PanelWalk {
public:
    /// The window is shown and the program sweeps, when `ready`.
    explicit PanelWalk(unsigned seed);
    PanelWalk(const PanelWalk&) = delete;
    PanelWalk& operator=(const PanelWalk&) = delete;

    [[nodiscard]] bool ready() const { return ready_; }

    /// Does one thing and lets the timer tick once.
    void step();

    /// Lets the timer tick `count` times.
    void ticks(int count);

    /// Ends what would hinder a set-up from being uploaded, starts the sweep, and lets it sweep.
    void settle();

    /// What is in the window now and does not agree.
    [[nodiscard]] QStringList differences();

    /// The same, and the set-up in the instrument and the picture; after `settle`.
    [[nodiscard]] QStringList settled_differences();

    /// What was done, the last steps.
    [[nodiscard]] const QStringList& done() const { return done_; }

    /// The program has ended, which nothing in the walk asks for.
    [[nodiscard]] bool ended() { return program_.scope().ended(); }

private:
    int random(int lowest, int highest);
    bool chance(int percent) { return random(1, 100) <= percent; }
    void note(const QString& what);

    [[nodiscard]] QWidget* any_window();
    [[nodiscard]] QWidget* any_widget(QWidget& window);
    void operate(QWidget& widget);
    void click(QWidget& widget, QPoint place);
    void choose_entry(QComboBox& list);
    void type_into(QLineEdit& box);
    void move_slider(QSlider& slider);
    void choose_tab(QTabBar& tabs);
    void turn_wheel(QWidget& wheel);
    void drag(QWidget& widget, QPoint from, QPoint most);
    void drag_cursor();
    void choose_from_menu();
    void cancel_file_dialogs();

    std::mt19937 random_;
    VirtualClock clock_;
    simulator::Simulation simulation_{clock_};
    FakeFiles files_;
    Program program_{clock_, simulation_.bridge(), files_, fake_places()};
    BoxAnswers answers_;
    QTimer file_dialogs_;
    QTimer* timer_ = nullptr;
    bool ready_ = false;
    QStringList done_;
};

} // namespace kv408::ui
