#include "scope/sweep_dialogs.h"

namespace kv408 {
namespace {

/// Lets the ticks act as long as it lives, whatever entries there are.
class Meanwhile {
public:
    explicit Meanwhile(Entries& entries)
        : entries_(entries), around_(std::exchange(entries.resting, entries.count)) {}
    ~Meanwhile() { entries_.resting = around_; }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    Entries& entries_;
    int around_;
};

} // namespace

MessageAnswer SweepMessageBoxes::show(const Message& message) {
    if (message.link_failure) {
        return show_failure(message);
    }
    if (message.holds_sweep) {
        return boxes_.show(message);
    }
    const Meanwhile sweeping(entries_);
    return boxes_.show(message);
}

MessageAnswer SweepMessageBoxes::show_failure(const Message& message) {
    if (program_.given_up) {
        return MessageAnswer::extra;
    }
    Message shown = message;
    if (acquisition_.acqrunning) {
        shown.extra_button = "Stop";
    }
    const MessageAnswer answer = boxes_.show(shown);
    if (answer == MessageAnswer::extra) {
        program_.given_up = true;
        stop_();
    }
    return answer;
}

std::optional<std::filesystem::path> SweepFileChoosers::open_file(const FileQuestion& question) {
    const Meanwhile sweeping(entries_);
    return choosers_.open_file(question);
}

std::optional<ChosenFile> SweepFileChoosers::save_file(const FileQuestion& question) {
    const Meanwhile sweeping(entries_);
    return choosers_.save_file(question);
}

std::optional<std::filesystem::path> SweepFileChoosers::choose_folder(const std::string& title) {
    const Meanwhile sweeping(entries_);
    return choosers_.choose_folder(title);
}

} // namespace kv408
