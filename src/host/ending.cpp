#include "host/ending.h"

namespace kv408 {
namespace {

void unwind_if_ended(const ProgramState& program) {
    if (program.ended) {
        throw ProgramEnded{};
    }
}

} // namespace

MessageAnswer EndingMessageBoxes::show(const Message& message) {
    unwind_if_ended(program_);
    const MessageAnswer answer = boxes_.show(message);
    unwind_if_ended(program_);
    return answer;
}

void EndingWindowMessages::process_pending() {
    messages_.process_pending();
    unwind_if_ended(program_);
}

void EndingWindowMessages::repaint(std::string_view control_name) {
    messages_.repaint(control_name);
}

} // namespace kv408
