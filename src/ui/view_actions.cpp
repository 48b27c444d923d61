#include "ui/view_actions.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QAction* make(QMainWindow& window, const QString& caption, const QString& name, const QString& tip,
              Qt::Key key) {
    auto* const action = new QAction(caption, &window);
    action->setObjectName(name);
    action->setToolTip(tip);
    action->setCheckable(true);
    action->setShortcut(key);
    return action;
}

} // namespace

ViewActions::ViewActions(QMainWindow& window, WindowHalves& halves)
    : full_screen(make(window, u"&Full Screen"_s, u"fullScreen"_s,
                       u"Shows the window on the whole screen, and as it was again"_s,
                       Qt::Key_F11)),
      hide_panel(make(
          window, u"&Hide Panel"_s, u"hidePanel"_s,
          u"Leaves the plot the room of the panel, but for its Status, and shows the panel again"_s,
          Qt::Key_F9)) {
    QObject::connect(full_screen, &QAction::toggled, &window, [&window](bool on) {
        window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, on));
    });
    QObject::connect(hide_panel, &QAction::toggled, &halves,
                     [&halves](bool on) { halves.hide_controls(on); });
}

} // namespace kv408::ui
