#include "host/ending.h"

#include "host/shown_text.h"

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
    Message shown = message;
    for (std::string* const text :
         {&shown.text, &shown.title, &shown.informative, &shown.details}) {
        *text = shown_lines(*text);
    }
    const MessageAnswer answer = boxes_.show(shown);
    unwind_if_ended(program_);
    return answer;
}

void EndingWindowMessages::process_pending() {
    messages_.process_pending();
    unwind_if_ended(program_);
}

void EndingWindowMessages::process_endings() {
    messages_.process_endings();
    unwind_if_ended(program_);
}

void EndingWindowMessages::repaint(std::string_view control_name) {
    messages_.repaint(control_name);
}

std::optional<std::filesystem::path> EndingFileChoosers::open_file(const FileQuestion& question) {
    unwind_if_ended(program_);
    auto answer = choosers_.open_file(question);
    unwind_if_ended(program_);
    return answer;
}

std::optional<ChosenFile> EndingFileChoosers::save_file(const FileQuestion& question) {
    unwind_if_ended(program_);
    auto answer = choosers_.save_file(question);
    unwind_if_ended(program_);
    return answer;
}

std::optional<std::filesystem::path> EndingFileChoosers::choose_folder(const std::string& title) {
    unwind_if_ended(program_);
    auto answer = choosers_.choose_folder(title);
    unwind_if_ended(program_);
    return answer;
}

} // namespace kv408
