#include "ui/wheel_accessible.h"

#include <cstdlib>

#include <QAccessibleWidget>

#include "ui/wheel_widget.h"

namespace kv408::ui {
namespace {

/// A wheel as screen readers see it.
class WheelAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit WheelAccessible(WheelWidget* widget)
        : QAccessibleWidget(widget, QAccessible::Slider), widget_(*widget) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? QString::number(widget_.wheel().Value())
                                          : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QVariant currentValue() const override { return widget_.wheel().Value(); }
    void setCurrentValue(const QVariant& value) override {
        if (widget_.isEnabled()) {
            widget_.turn_to(value.toLongLong());
        }
    }
    [[nodiscard]] QVariant maximumValue() const override { return widget_.wheel().Max(); }
    [[nodiscard]] QVariant minimumValue() const override { return widget_.wheel().Min(); }
    [[nodiscard]] QVariant minimumStepSize() const override {
        return std::abs(widget_.wheel().SlideStep());
    }

private:
    WheelWidget& widget_;
};

QAccessibleInterface* accessible_wheel(const QString& /*class_name*/, QObject* object) {
    auto* const wheel = dynamic_cast<WheelWidget*>(object);
    return wheel == nullptr ? nullptr : new WheelAccessible(wheel);
}

} // namespace

void offer_wheels_to_screen_readers() {
    QAccessible::installFactory(accessible_wheel);
}

} // namespace kv408::ui
