#include "ui/loading_note.h"

#include "ui/bind.h"

namespace kv408::ui {

using namespace Qt::StringLiterals;

LoadingNote::LoadingNote(Label& control, QWidget& window) : QLabel(&window), control_(control) {
    constexpr int gap = 16;
    setObjectName(QString::fromStdString(control.name()));
    setAccessibleName(u"Loading"_s);
    setToolTip(u"How far the set-up is loaded"_s);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setMargin(gap);
    hide();
    keep_shown(*this, control, [this] { show_caption(); });
}

void LoadingNote::show_caption() {
    setText(QString::fromStdString(control_.caption()));
    adjustSize();
    move(parentWidget()->rect().center() - rect().center());
    setVisible(!control_.caption().empty());
    raise();
}

} // namespace kv408::ui
