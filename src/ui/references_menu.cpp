#include "ui/references_menu.h"

#include "scope/tools.h"
#include "ui/menu_entry.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// "R1" of place 0.
QString short_name(std::size_t place) {
    return u"R"_s + QString::number(place + 1);
}

void fill_one(QMenu& menu, ReferenceControls& controls, ScopeDriver& driver) {
    add_entry(menu, controls.mnuReferenceKeepCH1, driver,
              {u"Keep CH&1"_s, u"Keeps CH1 of the last whole sweep"_s});
    add_entry(menu, controls.mnuReferenceKeepCH2, driver,
              {u"Keep CH&2"_s, u"Keeps CH2 of the last whole sweep"_s});
    add_entry(menu, controls.mnuReferenceKeepMATH1, driver,
              {u"Keep &MATH1"_s, u"Keeps the first trace of the maths window"_s});
    add_entry(menu, controls.mnuReferenceKeepMATH2, driver,
              {u"Keep M&ATH2"_s, u"Keeps the second trace of the maths window"_s});
    add_entry(
        menu, controls.mnuReferenceLoad, driver,
        {u"&Load..."_s, u"Keeps the first channel of a file that this program has written"_s});
    add_entry(menu, controls.mnuReferenceSave, driver,
              {u"&Save..."_s, u"Writes the reference to a file of comma-separated values"_s});
    add_entry(menu, controls.mnuReferenceClear, driver, {u"&Clear"_s, u"Forgets the reference"_s});
}

} // namespace

void fill_references_menu(QMenu& menu, ScopeDriver& driver) {
    ReferenceMenu& references = driver.tools().references();
    for (std::size_t place = 0; place < References::count; ++place) {
        const QString number = QString::number(place + 1);
        add_entry(menu, references.controls(place).mnuReferenceShow, driver,
                  {u"Show R&"_s + number, u"Shows the reference under the traces, or hides it"_s,
                   QKeySequence(u"Ctrl+"_s + number)});
    }
    menu.addSeparator();
    for (std::size_t place = 0; place < References::count; ++place) {
        fill_one(name_menu(*menu.addMenu(short_name(place))), references.controls(place), driver);
    }
}

} // namespace kv408::ui
