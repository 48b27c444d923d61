#include "ui/manual_topic.h"

#include <array>
#include <utility>

#include "ui/panel_frame.h"

namespace kv408::ui {
namespace {

using Topic = std::pair<QStringView, const char*>;

/// Frames by their title that a page of its own tells of.
constexpr std::array frames = {
    Topic(u"TRIGGER", "trigger"),
    Topic(u"HORIZONTAL", "delays"),
    Topic(u"Cursor", "cursors"),
    Topic(u"Measurement", "measurements"),
};

/// Windows by their name.
constexpr std::array windows = {
    Topic(u"benchWindow", "first-picture"),
    Topic(u"frmSettings", "settings"),
    Topic(u"frmcalibration", "calibration"),
    Topic(u"frmExport", "export"),
    Topic(u"frmRecord", "record"),
    Topic(u"frmReference", "references"),
    Topic(u"frmStatistics", "statistics"),
    Topic(u"frmRemote", "automation"),
    Topic(u"frmDensity", "density"),
    Topic(u"frmHistogram", "density"),
    Topic(u"frmJitter", "eye"),
    Topic(u"frmEye", "eye"),
    Topic(u"frmMask", "eye"),
    Topic(u"frmReadouts", "readouts"),
    Topic(u"frmMaths", "maths"),
    Topic(u"frmSpectrum", "spectrum"),
    Topic(u"frmAutoset", "autoset"),
};

} // namespace

std::string manual_topic(const QWidget* focus) {
    for (const QWidget* widget = focus; widget != nullptr; widget = widget->parentWidget()) {
        if (const auto* const frame = dynamic_cast<const PanelFrame*>(widget)) {
            for (const auto& [title, page] : frames) {
                if (frame->title() == title) {
                    return page;
                }
            }
        }
        for (const auto& [name, page] : windows) {
            if (widget->objectName() == name) {
                return page;
            }
        }
        if (widget->isWindow()) {
            return "window";
        }
    }
    return "index";
}

} // namespace kv408::ui
