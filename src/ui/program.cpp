#include "ui/program.h"

#include <cstdlib>
#include <utility>

#include <QApplication>
#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace kv408::ui {
namespace {

/// Opens `page` with what the desktop has for it.
bool browse(const std::filesystem::path& page) {
#ifdef Q_OS_WIN
    const QString name = QString::fromStdWString(page.wstring());
#else
    const QString name = QFile::decodeName(page.c_str());
#endif
    return QDesktopServices::openUrl(QUrl::fromLocalFile(name));
}

} // namespace

Program::Program(Clock& clock, Bridge& bridge, Files& files, const Places& places,
                 Diagnose diagnose)
    : remote_({.clock = clock,
               .gate = gate_,
               .wake =
                   [this] {
                       QMetaObject::invokeMethod(
                           &window_, [this] { window_.serve_remote(); }, Qt::QueuedConnection);
                   }}),
      scope_(Machine{.clock = clock,
                     .boxes = gated_boxes_,
                     .messages = gated_messages_,
                     .bridge = bridge,
                     .files = files,
                     .choosers = choosers_,
                     .places = places,
                     .coder = coder_,
                     .diagnose = std::move(diagnose),
                     .browse = browse,
                     .beep = [] { QApplication::beep(); }}),
      window_(scope_,
              {.boxes = boxes_, .choosers = choosers_, .asked = gated_boxes_, .remote = remote_}) {
    boxes_.set_window(&window_);
    messages_.set_window(&window_);
    choosers_.set_window(&window_);
    window_.on_closed(
        [this] { QApplication::exit(window_.failed() ? EXIT_FAILURE : EXIT_SUCCESS); });
}

Program::~Program() {
    remote_.close(); // its thread wakes the window, which goes first
}

} // namespace kv408::ui
