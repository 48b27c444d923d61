#include "ui/told_window.h"

#include <utility>

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>

#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// A line of text that changes with each second: text that can be selected is laid out anew far
/// more slowly.
QLabel* make_line(WidgetMaker& make, Label& control, const Words& words) {
    QLabel* const line = make_told(make, control, words);
    line->setTextInteractionFlags(Qt::NoTextInteraction);
    return line;
}

} // namespace

QWidget* make_told_frame(ScopeDriver& driver, const ToldLabels& labels, int least_width) {
    auto* const frame = new PanelFrame(u"Values"_s);
    frame->setMinimumWidth(least_width);
    WidgetMaker make(frame, driver);
    auto* const grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    if (labels.state != nullptr) {
        grid->addWidget(make_line(make, *labels.state,
                                  {u"Sweeps of the "_s + labels.subject,
                                   u"How many sweeps were counted, and since when"_s}),
                        row++, 0, 1, 2);
    }
    if (labels.reason != nullptr) {
        QLabel* const reason = make_line(make, *labels.reason,
                                         {u"Finding of the "_s + labels.subject,
                                          u"What was found, or why there is no number"_s});
        QFont bold = reason->font();
        bold.setBold(true);
        reason->setFont(bold);
        grid->addWidget(reason, row++, 0, 1, 2);
    }
    grid->addWidget(
        make.label(labels.names, {u"Names of the values"_s, u"What stands beside them"_s}), row, 0,
        Qt::AlignTop);
    grid->addWidget(make.label(labels.values, {u"Values of the "_s + labels.subject,
                                               u"The numbers, or why there is none"_s}),
                    row++, 1, Qt::AlignTop);
    grid->addWidget(make_line(make, labels.remark,
                              {u"Remarks on the "_s + labels.subject,
                               u"What makes the values smaller or wrong"_s}),
                    row++, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row, 1);
    return frame;
}

QLayout* make_told_ending(QDialog& window, ScopeDriver& driver, Button& copy, const QString& copied,
                          const QString& close) {
    WidgetMaker make(&window, driver);
    auto* const row = new QHBoxLayout;
    row->setSpacing(window_gap);
    row->addStretch();
    row->addWidget(make.button(copy, u"&Copy"_s, {u"Copy"_s, copied}));
    row->addWidget(make_plain_button(window, close, u"C&lose"_s,
                                     {u"Close"_s, u"Closes the window; the density stays on"_s},
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
