#pragma once

#include <exception>

#include <QObject>

#include "host/termination_signals.h"
#include "ui/program.h"

namespace kv408::ui {

/// Lets a program end properly whatever ends its process: a signal, the end of the session, the
/// application that quits, a display that is gone, an exception that nobody caught. None of them
/// opens a box. While it exists these all lead to the one program; there is one for the
/// application.
class Endings : public QObject {
public:
    /// For `program`, which `signals` end too; both outlive it.
    Endings(TerminationSignals& signals, Program& program);
    ~Endings() override;
    Endings(const Endings&) = delete;
    Endings& operator=(const Endings&) = delete;

    /// Saves and closes without touching anything that is shown; from another thread than the
    /// program's own it saves what was last known.
    void abandon() noexcept;

    /// Passes a message of Qt's on to the handler that was set before.
    void pass_on(QtMsgType type, const QMessageLogContext& context, const QString& message) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// On a thread of the signals.
    void save_unanswered();

    TerminationSignals& signals_;
    Program& program_;
    std::terminate_handler terminate_before_;
    QtMessageHandler message_before_;
};

} // namespace kv408::ui
