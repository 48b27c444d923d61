#include "ui/settings_pages.h"

#include <array>

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>

#include "ui/bind.h"
#include "ui/frames.h"
#include "ui/panel_frame.h"
#include "ui/swatch.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int swatch_width = 44;
constexpr int swatch_height = 20;

/// The frame of a page, shown as `control` says; it keeps its room while another page is shown.
PanelFrame* make_page(Label& control) {
    auto* const page = new PanelFrame(QString::fromStdString(control.caption()));
    QSizePolicy policy = page->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    page->setSizePolicy(policy);
    return page;
}

QGridLayout* make_grid(QWidget* page) {
    auto* const grid = new QGridLayout(page);
    grid->setContentsMargins(0, 4, 0, 4);
    grid->setHorizontalSpacing(frame_measure::column_spacing);
    grid->setVerticalSpacing(frame_measure::row_spacing + 2);
    return grid;
}

Swatch* make_swatch(QWidget* page, Label& control, const Words& words) {
    auto* const swatch = new Swatch(page, swatch_width, swatch_height);
    describe(*swatch, words);
    bind_appearance(swatch, control);
    return swatch;
}

/// What differs between the components of a colour.
struct ComponentWords {
    QString caption; ///< with a mnemonic
    QString name;
};

void add_component(QGridLayout& grid, WidgetMaker& make, SettingsControls& controls,
                   std::size_t component, const ComponentWords& words) {
    constexpr int large_change = 5;
    constexpr int number_width = 52;
    const int row = static_cast<int>(component) + 1;
    QSlider* const slider = make.slider(controls.slrgb[component],
                                        {words.name, words.name + u" of the colour, 0 to 255"_s});
    slider->setPageStep(large_change);
    slider->setMinimumWidth(150);
    QLineEdit* const number =
        make.text_box(controls.txtrgb[component],
                      {words.name + u" value"_s, words.name + u" of the colour, 0 to 255"_s});
    number->setAlignment(Qt::AlignRight);
    number->setFixedWidth(number_width);
    grid.addWidget(make_caption(words.caption, slider), row, 3);
    grid.addWidget(slider, row, 4);
    grid.addWidget(number, row, 5);
    grid.addWidget(make_swatch(make.frame(), controls.component[component],
                               {words.name + u" part"_s, words.name + u" of the colour alone"_s}),
                   row, 6);
}

void add_options(QGridLayout& grid, WidgetMaker& make, SettingsControls& controls) {
    for (std::size_t item = 0; item < colour_items; ++item) {
        OptionButton& control = controls.optcolor[item];
        const QString name = QString::fromStdString(control.caption());
        auto* const option = new QRadioButton(make.frame());
        describe(*option, {name, u"Edits this colour: "_s + name});
        bind(option, control, make.driver());
        grid.addWidget(option, static_cast<int>(item), 0);
        grid.addWidget(make_swatch(make.frame(), controls.shpcolor[item],
                                   {u"Colour of "_s + name, u"The colour as edited: "_s + name}),
                       static_cast<int>(item), 1);
    }
}

/// The line under the snapshot path that is there where the path holds what is not read.
QLabel* make_shown_path(WidgetMaker& make, Label& control) {
    QLabel* const line = make.label(
        control, {u"Snapshot path as it is stored"_s,
                  u"The folder for snapshots, with \\x1b and the like for what cannot be seen"_s});
    line->setTextFormat(Qt::PlainText);
    // A long one widens nothing.
    line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return line;
}

} // namespace

