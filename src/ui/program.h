#pragma once

#include "host/clock.h"
#include "host/diagnose.h"
#include "host/files.h"
#include "host/places.h"
#include "link/bridge.h"
#include "remote/gate.h"
#include "remote/remote_control.h"
#include "scope/scope.h"
#include "ui/main_window.h"
#include "ui/qt_file_choosers.h"
#include "ui/qt_message_boxes.h"
#include "ui/qt_picture_coder.h"
#include "ui/qt_window_messages.h"

namespace kv408::ui {

/// The whole program with its window.
class Program {
public:
    /// The program that reaches its instrument through `bridge`, of which `diagnose` tells what
    /// stands in the way, and keeps its files in `places`. It ends the application when it ends
    /// itself.
    Program(Clock& clock, Bridge& bridge, Files& files, const Places& places,
            Diagnose diagnose = {});

    /// The main window; showing it starts the program.
    [[nodiscard]] MainWindow& window() { return window_; }

    /// The program without its window.
    [[nodiscard]] Scope& scope() { return scope_; }

    /// Remote control, off at first.
    [[nodiscard]] RemoteControl& remote() { return remote_; }

    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

private:
    QtMessageBoxes boxes_;
    QtWindowMessages messages_;
    QtFileChoosers choosers_;
    QtPictureCoder coder_;
    Gate gate_;
    GatedMessageBoxes gated_boxes_{boxes_, gate_};
    GatedWindowMessages gated_messages_{messages_, gate_};
    RemoteControl remote_;
    Scope scope_;
    MainWindow window_;
};

} // namespace kv408::ui
