#include "ui/qt_message_boxes.h"

#include <QFontMetrics>
#include <QPushButton>
#include <QTextEdit>

#include "ui/dialog_run.h"
#include "ui/window_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QMessageBox::Icon icon_of(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::none:
        break;
    case MessageIcon::information:
        return QMessageBox::Information;
    case MessageIcon::question:
        return QMessageBox::Question;
    case MessageIcon::exclamation:
        return QMessageBox::Warning;
    case MessageIcon::critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttons_of(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::ok:
        break;
    case MessageButtons::ok_cancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::retry_cancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    case MessageButtons::yes_no:
        return QMessageBox::Yes | QMessageBox::No;
    }
    return QMessageBox::Ok;
}

/// The button that Enter presses: of Yes and No the one that changes nothing.
QMessageBox::StandardButton default_button(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::retry_cancel:
        return QMessageBox::Retry;
    case MessageButtons::yes_no:
        return QMessageBox::No;
    case MessageButtons::ok:
    case MessageButtons::ok_cancel:
        break;
    }
    return QMessageBox::Ok;
}

MessageAnswer answer_of(int result, MessageButtons buttons) {
    switch (result) {
    case QMessageBox::Ok:
        return MessageAnswer::ok;
    case QMessageBox::Retry:
        return MessageAnswer::retry;
    case QMessageBox::Yes:
        return MessageAnswer::yes;
    case QMessageBox::No:
        return MessageAnswer::no;
    default:
        break;
    }
    if (buttons == MessageButtons::yes_no) {
        return MessageAnswer::no;
    }
    return buttons == MessageButtons::ok ? MessageAnswer::ok : MessageAnswer::cancel;
}

/// Gives `box` a button that shows `details`, unless they are empty.
void add_details(QMessageBox& box, const std::string& details) {
    box.setDetailedText(QString::fromStdString(details));
    if (auto* const shown = box.findChild<QTextEdit*>()) {
        // Room for more than the five short lines that are usual.
        constexpr int characters = 64;
        constexpr int lines = 14;
        const QFontMetrics letters(shown->font());
        shown->setMinimumWidth(characters * letters.averageCharWidth());
        shown->setFixedHeight(lines * letters.lineSpacing());
    }
}

/// Gives `box` the further button of `message`; null where it has none.
QPushButton* add_extra(QMessageBox& box, const Message& message) {
    if (message.extra_button.empty()) {
        return nullptr;
    }
    auto* const button =
        box.addButton(QString::fromStdString(message.extra_button), QMessageBox::ActionRole);
    button->setObjectName(u"extraButton"_s);
    if (message.buttons == MessageButtons::ok) {
        // Alone it would be pressed by Escape anyway.
        box.setEscapeButton(QMessageBox::Ok);
    }
    return button;
}

} // namespace

MessageAnswer QtMessageBoxes::show(const Message& message) {
    const QPointer<QWidget> owner = asking_window(window_);
    QMessageBox box(owner);
    box.setObjectName(u"messageBox"_s);
    box.setWindowTitle(message.title.empty() ? u"Kv408"_s : QString::fromStdString(message.title));
    // The texts hold angle brackets that are no tags.
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message.text));
    box.setInformativeText(QString::fromStdString(message.informative));
    add_details(box, message.details);
    box.setIcon(icon_of(message.icon));
    box.setStandardButtons(buttons_of(message.buttons));
    box.setDefaultButton(default_button(message.buttons));
    const QPushButton* const extra = add_extra(box, message);
    open_.push_back(&box);
    run_over(window_, box);
    open_.pop_back();
    if (owner && owner != window_) {
        // Some desktops would go back to the main window.
        owner->activateWindow();
    }
    if (extra != nullptr && box.clickedButton() == extra) {
        return MessageAnswer::extra;
    }
    return answer_of(box.result(), message.buttons);
}

void QtMessageBoxes::dismiss() {
    for (QMessageBox* box : open_) {
        box->done(QMessageBox::NoButton);
    }
}

} // namespace kv408::ui
