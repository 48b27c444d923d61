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

/// A slider that shows its value on a label, whether the user moved it or the program.
class TellingSlider : public QSlider {
public:
    explicit TellingSlider(QWidget* parent)
        : QSlider(Qt::Horizontal, parent), number_(new QLabel(parent)) {
        number_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        number_->setBuddy(this);
    }

    [[nodiscard]] QLabel* number() const { return number_; }

protected:
    void sliderChange(SliderChange change) override {
        QSlider::sliderChange(change);
        if (change == SliderRangeChange) {
            number_->setMinimumWidth(
                number_->fontMetrics().horizontalAdvance(QString::number(maximum())));
        }
        number_->setNum(value());
    }

private:
    QLabel* number_;
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
    // The program fills most lists only once the window is on the screen.
    widget->setSizeAdjustPolicy(QComboBox::AdjustToContents);
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

NumberedSlider WidgetMaker::numbered_slider(Slider& control, const Words& words, Moves moves) {
    auto* const widget = new TellingSlider(frame_);
    describe(*widget, words);
    describe(*widget->number(), words);
    bind(widget, control, driver_, moves);
    return {.slider = widget, .number = widget->number()};
}

QLabel* WidgetMaker::label(Label& control, const Words& words) {
    auto* const widget = new QLabel(frame_);
    describe(*widget, words);
    bind(widget, control);
    return widget;
}

} // namespace kv408::ui
