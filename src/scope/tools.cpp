#include "scope/tools.h"

namespace kv408 {

Tools::Tools(FrontPanel& panel, const Sweeps& sweeps, const Host& host)
    : panel_(panel), places_(host.places), export_dialog_(panel, sweeps,
                                                          {.clock = host.clock,
                                                           .boxes = host.boxes,
                                                           .files = host.files,
                                                           .choosers = host.choosers},
                                                          [this] { return origin(); }),
      record_dialog_(panel,
                     {.clock = host.clock,
                      .boxes = host.boxes,
                      .files = host.files,
                      .choosers = host.choosers},
                     [this] { return origin(); }) {
    for (Button* const entry : {&panel.mnuexport, &panel.exportdata}) {
        entry->on_click([this] { export_dialog_.open(places_.documents); });
    }
    panel.mnurecord.on_click([this] { record_dialog_.open(places_.documents); });
}

ExportOrigin Tools::origin() const {
    return {.version = KV408_VERSION, .serial = panel_.device.text()};
}

void Tools::sweep_complete(const std::shared_ptr<const Sweep>& sweep) {
    record_dialog_.take(*sweep);
    if (export_dialog_.is_open()) {
        export_dialog_.show_sweep();
    }
}

} // namespace kv408
