#include "ui/settings_window.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "ui/bind.h"
#include "ui/lengths.h"
#include "ui/segment_bar.h"
#include "ui/settings_pages.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QLayout* make_ending(WidgetMaker& make, SettingsControls& controls) {
    constexpr int button_width = 88;
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    QPushButton* const accept =
        make.button(controls.cmdok, {}, {u"OK"_s, u"Keeps the settings and closes the dialog"_s});
    accept->setDefault(true);
    QPushButton* const cancel =
        make.button(controls.cmdcancel, {},
                    {u"Cancel"_s, u"Puts back the colours from before and closes the dialog"_s});
    for (QPushButton* const button : {accept, cancel}) {
        button->setMinimumWidth(button_width);
        row->addWidget(button);
    }
    return row;
}

} // namespace

SettingsWindow::SettingsWindow(SettingsDialog& dialog, ScopeDriver& driver, QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmSettings"_s);
    setWindowTitle(u"Kv408 - Tarvo  Settings"_s);
    SettingsControls& controls = dialog.controls();
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(window_gap, window_gap, window_gap, window_gap);
    layout->setSpacing(window_gap);
    auto* const tabs = new SegmentBar(this);
    describe(*tabs, {u"Settings page"_s, u"Which settings are shown below"_s});
    bind(tabs, controls.tabstrip1, driver);
    layout->addWidget(tabs, 0, 0);
    // The pages lie over each other; one is shown.
    for (QWidget* const page :
         {make_snapshot_page(controls, driver), make_display_page(controls, driver),
          make_colours_page(controls, driver)}) {
        layout->addWidget(page, 1, 0);
    }
    WidgetMaker make(this, driver);
    layout->addLayout(make_ending(make, controls), 2, 0);
    layout->setRowStretch(1, 1);
}

void SettingsWindow::present() {
    if (!isVisible()) {
        const QWidget& owner = *parentWidget();
        const QSize size = sizeHint();
        const QPoint corner(owner.width() - size.width() - 3 * window_gap,
                            (owner.height() - size.height()) / 2);
        resize(size);
        move(owner.mapToGlobal(corner));
    }
    show();
    raise();
    activateWindow();
}

void SettingsWindow::reject() {
    driver_.act([this] { dialog_.controls().cmdcancel.click(); });
}

} // namespace kv408::ui
