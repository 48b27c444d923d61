#include "ui/export_window.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/scrolling_area.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The frame with the first lines of the file.
QWidget* make_preview(ExportControls& controls, ScopeDriver& driver) {
    constexpr int shown_columns = 58;
    constexpr int shown_lines = 21;
    auto* const frame = new PanelFrame(u"First lines"_s);
    auto* const content = new QWidget;
    WidgetMaker make(content, driver);
    QLabel* const lines =
        make.label(controls.lblExportPreview,
                   {u"First lines"_s, u"What the file begins with, as comma-separated values"_s});
    lines->setTextFormat(Qt::PlainText);
    lines->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lines->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const QFontMetrics letters(lines->font());
    auto* const inner = new QGridLayout(content);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(lines, 0, 0);
    inner->setColumnMinimumWidth(0, shown_columns * letters.averageCharWidth());
    inner->setRowMinimumHeight(0, shown_lines * letters.lineSpacing());
    auto* const area = new ScrollingArea(content);
    area->setMinimumSize(shown_columns * letters.averageCharWidth() / 2,
                         shown_lines * letters.lineSpacing() / 3);
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);
    return frame;
}

QLayout* make_export_ending(WidgetMaker& make, ExportControls& controls, QAction& copy_table,
                            QDialog& window) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make_plain_button(
        window, u"cmdExportCopy"_s, u"&Copy Table"_s,
        {u"Copy table"_s, u"Copies the sweep as a table with tabs to the clipboard"_s},
        [&copy_table] { copy_table.trigger(); }));
    QPushButton* const save =
        make.button(controls.cmdExport, u"&Export"_s,
                    {u"Export"_s, u"Saves the sweep that is shown to the file"_s});
    save->setDefault(true);
    row->addWidget(save);
    row->addWidget(make_plain_button(window, u"cmdExportClose"_s, u"C&lose"_s,
                                     {u"Close"_s, u"Closes the window"_s},
                                     [&window] { window.reject(); }));
    return row;
}

} // namespace

ExportWindow::ExportWindow(ExportDialog& dialog, ScopeDriver& driver, QAction& copy_table,
                           QWidget* owner)
    : QDialog(owner), dialog_(dialog), driver_(driver) {
    setObjectName(u"frmExport"_s);
    setWindowTitle(u"Kv408 - Tarvo  Export"_s);
    addAction(&copy_table);
    ExportControls& controls = dialog.controls();
    WidgetMaker make(this, driver);
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(window_gap, window_gap, window_gap, window_gap);
    grid->setSpacing(window_gap);
    QComboBox* const type =
        make.list(controls.cmbExportType,
                  {u"File type"_s, u"The kind of file; the end of the name follows it"_s});
    grid->addWidget(make_caption(u"File &type:"_s, type), 0, 0);
    grid->addWidget(type, 0, 1, 1, 2);
    QLineEdit* const file = make.text_box(
        controls.txtExportFile,
        {u"File name"_s, u"The file with its folders; the kind of file follows its end"_s});
    grid->addWidget(make_caption(u"File &name:"_s, file), 1, 0);
    grid->addWidget(file, 1, 1);
    grid->addWidget(make.button(controls.cmdExportBrowse, u"..."_s,
                                {u"Browse"_s, u"Chooses the file to save to"_s}),
                    1, 2);
    grid->addWidget(make_preview(controls, driver), 2, 0, 1, 3);
    grid->addWidget(make_told(make, controls.lblExportRemark,
                              {u"Remark"_s, u"What is to be known of this kind of file"_s}),
                    3, 0, 1, 3);
    grid->addWidget(make_told(make, controls.lblExportSaved,
                              {u"Saved"_s, u"Where the last file lies, or what failed"_s}),
                    4, 0, 1, 3);
    grid->addLayout(make_export_ending(make, controls, copy_table, *this), 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
}

void ExportWindow::reject() {
    driver_.act([this] { dialog_.close(); });
    QDialog::reject();
}

} // namespace kv408::ui
