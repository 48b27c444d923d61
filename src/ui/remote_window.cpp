#include "ui/remote_window.h"

#include <chrono>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "config/undo.h"
#include "ui/bind.h"
#include "ui/corner_text.h"
#include "ui/panel_frame.h"
#include "ui/tool_widgets.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// How long clients are served before what the person does has its turn.
constexpr std::chrono::milliseconds serving{2};

/// Whether and where clients are listened for.
QWidget* make_network_frame(RemoteControls& controls, ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Network"_s);
    WidgetMaker make(frame, driver);
    QGridLayout* const grid = make_tool_grid(frame);
    grid->addWidget(
        make.check(controls.chkRemote, u"&Remote control"_s,
                   {u"Remote control"_s, u"Lets other programs operate this one until it ends"_s}),
        0, 0, 1, 2);
    QComboBox* const address = make.list(
        controls.cmbRemoteAddress,
        {u"Who may connect"_s, u"There is no password: the network too is everybody in it"_s});
    // However long the addresses of this computer are, the window is no wider for it.
    constexpr int shown_letters = 20;
    address->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    address->setMinimumContentsLength(shown_letters);
    add_captioned(*grid, 1, u"&Who may connect:"_s, address);
    QLineEdit* const typed =
        make.text_box(controls.txtRemoteAddress,
                      {u"Address"_s, u"An address of this computer, or 0.0.0.0 for all of them"_s});
    add_captioned(*grid, 2, u"&Address:"_s, typed);
    QLineEdit* const port = make.text_box(
        controls.txtRemotePort, {u"TCP port"_s, u"0 to 65535; 0 takes any that is free"_s});
    add_captioned(*grid, 3, u"&TCP port:"_s, port);
    grid->addWidget(
        make_told(make, controls.lblRemoteState,
                  {u"Remote control's state"_s, u"Where it listens, and for how many"_s}),
        4, 0, 1, 2);
    return frame;
}

/// Who is there.
QWidget* make_clients_frame(RemoteControls& controls, ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Clients"_s);
    WidgetMaker make(frame, driver);
    QGridLayout* const grid = make_tool_grid(frame);
    QComboBox* const clients =
        make.list(controls.cmbRemoteClients, {u"Clients"_s, u"Programs that are connected"_s});
    constexpr int address_width = 240;
    clients->setMinimumWidth(address_width);
    grid->addWidget(clients, 0, 0, 1, 2);
    grid->addWidget(make.button(controls.cmdRemoteDisconnect, u"&Disconnect"_s,
                                {u"Disconnect"_s, u"Ends the selected client's connection"_s}),
                    0, 2);
    grid->addWidget(
        make.check(controls.chkRemoteLock, u"&Lock the panel against the network"_s,
                   {u"Lock the panel against the network"_s, u"Clients read, and set nothing"_s}),
        1, 0, 1, 3);
    grid->addWidget(make.button(controls.cmdRemoteUnlock, u"&Unlock the panel"_s,
                                {u"Unlock the panel"_s, u"Ends the lock that a client has set"_s}),
                    2, 2);
    return frame;
}

} // namespace

RemoteWindow::RemoteWindow(RemoteDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner) {
    setObjectName(u"frmRemote"_s);
    setWindowTitle(u"Kv408 - Tarvo  Remote Control"_s);
    QVBoxLayout* const layout = make_window_layout(*this);
    layout->addWidget(make_network_frame(dialog.controls(), driver));
    layout->addWidget(make_clients_frame(dialog.controls(), driver));
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(make_plain_button(*this, u"cmdRemoteClose"_s, u"&Close"_s,
                                     {u"Close"_s, u"Closes the window; remote control stays"_s},
                                     [this] { reject(); }));
    add_ending(*this, row);
}

RemoteInWindow::RemoteInWindow(RemoteControl& control, MessageBoxes& boxes, ScopeDriver& driver,
                               QMainWindow& owner, QWidget& plot)
    : control_(control), driver_(driver), owner_(owner), plot_(plot), dialog_(control, boxes) {
    dialog_.on_show([this] { show_window(); });
    dialog_.on_lock([this](bool locked) { lock(locked); });
    driver.panel().mnuremote.on_click([this] { dialog_.open(); });
    Label& told = dialog_.controls().lblRemote;
    // Made with its first use: without one the window is as it always was.
    keep_shown(*this, told, [this, &told] {
        auto* label = static_cast<CornerText*>(owner_.menuBar()->cornerWidget());
        if (label == nullptr && told.visible()) {
            label = new CornerText(*owner_.menuBar());
            label->setObjectName(object_name(told));
            describe(*label, {u"Remote control"_s, u"Programs that operate this one"_s});
        }
        if (label != nullptr) {
            label->setVisible(told.visible());
            label->tell(QString::fromStdString(told.caption()));
        }
    });
}

void RemoteInWindow::attach(Scope& scope) {
    control_.attach(scope, [this](const std::function<void()>& action) { driver_.act(action); });
    control_.spare_person();
    driver_.on_press([this] {
        if (!serving_) {
            control_.person_pressed();
        }
    });
}

void RemoteInWindow::serve() {
    const QScopedValueRollback<bool> clients(serving_, true);
    if (!driver_.ended() && control_.serve(serving)) {
        QMetaObject::invokeMethod(
            this, [this] { serve(); }, Qt::QueuedConnection);
    }
}

void RemoteInWindow::tick_over() {
    if (!driver_.ended()) {
        control_.tick_over();
        serve(); // what could not be run in the middle of an exchange
    }
}

void RemoteInWindow::end() {
    control_.close();
    if (window_) {
        window_->hide();
    }
}

void RemoteInWindow::show_window() {
    if (!window_) {
        window_ = new RemoteWindow(dialog_, driver_, &owner_);
    }
    present_beside(*window_, owner_, plot_);
}

void RemoteInWindow::lock(bool locked) {
    if (locked == locked_) {
        return;
    }
    locked_ = locked;
    for (PanelFrame* const frame : owner_.findChildren<PanelFrame*>()) {
        const QString window = frame->window()->objectName();
        if (frame->window() == &owner_ || window == u"frmSettings"_s ||
            window == u"frmcalibration"_s) {
            frame->setEnabled(!locked);
        }
    }
    plot_.setEnabled(!locked);
    driver_.undo().set_locked(locked);
    // OK of the settings confirms what was edited before.
    for (const QString& name : {u"cmdstartsweep"_s, u"Command1"_s, u"cmdOK"_s}) {
        if (auto* const button = owner_.findChild<QPushButton*>(name)) {
            button->setEnabled(!locked);
        }
    }
    for (const QString& name : {u"loadconfig"_s, u"mnucalibration"_s, u"cmdcaloofset"_s,
                                u"mnusettings"_s, u"mnustart"_s, u"mnusingle"_s, u"mnuautoset"_s}) {
        if (auto* const entry = owner_.findChild<QAction*>(name)) {
            entry->setEnabled(!locked);
        }
    }
}

} // namespace kv408::ui
