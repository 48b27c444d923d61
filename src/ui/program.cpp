#include "ui/program.h"

#include <QCoreApplication>

namespace kv408::ui {

Program::Program(Clock& clock, Bridge& bridge)
    : scope_(Machine{clock, boxes_, messages_, bridge}), window_(scope_, boxes_) {
    boxes_.set_window(&window_);
    messages_.set_window(&window_);
    window_.on_closed([] { QCoreApplication::exit(0); });
}

} // namespace kv408::ui
