#include "ui/widget_maker.h"

#include <QEvent>

namespace kv408::ui {
namespace {

/// A caption that is enabled just as its buddy is.
class Caption : public QLabel {
public:
    Caption(const QString& text, QWidget* buddy) : QLabel(text, buddy->parentWidget()) {
        setBuddy(buddy);
        setEnabled(buddy->isEnabledTo(buddy->parentWidget()));
        buddy->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange) {
            setEnabled(static_cast<QWidget*>(watched)->isEnabled());
        }
        return QLabel::eventFilter(watched, event);
    }
};

} // namespace

void describe(QWidget& widget, const Words& words) {
    widget.setAccessibleName(words.name);
    widget.setToolTip(words.tip);
}

QLabel* make_caption(const QString& text, QWidget* buddy) {
    return new Caption(text, buddy);
}

QPushButton* WidgetMaker::button(Button& control, const QString& caption, const Words& words) {
    auto* const widget = new QPushButton(caption, frame_);
    widget->setAutoDefault(false);
    describe(*widget, words);
    bind(widget, control, driver_);
    return widget;
}

QCheckBox* WidgetMaker::check(CheckBox& control, const QString& caption, const Words& words) {
    auto* const widget = new QCheckBox(caption, frame_);
    describe(*widget, words);
    bind(widget, control, driver_);
    return widget;
}

QComboBox* WidgetMaker::list(ListBox& control, const Words& words) {
    auto* const widget = new QComboBox(frame_);
    widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    widget->setMaxVisibleItems(24);
    describe(*widget, words);
    bind(widget, control, driver_);
    return widget;
}

QLineEdit* WidgetMaker::text_box(TextBox& control, const Words& words) {
    auto* const widget = new QLineEdit(frame_);
    describe(*widget, words);
    bind(widget, control, driver_);
    return widget;
}

QSlider* WidgetMaker::slider(Slider& control, const Words& words, Moves moves) {
    auto* const widget = new QSlider(Qt::Horizontal, frame_);
    describe(*widget, words);
    bind(widget, control, driver_, moves);
    return widget;
}

QLabel* WidgetMaker::label(Label& control, const Words& words) {
    auto* const widget = new QLabel(frame_);
    describe(*widget, words);
    bind(widget, control);
    return widget;
}

} // namespace kv408::ui