QWidget* make_snapshot_page(SettingsControls& controls, ScopeDriver& driver) {
    constexpr int path_width = 260;
    auto* const page = make_page(controls.frmsnapshot);
    WidgetMaker make(page, driver);
    QGridLayout* const grid = make_grid(page);
    QLineEdit* const path =
        make.text_box(controls.txtsnapshotpath,
                      {u"Snapshot path"_s, u"Folder that snapshots are saved in without asking"_s});
    path->setMinimumWidth(path_width);
    // An empty one is completed with the separator, and that alone is the root folder.
    path->setPlaceholderText(u"empty: the root folder, "_s + QDir::rootPath());
    grid->addWidget(make_caption(u"Snapshot &Path:"_s, path), 0, 0, 1, 2);
    grid->addWidget(path, 1, 0);
    grid->addWidget(make.button(controls.browse, u"..."_s,
                                {u"Browse"_s, u"Chooses the folder for snapshots"_s}),
                    1, 1);
    grid->addWidget(make_shown_path(make, controls.shownpath), 2, 0, 1, 2);
    grid->addWidget(make.check(controls.chksnapshotdialog, u"&Always show Save-Dialog"_s,
                               {u"Always show save dialog"_s,
                                u"Asks for the name and the place of every snapshot"_s}),
                    3, 0, 1, 2);
    grid->addWidget(make.check(controls.chksnapshotinvert, u"&Invert Colors"_s,
                               {u"Invert colours"_s,
                                u"Saves snapshots with inverted colours, as for printing"_s}),
                    4, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(5, 1);
    bind_appearance(page, controls.frmsnapshot);
    return page;
}

QWidget* make_display_page(SettingsControls& controls, ScopeDriver& driver) {
    constexpr int number_width = 20;
    auto* const page = make_page(controls.frmdisplay);
    WidgetMaker make(page, driver);
    QGridLayout* const grid = make_grid(page);
    QSlider* const slider =
        make.slider(controls.persist,
                    {u"Persistence time"_s, u"How many earlier sweeps fade visibly, 1 to 9"_s});
    slider->setSingleStep(1);
    slider->setPageStep(1);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(1);
    auto* const number = new QLabel(QString::number(slider->value()), page);
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number->setMinimumWidth(number_width);
    QObject::connect(slider, &QSlider::valueChanged, number,
                     [number](int value) { number->setText(QString::number(value)); });
    grid->addWidget(make_caption(u"Persistence &Time:"_s, slider), 0, 0, 1, 2);
    grid->addWidget(slider, 1, 0);
    grid->addWidget(number, 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(2, 1);
    bind_appearance(page, controls.frmdisplay);
    return page;
}

QWidget* make_colours_page(SettingsControls& controls, ScopeDriver& driver) {
    constexpr int between_columns = 14;
    constexpr int below_sliders = 5;
    auto* const page = make_page(controls.frmcolors);
    WidgetMaker make(page, driver);
    QGridLayout* const grid = make_grid(page);
    add_options(*grid, make, controls);
    for (int row = 0; row < static_cast<int>(colour_items); ++row) {
        grid->setRowMinimumHeight(row, frame_measure::row_height);
    }
    grid->setColumnMinimumWidth(2, between_columns);
    grid->addWidget(make_swatch(page, controls.shpcurrentcol,
                                {u"Edited colour"_s, u"The colour that is being edited"_s}),
                    0, 3, 1, 4);
    const std::array words = {ComponentWords{u"&Red"_s, u"Red"_s},
                              ComponentWords{u"&Green"_s, u"Green"_s},
                              ComponentWords{u"&Blue"_s, u"Blue"_s}};
    for (std::size_t component = 0; component < colour_components; ++component) {
        add_component(*grid, make, controls, component, words[component]);
    }
    grid->addWidget(make.check(controls.chkautoupd, u"A&utoupdate"_s,
                               {u"Autoupdate"_s, u"Shows every edit in the main window at once"_s}),
                    below_sliders, 3, 1, 4);
    grid->addWidget(
        make.button(controls.cmdsetdefault, {},
                    {u"Set all colours to default"_s,
                     u"Sets all seven colours as they were delivered, in the main window too"_s}),
        below_sliders + 1, 3, 1, 4);
    auto* const presets = new QHBoxLayout;
    presets->setSpacing(frame_measure::column_spacing);
    presets->addWidget(
        make.button(controls.cmdonblack, {},
                    {u"Colours on black"_s, u"Sets all seven colours to bright ones on black"_s}));
    presets->addWidget(make.button(
        controls.cmdonwhite, {},
        {u"Colours on white"_s, u"Sets all seven colours to dark ones on white, as for print"_s}));
    grid->addLayout(presets, below_sliders + 2, 3, 1, 4);
    grid->setColumnStretch(4, 1);
    bind_appearance(page, controls.frmcolors);
    return page;
}

} // namespace kv408::ui
