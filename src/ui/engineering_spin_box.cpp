#include "ui/engineering_spin_box.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include <QLocale>

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

struct Prefix {
    QChar letter; ///< null: none
    double factor;
};

/// The prefixes, largest first.
constexpr std::array<Prefix, 7> prefixes = {{{u'G', 1e9},
                                             {u'M', 1e6},
                                             {u'k', 1e3},
                                             {QChar(), 1.0},
                                             {u'm', 1e-3},
                                             {u'u', 1e-6},
                                             {u'n', 1e-9}}};
constexpr Prefix smallest = {u'p', 1e-12};

constexpr int digits = 6;

/// The prefix in which `value` has one to three digits before the point.
Prefix prefix_for(double value) {
    const double magnitude = std::abs(value) * (1.0 + 1e-9);
    if (magnitude == 0.0) {
        return {QChar(), 1.0};
    }
    const auto* const found =
        std::find_if(prefixes.begin(), prefixes.end(),
                     [magnitude](const Prefix& prefix) { return magnitude >= prefix.factor; });
    return found == prefixes.end() ? smallest : *found;
}

std::optional<Prefix> prefix_named(QChar letter) {
    if (letter == smallest.letter) {
        return smallest;
    }
    for (const Prefix& prefix : prefixes) {
        if (prefix.letter == letter) {
            return prefix;
        }
    }
    return std::nullopt;
}

/// A number and the prefix typed after it, if any.
struct Reading {
    double number;
    std::optional<Prefix> prefix;
};

/// Reads "10", "10 M", "10MHz" and the like.
std::optional<Reading> read(QString text, const QString& unit) {
    text = text.trimmed();
    const bool with_unit = text.endsWith(unit);
    if (with_unit) {
        text.chop(unit.size());
        text = text.trimmed();
    }
    std::optional<Prefix> prefix;
    if (!text.isEmpty() && text.back().isLetter()) {
        prefix = prefix_named(text.back());
        if (!prefix) {
            return std::nullopt;
        }
        text.chop(1);
    } else if (with_unit) {
        prefix = Prefix{QChar(), 1.0};
    }
    bool whole = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &whole);
    return whole ? std::optional(Reading{number, prefix}) : std::nullopt;
}

} // namespace

EngineeringSpinBox::EngineeringSpinBox(QString unit, double base, QWidget* parent)
    : QDoubleSpinBox(parent), unit_(std::move(unit)), base_(base) {
    constexpr int decimals = 6;
    setDecimals(decimals);
    setKeyboardTracking(false);
    setAlignment(Qt::AlignRight);
}

QString EngineeringSpinBox::textFromValue(double value) const {
    const Prefix prefix = prefix_for(value * base_);
    const QString number = QLocale::c().toString(value * base_ / prefix.factor, 'g', digits);
    return number + u' ' + (prefix.letter.isNull() ? QString() : QString(prefix.letter)) + unit_;
}

double EngineeringSpinBox::valueFromText(const QString& text) const {
    const std::optional<Reading> reading = read(text, unit_);
    if (!reading) {
        return value();
    }
    const Prefix prefix = reading->prefix.value_or(prefix_for(value() * base_));
    return reading->number * prefix.factor / base_;
}

QValidator::State EngineeringSpinBox::validate(QString& text, int& /*position*/) const {
    const std::optional<Reading> reading = read(text, unit_);
    if (!reading) {
        return QValidator::Intermediate;
    }
    const double number = valueFromText(text);
    return number < minimum() || number > maximum() ? QValidator::Intermediate
                                                    : QValidator::Acceptable;
}

void EngineeringSpinBox::fixup(QString& text) const {
    text = textFromValue(std::clamp(valueFromText(text), minimum(), maximum()));
}

void EngineeringSpinBox::stepBy(int steps) {
    const double magnitude = std::abs(value());
    // One tenth of the decade; downwards from its very start, of the decade below.
    const double inner = magnitude * (steps < 0 ? 1.0 - 1e-9 : 1.0 + 1e-9);
    const double step = magnitude > 0.0 ? std::pow(10.0, std::floor(std::log10(inner)) - 1.0) : 1.0;
    setValue((std::round(value() / step) + steps) * step);
    selectAll();
}

} // namespace kv408::ui
