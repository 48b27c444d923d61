#include "ui/screen_label.h"

#include "ui/bind.h"

namespace kv408::ui {

QLabel* make_screen_label(QWidget* parent, Label& control, const Words& words) {
    auto* const label = new QLabel(parent);
    QSizePolicy policy = label->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    label->setSizePolicy(policy);
    describe(*label, words);
    bind(label, control);
    return label;
}

} // namespace kv408::ui
