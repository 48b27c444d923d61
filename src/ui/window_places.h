#pragma once

#include <vector>

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QWidget>

namespace kv408::ui {

/// The window that a dialog belongs to which the program opens now: the dialog that blocks
/// `main_window`; or the window that the person is at, where that is `main_window` or one of its
/// windows; else `main_window`, which may be null.
[[nodiscard]] QWidget* asking_window(QWidget* main_window);

/// What a window that opens is to leave free, all in pixels of the screen.
struct Surroundings {
    QRect room;                     ///< of the screen for windows
    QRect main_window;              ///< the main window with its frame
    QRect keep;                     ///< the part of it that is used beside the window
    std::vector<QRect> others = {}; ///< other windows with their frames
};

/// Where a window of `size`, with its frame, is put: beside, below or above the main window where
/// the room allows it; else within the room over as little of what is to be kept free, then of the
/// main window, and then of the others, as can be. Its title bar is always in the room.
[[nodiscard]] QPoint place_beside(const QSize& size, const Surroundings& around);

/// Gives `window`, which is not shown, its place beside `main_window`, which has its own, so that
/// `keep`, a part of that, is seen; the program's other windows count too. It gets the size that it
/// wants, or what the screen has.
void put_beside(QWidget& window, const QWidget& main_window, const QWidget& keep);

} // namespace kv408::ui
