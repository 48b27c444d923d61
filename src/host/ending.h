#pragma once

#include "host/file_choosers.h"
#include "host/message_boxes.h"
#include "host/window_messages.h"
#include "state/program_state.h"

namespace kv408 {

/// Message boxes that unwind when the program has ended, before or while a box was open.
class EndingMessageBoxes : public MessageBoxes {
public:
    /// Shows through `boxes` as long as `program` has not ended.
    EndingMessageBoxes(MessageBoxes& boxes, const ProgramState& program)
        : boxes_(boxes), program_(program) {}

    MessageAnswer show(const Message& message) override;

private:
    MessageBoxes& boxes_;
    const ProgramState& program_;
};

/// Window messages that unwind when one of them has ended the program.
class EndingWindowMessages : public WindowMessages {
public:
    /// Passes on to `messages` as long as `program` has not ended.
    EndingWindowMessages(WindowMessages& messages, const ProgramState& program)
        : messages_(messages), program_(program) {}

    void process_pending() override;
    void process_endings() override;
    void repaint(std::string_view control_name) override;

private:
    WindowMessages& messages_;
    const ProgramState& program_;
};

/// File dialogs that unwind when the program has ended, before or while a dialog was open.
class EndingFileChoosers : public FileChoosers {
public:
    /// Asks through `choosers` as long as `program` has not ended.
    EndingFileChoosers(FileChoosers& choosers, const ProgramState& program)
        : choosers_(choosers), program_(program) {}

    std::optional<std::filesystem::path> open_file(const FileQuestion& question) override;
    std::optional<ChosenFile> save_file(const FileQuestion& question) override;
    std::optional<std::filesystem::path> choose_folder(const std::string& title) override;

private:
    FileChoosers& choosers_;
    const ProgramState& program_;
};

} // namespace kv408
