#include "ui/display_needed.h"

#include <cstdlib>
#include <iostream>

#include <QByteArray>
#include <QString>

#include "host/shown_text.h"

namespace kv408::ui {
namespace {

/// How the environment variable `name` is set, in words.
QByteArray told(const char* name) {
    const QByteArray value = qgetenv(name);
    return name + (value.isEmpty() ? QByteArray(" is not set")
                                   : " is \"" + value.toPercentEncoding("/:.-_") + '"');
}

/// Qt ends the process when it finds no display, after some lines of its own on what it has tried.
void hear(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        std::cerr << "Kv408: no display can be used, so the window cannot open: "
                  << told("DISPLAY").constData() << ", " << told("WAYLAND_DISPLAY").constData()
                  << "." << std::endl;
        std::_Exit(EXIT_FAILURE);
    }
    if (!QByteArray(context.category).startsWith("qt.qpa") &&
        !message.startsWith(QLatin1StringView("Failed to create wl_display"))) {
        std::cerr << shown_lines(message.toStdString()) << std::endl;
    }
}

} // namespace

DisplayNeeded::DisplayNeeded() : before_(qInstallMessageHandler(hear)) {}

DisplayNeeded::~DisplayNeeded() {
    qInstallMessageHandler(before_);
}

} // namespace kv408::ui
