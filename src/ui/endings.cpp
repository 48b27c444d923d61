#include "ui/endings.h"

#include <cstdlib>
#include <exception>
#include <iostream>

#include <QApplication>
#include <QEvent>
#include <QThread>

#include "config/last_settings.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView name_of_endings("endings");

/// The application's `Endings`. What ends the process calls plain functions, which find it here; it
/// is gone before the application is.
Endings* the_endings() {
    auto* const application = QCoreApplication::instance();
    return application == nullptr
               ? nullptr
               : dynamic_cast<Endings*>(application->findChild<QObject*>(name_of_endings));
}

/// Some part ends the process, as Qt does when the X server is gone.
void at_exit() {
    if (auto* const endings = the_endings()) {
        endings->abandon();
    }
}

/// An exception that nobody caught, outside the program itself: the process is aborted.
[[noreturn]] void at_terminate() {
    at_exit();
    std::abort();
}

/// What Qt tells. Where the Wayland compositor is gone it ends the process at once, past all that
/// runs at an exit; these words come just before.
void at_message(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    auto* const endings = the_endings();
    if (endings == nullptr) {
        return;
    }
    if (type == QtFatalMsg || message.contains("Wayland connection"_L1)) {
        endings->abandon();
    }
    endings->pass_on(type, context, message);
}

} // namespace

Endings::Endings(TerminationSignals& signals, Program& program)
    : QObject(QCoreApplication::instance()), signals_(signals), program_(program),
      terminate_before_(std::set_terminate(at_terminate)),
      message_before_(qInstallMessageHandler(at_message)) {
    setObjectName(name_of_endings);
    std::atexit(at_exit);
    signals_.set_handlers({.ask =
                               [this] {
                                   QMetaObject::invokeMethod(
                                       this, [this] { program_.window().end(); },
                                       Qt::QueuedConnection);
                               },
                           .save = [this] { save_unanswered(); }});
    QCoreApplication* const application = QCoreApplication::instance();
    application->installEventFilter(this);
    connect(application, &QCoreApplication::aboutToQuit, this, [this] { program_.window().end(); });
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        // The session may go on all the same.
        [this] { program_.scope().last_settings().save(false); }, Qt::DirectConnection);
}

Endings::~Endings() {
    signals_.set_handlers({});
    qInstallMessageHandler(message_before_);
    std::set_terminate(terminate_before_);
}

void Endings::abandon() noexcept {
    if (QThread::currentThread() == thread()) {
        program_.scope().abandon();
    } else {
        program_.scope().last_settings().save(false);
    }
}

void Endings::pass_on(QtMsgType type, const QMessageLogContext& context,
                      const QString& message) const {
    message_before_(type, context, message);
}

bool Endings::eventFilter(QObject* watched, QEvent* event) {
    // The session ends; closing the window for it would tell in a box what goes wrong.
    if (event->type() == QEvent::Quit && watched == QCoreApplication::instance()) {
        program_.window().end();
    }
    return QObject::eventFilter(watched, event);
}

void Endings::save_unanswered() {
    const bool saved =
        program_.scope().last_settings().save(false).result.status == FileStatus::done;
    std::cerr
        << "Kv408 was asked to end 3 s ago and is still held up, perhaps by the bridge library. "
        << (saved ? "Its settings have been saved; another" : "Another")
        << " signal ends it at once." << std::endl;
}

} // namespace kv408::ui
