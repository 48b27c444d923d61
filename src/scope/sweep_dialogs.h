#pragma once

#include <functional>
#include <utility>

#include "host/file_choosers.h"
#include "host/message_boxes.h"
#include "state/acquisition_state.h"
#include "state/program_state.h"

namespace kv408 {

/// The entries into the program that have not returned yet.
struct Entries {
    int count = 0;
    int resting = 0; ///< those of them that wait for the answer to a dialog, and those around these

    /// True while one of them holds the ticks.
    [[nodiscard]] bool hold_ticks() const { return count > resting; }
};

/// Message boxes during a sweep. A box that opens in the middle of an exchange holds the sweep;
/// under any other box the sweep goes on. A message about a link failure during a sweep can be
/// answered with Stop as well; further messages of the same exchange are then not shown.
class SweepMessageBoxes : public MessageBoxes {
public:
    /// Shows through `boxes`; `entries` counts the entries into the program that hold its ticks.
    SweepMessageBoxes(MessageBoxes& boxes, ProgramState& program,
                      const AcquisitionState& acquisition, Entries& entries)
        : boxes_(boxes), program_(program), acquisition_(acquisition), entries_(entries) {}

    /// Sets what Stop in a box does.
    void on_stop(std::function<void()> handler) { stop_ = std::move(handler); }

    MessageAnswer show(const Message& message) override;

private:
    MessageAnswer show_failure(const Message& message);

    MessageBoxes& boxes_;
    ProgramState& program_;
    const AcquisitionState& acquisition_;
    Entries& entries_;
    std::function<void()> stop_;
};

/// File dialogs under which a sweep goes on.
class SweepFileChoosers : public FileChoosers {
public:
    /// Asks through `choosers`; `entries` counts the entries into the program that hold its ticks.
    SweepFileChoosers(FileChoosers& choosers, Entries& entries)
        : choosers_(choosers), entries_(entries) {}

    std::optional<std::filesystem::path> open_file(const FileQuestion& question) override;
    std::optional<ChosenFile> save_file(const FileQuestion& question) override;
    std::optional<std::filesystem::path> choose_folder(const std::string& title) override;

private:
    FileChoosers& choosers_;
    Entries& entries_;
};

} // namespace kv408
