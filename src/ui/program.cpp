#include "ui/program.h"

#include <cstdlib>

#include <QCoreApplication>

namespace kv408::ui {

Program::Program(Clock& clock, Bridge& bridge, Files& files, const Places& places)
    : scope_(Machine{clock, boxes_, messages_, bridge, files, choosers_, places, coder_}),
      window_(scope_, {.boxes = boxes_, .choosers = choosers_}) {
    boxes_.set_window(&window_);
    messages_.set_window(&window_);
    choosers_.set_window(&window_);
    window_.on_closed(
        [this] { QCoreApplication::exit(window_.failed() ? EXIT_FAILURE : EXIT_SUCCESS); });
}

} // namespace kv408::ui
