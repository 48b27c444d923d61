#include "ui/told_window.h"

#include <utility>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

QWidget* make_told_frame(ScopeDriver& driver, const ToldLabels& labels, int least_width) {
    auto* const frame = new PanelFrame(u"Values"_s);
    frame->keep_width(least_width);
    WidgetMaker make(frame, driver);
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    if (labels.state != nullptr) {
        grid->addWidget(make_changing(make, *labels.state,
                                      {u"Sweeps of the "_s + labels.subject,
                                       u"How many sweeps were counted, and since when"_s}),
                        row++, 0, 1, 2);
    }
    if (labels.reason != nullptr) {
        QLabel* const reason = make_changing(make, *labels.reason,
                                             {u"Finding of the "_s + labels.subject,
                                              u"What was found, or why there is no number"_s});
        QFont bold = reason->font();
        bold.setBold(true);
        reason->setFont(bold);
        grid->addWidget(reason, row++, 0, 1, 2);
    }
    add_values(make, *grid, row++, labels.names, labels.values,
               {u"Values of the "_s + labels.subject, u"The numbers, or why there is none"_s});
    grid->addWidget(make_changing(make, labels.remark,
                                  {u"Remarks on the "_s + labels.subject,
                                   u"What makes the values smaller or wrong"_s}),
                    row++, 0, 1, 2);
    grid->setRowStretch(row, 1);
    return frame;
}

void add_values(WidgetMaker& make, QGridLayout& grid, int row, Label& names, Label& values,
                const Words& told) {
    grid.addWidget(make.label(names, {u"Names of the values"_s, u"What stands beside them"_s}), row,
                   0, Qt::AlignTop);
    grid.addWidget(make.label(values, told), row, 1, Qt::AlignTop);
    grid.setColumnStretch(1, 1);
}

QLayout* make_told_ending(QDialog& window, ScopeDriver& driver, Button& copy, const QString& copied,
                          const QString& close, const QString& closes) {
    WidgetMaker make(&window, driver);
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make.button(copy, u"&Copy"_s, {u"Copy"_s, copied}));
    row->addWidget(make_plain_button(window, close, u"C&lose"_s, {u"Close"_s, closes},
                                     [&window] { window.reject(); }));
    return row;
}

QLineEdit* make_typed(WidgetMaker& make, TextBox& control, const QString& without,
                      const Words& words) {
    QLineEdit* const line = make.text_box(control, words);
    line->setPlaceholderText(without);
    return line;
}

void copy_to_clipboard(Button& copy, std::function<std::string()> text) {
    copy.on_click([text = std::move(text)] {
        const std::string copied = text();
        if (!copied.empty()) {
            QGuiApplication::clipboard()->setText(QString::fromStdString(copied));
        }
    });
}

} // namespace kv408::ui
