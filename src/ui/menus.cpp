#include "ui/menus.h"

#include <QMenu>

#include "autoset/autoset.h"
#include "scope/single_sweep.h"
#include "scope/tools.h"
#include "ui/bind.h"
#include "ui/references_menu.h"
#include "ui/undo_menu.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// What the user sees of an entry.
struct Entry {
    QString caption;
    QString tip;
    QKeySequence keys = {};
};

template <typename Entered>
QAction* add(QMenu& menu, Entered& control, ScopeDriver& driver, const Entry& entry) {
    auto* const action = new QAction(entry.caption, &menu);
    action->setToolTip(entry.tip);
    action->setShortcut(entry.keys);
    bind(action, control, driver);
    menu.addAction(action);
    return action;
}

QMenu& add_menu(QMenuBar& bar, const QString& title) {
    QMenu* const menu = bar.addMenu(title);
    menu->setToolTipsVisible(true);
    return *menu;
}

QMenu& add_sub_menu(QMenu& menu, const QString& title) {
    QMenu* const sub = menu.addMenu(title);
    sub->setToolTipsVisible(true);
    return *sub;
}

void fill_sweep_menu(QMenu& menu, ScopeDriver& driver) {
    menu.setAccessibleName(u"Sweep"_s);
    SweepControls& controls = driver.single().controls();
    add(menu, controls.mnustart, driver, {u"&Start"_s, u"Starts sweeping"_s});
    add(menu, controls.mnustop, driver, {u"S&top"_s, u"Stops sweeping"_s});
    add(menu, controls.mnusingle, driver,
        {u"Si&ngle"_s, u"Starts, and stops after one whole new sweep of each channel"_s});
}

void fill_tools(QMenu& tools, ScopeDriver& driver) {
    FrontPanel& panel = driver.panel();
    fill_undo_menu(tools, driver);
    tools.addSeparator();
    add(tools, driver.autoset().controls().mnuautoset, driver,
        {u"&Autoset"_s, u"Finds the signals and sets everything up to show them"_s,
         QKeySequence(u"Ctrl+Shift+A"_s)});
    fill_sweep_menu(add_sub_menu(tools, u"S&weep"_s), driver);
    tools.addSeparator();
    add(tools, panel.mnuexport, driver,
        {u"&Export..."_s, u"Saves the sweep that is shown to a file"_s, QKeySequence(u"Ctrl+E"_s)});
    add(tools, panel.mnurecord, driver,
        {u"&Record..."_s, u"Saves one sweep after the other while they come"_s});
    fill_references_menu(add_sub_menu(tools, u"Re&ferences"_s), driver);
    add(tools, panel.mnustatistics, driver,
        {u"&Statistics"_s, u"Shows mean, deviation and extremes of the measured values"_s});
    add(tools, panel.mnudensity, driver,
        {u"&Density"_s, u"Shows how often the traces have passed where"_s});
    add(tools, driver.tools().histogram().controls().mnuhistogram, driver,
        {u"Histo&gram"_s, u"Shows how the hits of a part of the plot spread"_s});
    add(tools, driver.tools().jitter().controls().mnujitter, driver,
        {u"&Jitter"_s, u"Shows by how much the time of an edge varies"_s});
    add(tools, driver.tools().eye().controls().mnueye, driver,
        {u"E&ye"_s, u"Shows how open the eye of random data is"_s});
    add(tools, driver.tools().mask().controls().mnumask, driver,
        {u"Mas&k Test"_s, u"Shows whether a trace keeps out of a mask"_s});
    add(tools, driver.tools().readouts().controls().mnureadouts, driver,
        {u"Read-ou&ts"_s, u"Shows what the time cursors tell, and what clips"_s});
    add(tools, driver.tools().maths().controls().mnumaths, driver,
        {u"Mat&hs"_s, u"Shows traces that are computed from the channels"_s});
    add(tools, driver.tools().spectrum().controls().mnuspectrum, driver,
        {u"Spectru&m"_s, u"Shows what sines the sweeps are made of"_s});
    add(tools, panel.mnuremote, driver,
        {u"Remote &Control..."_s, u"Lets other programs operate this one (SCPI)"_s});
}

} // namespace

void fill_menus(QMenuBar& bar, ScopeDriver& driver, const QList<QAction*>& copying,
                const QList<QAction*>& viewing) {
    FrontPanel& panel = driver.panel();
    QMenu& load = add_menu(bar, u"&Load Setup"_s);
    add(load, panel.loadconfig, driver,
        {u"&Load Setup..."_s, u"Reads the panel's settings from a file"_s, QKeySequence::Open});
    load.addSeparator();
    add(load, panel.menuexit, driver,
        {u"E&xit"_s, u"Closes the instrument and the program"_s, QKeySequence(u"Ctrl+Q"_s)});

    QMenu& save = add_menu(bar, u"&Save Setup"_s);
    add(save, panel.saveconfig, driver,
        {u"&Save Setup..."_s, u"Writes the panel's settings to a file"_s, QKeySequence::Save});

    QMenu& calibration = add_menu(bar, u"&Calibration"_s);
    add(calibration, panel.mnucalibration, driver,
        {u"&Calibration..."_s, u"Calibrates gain, offset and time base"_s});
    add(calibration, panel.cmdcaloofset, driver,
        {u"Software Calibrate &Offset"_s, u"Takes the present mean of both inputs as 0 V"_s});

    QMenu& options = add_menu(bar, u"&Options"_s);
    add(options, panel.mnusettings, driver,
        {u"&Settings..."_s, u"Snapshot, display and colours"_s, QKeySequence::Preferences});
    options.addSeparator();
    options.addActions(copying);
    options.addSeparator();
    options.addActions(viewing);

    fill_tools(add_menu(bar, u"&Tools"_s), driver);

    QMenu& help = add_menu(bar, u"&Help"_s);
    QAction* const manual =
        add(help, panel.menuhelp, driver,
            {u"&Help"_s, u"Opens the manual at the page that tells of where the keyboard is"_s,
             QKeySequence::HelpContents});
    // In each window.
    manual->setShortcutContext(Qt::ApplicationShortcut);
    add(help, panel.menuabout, driver,
        {u"&About"_s, u"Version, licences, and where settings and manual lie"_s});
    help.addSeparator();
    add(help, panel.exportdata, driver,
        {u"&Export Data..."_s, u"Saves the sweep that is shown to a file"_s});
}

} // namespace kv408::ui
