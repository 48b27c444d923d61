#pragma once

#include <string>

namespace kv408 {

/// The picture beside a message.
enum class MessageIcon { none, information, question, exclamation, critical };

/// The buttons under a message.
enum class MessageButtons { ok, ok_cancel, retry_cancel, yes_no };

/// What the user pressed. Closing the box counts as `cancel` (or `no`, or `ok` where it is alone).
enum class MessageAnswer { ok, cancel, retry, yes, no };

/// One modal message box.
struct Message {
    std::string text;       ///< the message itself, given texts as they stand
    std::string title = {}; ///< empty: the program's default title
    MessageButtons buttons = MessageButtons::ok;
    MessageIcon icon = MessageIcon::none;
    std::string informative = {}; ///< further help in plain words, empty when there is none
    std::string details = {};     ///< lines that the user may ask for, empty when there are none
};

/// Shows modal message boxes. While one is open the window's timer goes on ticking.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    /// Shows `message`, waits for the user, returns the button pressed.
    virtual MessageAnswer show(const Message& message) = 0;
};

} // namespace kv408
