#pragma once

#include <string>

namespace kv408 {

/// The picture beside a message.
enum class MessageIcon { none, information, question, exclamation, critical };

/// The buttons under a message.
enum class MessageButtons { ok, ok_cancel, retry_cancel, yes_no };

/// What the user pressed; `extra` is the further button. Closing the box counts as `cancel` (or
/// `no`, or `ok` where it is alone or beside the further button).
enum class MessageAnswer { ok, cancel, retry, yes, no, extra };

/// One modal message box.
struct Message {
    std::string text;       ///< the message itself, given texts as they stand
    std::string title = {}; ///< empty: the program's default title
    MessageButtons buttons = MessageButtons::ok;
    MessageIcon icon = MessageIcon::none;
    std::string informative = {};  ///< further help in plain words, empty when there is none
    std::string details = {};      ///< lines that the user may ask for, empty when there are none
    std::string extra_button = {}; ///< caption of a further button, empty when there is none
    /// It tells that the instrument did not take a command. While a sweep runs, the user may stop
    /// it from there.
    bool link_failure = false;
    /// It comes in the middle of something that a sweep must not fall into: it holds the ticks of
    /// the timer until it is answered, as every link failure does.
    bool holds_sweep = false;
};

/// Shows message boxes. While one is open nothing else of the program's windows can be operated but
/// its end, and the window's timer goes on ticking.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    /// Shows `message`, waits for the user, returns the button pressed.
    virtual MessageAnswer show(const Message& message) = 0;
};

} // namespace kv408
