#include "remote/gate.h"

#include <optional>

namespace kv408 {

namespace {

// The answer that changes least.
MessageAnswer least_answer(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::ok:
        return MessageAnswer::ok;
    case MessageButtons::ok_cancel:
    case MessageButtons::retry_cancel:
        return MessageAnswer::cancel;
    case MessageButtons::yes_no:
        break;
    }
    return MessageAnswer::no;
}

} // namespace

MessageAnswer GatedMessageBoxes::show(const Message& message) {
    if (gate_.collects()) {
        gate_.take(message.text);
        return least_answer(message.buttons);
    }
    if (gate_.takes(message)) {
        return least_answer(message.buttons);
    }
    std::optional<Gate::Closed> closed;
    if (message.holds_sweep || message.link_failure) {
        closed.emplace(gate_);
    }
    return boxes_.show(message);
}

void GatedWindowMessages::process_endings() {
    const Gate::Closed closed(gate_);
    messages_.process_endings();
}

} // namespace kv408
