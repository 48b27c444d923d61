#include "remote/command_table.h"

#include <utility>

namespace kv408 {
namespace {

void check_count(std::size_t count, const ParameterCount& takes) {
    if (count < takes.least) {
        throw Refused{ScpiError::missing_parameter};
    }
    if (count > takes.most) {
        throw Refused{ScpiError::parameter_not_allowed};
    }
}

} // namespace

void CommandTable::add(std::vector<Command> commands) {
    for (Command& command : commands) {
        patterns_.emplace_back(command.header);
        commands_.push_back(std::move(command));
    }
}

std::string CommandTable::run(Client& client, const std::vector<std::string>& nodes,
                              MessageUnit unit) const {
    using Kind = HeaderPattern::Match::Kind;
    ScpiError error = ScpiError::undefined_header;
    for (std::size_t i = 0; i < commands_.size(); ++i) {
        const Command& command = commands_[i];
        if (unit.query ? command.answer == nullptr : command.act == nullptr) {
            continue;
        }
        HeaderPattern::Match match = patterns_[i].match(nodes);
        if (match.kind == Kind::suffix_out_of_range) {
            error = ScpiError::suffix_out_of_range;
        }
        if (match.kind != Kind::whole) {
            continue;
        }
        check_count(unit.parameters.size(), unit.query ? command.query_takes : command.takes);
        const Call call{client, std::move(match.suffixes), std::move(unit.parameters)};
        if (unit.query) {
            return command.answer(call);
        }
        command.act(call);
        return {};
    }
    throw Refused{error};
}

} // namespace kv408
