#include "scope/tools.h"

namespace kv408 {

Tools::Tools(FrontPanel& panel, const Sweeps& sweeps, const Host& host)
    : panel_(panel), places_(host.places),
      export_dialog_(panel, sweeps,
                     {.clock = host.clock,
                      .boxes = host.boxes,
                      .files = host.files,
                      .choosers = host.choosers},
                     [this] {
                         return ExportOrigin{.version = KV408_VERSION,
                                             .serial = panel_.device.text()};
                     }) {
    for (Button* const entry : {&panel.mnuexport, &panel.exportdata}) {
        entry->on_click([this] { export_dialog_.open(places_.documents); });
    }
}

void Tools::sweep_complete(const std::shared_ptr<const Sweep>& /*sweep*/) {
    if (export_dialog_.is_open()) {
        export_dialog_.show_sweep();
    }
}

} // namespace kv408
