#include "ui/menus.h"

#include <QMenu>

#include "autoset/autoset.h"
#include "scope/single_sweep.h"
#include "scope/tools.h"
#include "ui/menu_entry.h"
#include "ui/references_menu.h"
#include "ui/undo_menu.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QMenu& add_menu(QMenuBar& bar, const QString& title) {
    return name_menu(*bar.addMenu(title));
}

QMenu& add_sub_menu(QMenu& menu, const QString& title) {
    return name_menu(*menu.addMenu(title));
}

void fill_sweep_menu(QMenu& menu, ScopeDriver& driver) {
    SweepControls& controls = driver.single().controls();
    add_entry(menu, controls.mnustart, driver, {u"&Start"_s, u"Starts sweeping"_s});
    add_entry(menu, controls.mnustop, driver, {u"S&top"_s, u"Stops sweeping"_s});
    add_entry(menu, controls.mnusingle, driver,
              {u"Si&ngle"_s, u"Starts, and stops after one whole new sweep of each channel"_s});
}

void fill_tools(QMenu& tools, ScopeDriver& driver) {
    FrontPanel& panel = driver.panel();
    fill_undo_menu(tools, driver);
    tools.addSeparator();
    add_entry(tools, driver.autoset().controls().mnuautoset, driver,
              {u"&Autoset"_s, u"Finds the signals and sets everything up to show them"_s,
               QKeySequence(u"Ctrl+Shift+A"_s)});
    fill_sweep_menu(add_sub_menu(tools, u"S&weep"_s), driver);
    tools.addSeparator();
    add_entry(
        tools, panel.mnuexport, driver,
        {u"&Export..."_s, u"Saves the sweep that is shown to a file"_s, QKeySequence(u"Ctrl+E"_s)});
    add_entry(tools, panel.mnurecord, driver,
              {u"&Record..."_s, u"Saves one sweep after the other while they come"_s});
    fill_references_menu(add_sub_menu(tools, u"Re&ferences"_s), driver);
    add_entry(tools, panel.mnustatistics, driver,
              {u"&Statistics"_s, u"Shows mean, deviation and extremes of the measured values"_s});
    add_entry(tools, panel.mnudensity, driver,
              {u"&Density"_s, u"Shows how often the traces have passed where"_s});
    add_entry(tools, driver.tools().histogram().controls().mnuhistogram, driver,
              {u"Histo&gram"_s, u"Shows how the hits of a part of the plot spread"_s});
    add_entry(tools, driver.tools().jitter().controls().mnujitter, driver,
              {u"&Jitter"_s, u"Shows by how much the time of an edge varies"_s});
    add_entry(tools, driver.tools().eye().controls().mnueye, driver,
              {u"E&ye"_s, u"Shows how open the eye of random data is"_s});
    add_entry(tools, driver.tools().mask().controls().mnumask, driver,
              {u"Mas&k Test"_s, u"Shows whether a trace keeps out of a mask"_s});
    add_entry(tools, driver.tools().readouts().controls().mnureadouts, driver,
              {u"Read-ou&ts"_s, u"Shows what the time cursors tell, and what clips"_s});
    add_entry(tools, driver.tools().maths().controls().mnumaths, driver,
              {u"Mat&hs"_s, u"Shows traces that are computed from the channels"_s});
    add_entry(tools, driver.tools().spectrum().controls().mnuspectrum, driver,
              {u"Spectru&m"_s, u"Shows what sines the sweeps are made of"_s});
    add_entry(tools, panel.mnuremote, driver,
              {u"Remote &Control..."_s, u"Lets other programs operate this one (SCPI)"_s});
}

} // namespace

void fill_menus(QMenuBar& bar, ScopeDriver& driver, const QList<QAction*>& copying,
                const QList<QAction*>& viewing) {
    FrontPanel& panel = driver.panel();
    bar.setAccessibleName(u"Menus"_s);
    QMenu& load = add_menu(bar, u"&Load Setup"_s);
    add_entry(
        load, panel.loadconfig, driver,
        {u"&Load Setup..."_s, u"Reads the panel's settings from a file"_s, QKeySequence::Open});
    load.addSeparator();
    add_entry(load, panel.menuexit, driver,
              {u"E&xit"_s, u"Closes the instrument and the program"_s, QKeySequence(u"Ctrl+Q"_s)});

    QMenu& save = add_menu(bar, u"&Save Setup"_s);
    add_entry(
        save, panel.saveconfig, driver,
        {u"&Save Setup..."_s, u"Writes the panel's settings to a file"_s, QKeySequence::Save});

    QMenu& calibration = add_menu(bar, u"&Calibration"_s);
    add_entry(calibration, panel.mnucalibration, driver,
              {u"&Calibration..."_s, u"Calibrates gain, offset and time base"_s});
    add_entry(calibration, panel.cmdcaloofset, driver,
              {u"Software Calibrate &Offset"_s, u"Takes the present mean of both inputs as 0 V"_s});

    QMenu& options = add_menu(bar, u"&Options"_s);
    add_entry(options, panel.mnusettings, driver,
              {u"&Settings..."_s, u"Snapshot, display and colours"_s, QKeySequence::Preferences});
    options.addSeparator();
    options.addActions(copying);
    options.addSeparator();
    options.addActions(viewing);

    fill_tools(add_menu(bar, u"&Tools"_s), driver);

    QMenu& help = add_menu(bar, u"&Help"_s);
    QAction* const manual = add_entry(
        help, panel.menuhelp, driver,
        {u"&Help"_s, u"Opens the manual at the page that tells of where the keyboard is"_s,
         QKeySequence::HelpContents});
    // In each window.
    manual->setShortcutContext(Qt::ApplicationShortcut);
    add_entry(help, panel.menuabout, driver,
              {u"&About"_s, u"Version, licences, and where settings and manual lie"_s});
    help.addSeparator();
    add_entry(help, panel.exportdata, driver,
              {u"&Export Data..."_s, u"Saves the sweep that is shown to a file"_s});
}

} // namespace kv408::ui
