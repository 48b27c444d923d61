#pragma once

#include <QDoubleSpinBox>

namespace kv408::ui {

/// A number box for physical quantities: shows and takes values as "10 MHz" or "800 ps", and steps
/// in the decade that the value is in. A number typed without a prefix is in the prefix shown.
class EngineeringSpinBox : public QDoubleSpinBox {
public:
    /// A box for values in `base` of `unit`, so for picoseconds 1e-12 and "s".
    EngineeringSpinBox(QString unit, double base, QWidget* parent = nullptr);

    [[nodiscard]] QString textFromValue(double value) const override;
    [[nodiscard]] double valueFromText(const QString& text) const override;
    [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
    void stepBy(int steps) override;
    void fixup(QString& text) const override;

private:
    QString unit_;
    double base_;
};

} // namespace kv408::ui
