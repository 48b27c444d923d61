#pragma once

#include <QLabel>

#include "panel/controls.h"

namespace kv408::ui {

/// A note over the middle of the window that is there as long as its control has a caption.
class LoadingNote : public QLabel {
public:
    /// Shows `control`, which outlives it, over `window`, which owns it.
    LoadingNote(Label& control, QWidget& window);

private:
    void show_caption();

    Label& control_;
};

} // namespace kv408::ui
