#include "remote/client.h"

#include <utility>

namespace kv408 {
namespace {

// Above so many bytes a line's reply is sent before it is complete: a client that never reads makes
// the program hold no more than this and one answer.
constexpr std::size_t longest_part = std::size_t{64} * 1024;

} // namespace

std::size_t Client::take(std::string_view bytes) {
    if (closed() || busy()) {
        return 0;
    }
    const std::size_t taken = reader_.take(bytes);
    web_.take(bytes.substr(0, taken));
    if (auto line = reader_.line()) {
        if (line->too_long) {
            note({ScpiError::input_overrun});
        } else if (!closed()) {
            message_.emplace(std::move(line->text));
            path_.clear();
            line_sweep.reset();
        }
    }
    return taken;
}

std::string Client::run(const Moment& moment) {
    if (tell_completion_ && !moment.pending) {
        status.event |= StatusRegisters::operation_complete;
        tell_completion_ = false;
    }
    if (!message_ || awaits_answer() || !end_hold(moment)) {
        return {};
    }
    if (long_answer_) {
        add_part();
    } else {
        run_unit();
    }
    return leaving();
}

std::string Client::leaving() {
    const bool ended = !message_;
    if (ended && std::exchange(answered_, false)) {
        reply_ += '\n';
    }
    return ended || reply_.size() >= longest_part ? std::exchange(reply_, {}) : std::string();
}

bool Client::can_run(const Moment& moment) const {
    const bool held =
        hold_ != Hold::none && moment.pending && held_until_ && moment.seconds < *held_until_;
    return (busy() && !held && !awaits_answer()) || (tell_completion_ && !moment.pending);
}

bool Client::end_hold(const Moment& moment) {
    if (hold_ == Hold::none) {
        return true;
    }
    if (!held_until_) {
        held_until_ = moment.seconds + time_out;
    }
    if (moment.pending && moment.seconds < *held_until_) {
        return false;
    }
    if (moment.pending) {
        note({ScpiError::time_out});
    }
    if (hold_ == Hold::answer) {
        add_answer(moment.pending ? "0" : "1");
    }
    hold_ = Hold::none;
    held_until_.reset();
    return true;
}

void Client::run_unit() {
    try {
        std::optional<MessageUnit> unit = message_->next();
        if (!unit) {
            message_.reset();
            return;
        }
        run_header(std::move(*unit));
    } catch (const Refused& refused) {
        note(refused);
        if (is_command_error(refused.error)) {
            message_.reset(); // where in the tree the rest belongs is not known
        }
    }
}

void Client::run_header(MessageUnit unit) {
    std::vector<std::string> nodes;
    if (unit.nodes.front().front() == '*') {
        nodes = unit.nodes; // leaves the place in the tree as it is
    } else {
        if (!unit.from_root) {
            nodes = path_;
        }
        nodes.insert(nodes.end(), unit.nodes.begin(), unit.nodes.end());
        path_.assign(nodes.begin(), nodes.end() - 1);
    }
    add_answer(table_.run(*this, nodes, std::move(unit)));
}

void Client::add_answer(std::string answer) {
    if (answer.empty()) {
        return;
    }
    if (std::exchange(answered_, true)) {
        reply_ += ';';
    }
    if (reply_.empty()) {
        reply_ = std::move(answer);
    } else {
        reply_ += answer;
    }
}

void Client::answer_in_parts(std::unique_ptr<LongAnswer> answer) {
    long_answer_ = std::move(answer);
    part_given_ = false;
}

void Client::add_part() {
    try {
        std::string part = long_answer_->next();
        if (part.empty()) {
            long_answer_.reset();
        } else if (std::exchange(part_given_, true)) {
            reply_ += part;
        } else {
            add_answer(std::move(part));
        }
    } catch (const Refused& refused) {
        long_answer_.reset();
        note(refused);
    }
}

void Client::note(const Refused& refused) {
    const int hundreds = static_cast<int>(refused.error) / -100;
    switch (hundreds) {
    case 1:
        status.event |= StatusRegisters::command_error;
        break;
    case 2:
        status.event |= StatusRegisters::execution_error;
        break;
    case 3:
        status.event |= StatusRegisters::device_error;
        break;
    default:
        status.event |= StatusRegisters::query_error;
        break;
    }
    errors.add(refused.error, refused.detail);
}

} // namespace kv408
