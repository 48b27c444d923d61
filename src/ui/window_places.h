#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QWidget>

namespace kv408::ui {

/// The window that a dialog belongs to which the program opens now: the dialog that blocks `main`;
/// or the window that the person is at, where that is `main` or one of its windows; else `main`,
/// which may be null.
[[nodiscard]] QWidget* asking_window(QWidget* main);

/// What a window that opens is to leave free, all in pixels of the screen.
struct Surroundings {
    QRect room; ///< of the screen for windows
    QRect main; ///< the main window with its frame
    QRect plot; ///< the plot in it
};

/// Where a window of `size`, with its frame, is put: beside, below or above the main window where
/// the room allows it; else within the room over as little of the plot, and then of the main
/// window, as can be.
[[nodiscard]] QPoint place_beside(const QSize& size, const Surroundings& around);

} // namespace kv408::ui
