#include "remote/common_commands.h"

#include <cstdint>
#include <string>
#include <utility>

#include "remote/client.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"

namespace kv408 {
namespace {

constexpr NumberRange byte_range{0, 255, 0};
constexpr NumberRange register_range{0, 65535, 0};
constexpr NumberRange time_out_range{0.1, 3600.0, 10.0, Quantity::seconds};

// The top bit of a register is never used, so that its value is never negative.
constexpr std::uint16_t register_bits = 0x7FFF;

Command action(std::string header, std::function<void(Client&)> act) {
    return {std::move(header), [act = std::move(act)](const Call& call) { act(call.client); }};
}

Command client_query(std::string header, std::function<std::string(Client&)> answer) {
    return query_command(std::move(header), [answer = std::move(answer)](const Call& call) {
        return answer(call.client);
    });
}

// The command and query of a register, whose bits in `unused` stay 0.
template <typename Register>
Command enable_setting(std::string header, const NumberRange& range, unsigned unused, Register of) {
    NumberSetting setting{range, {}, {}};
    setting.set = [of, unused](const Call& call, double value) {
        using Bits = std::remove_reference_t<decltype(of(call.client))>;
        of(call.client) = static_cast<Bits>(static_cast<unsigned>(value) & ~unused);
    };
    setting.get = [of](const Call& call) { return static_cast<double>(of(call.client)); };
    return whole_setting(std::move(header), setting);
}

// The commands of an event register, below `header`.
std::vector<Command> register_commands(const std::string& header,
                                       EventRegister StatusRegisters::*member) {
    NumberSetting enable{register_range, {}, {}};
    enable.set = [member](const Call& call, double value) {
        (call.client.status.*member)
            .set_enable(static_cast<std::uint16_t>(static_cast<unsigned>(value) & register_bits));
    };
    enable.get = [member](const Call& call) {
        return static_cast<double>((call.client.status.*member).enable());
    };
    return {client_query(header + "[:EVENt]",
                         [member](Client& client) {
                             return whole_reply((client.status.*member).take_event());
                         }),
            client_query(header + ":CONDition",
                         [member](Client& client) {
                             return whole_reply((client.status.*member).condition());
                         }),
            whole_setting(header + ":ENABle", enable)};
}

void clear_status(Client& client) {
    client.status.event = 0;
    client.status.operation.clear_event();
    client.status.questionable.clear_event();
    client.errors.clear();
    client.tell_completion(false);
}

std::string take_standard_event(Client& client) {
    return whole_reply(std::exchange(client.status.event, std::uint8_t{0}));
}

std::string headers_of(const CommandTable& table) {
    std::string headers;
    for (const Command& command : table.commands()) {
        headers += command.header + (command.act ? "" : "?") + '\n';
    }
    return headers;
}

std::vector<Command> standard_commands() {
    constexpr unsigned service_bit = 1U << 6;
    return {
        action("*CLS", clear_status),
        enable_setting(
            "*ESE", byte_range, 0,
            [](Client & client) -> auto& { return client.status.event_enable; }),
        client_query("*ESR", take_standard_event),
        enable_setting(
            "*SRE", byte_range, service_bit,
            [](Client & client) -> auto& { return client.status.service_enable; }),
        client_query("*STB",
                     [](Client& client) {
                         return whole_reply(client.status.status_byte(client.errors.size() > 0,
                                                                      client.reply_waits()));
                     }),
        {"*OPC",
         [](const Call& call) { call.client.tell_completion(true); },
         {},
         [](const Call& call) {
             call.client.hold(Client::Hold::answer);
             return std::string();
         }},
        action("*WAI", [](Client& client) { client.hold(Client::Hold::wait); }),
    };
}

std::vector<Command> system_commands(const CommandTable& table) {
    NumberSetting time_out{time_out_range, {}, {}};
    time_out.set = [](const Call& call, double seconds) { call.client.time_out = seconds; };
    time_out.get = [](const Call& call) { return call.client.time_out; };
    return {
        client_query("SYSTem:ERRor[:NEXT]", [](Client& client) { return client.errors.take(); }),
        client_query("SYSTem:ERRor:COUNt",
                     [](Client& client) {
                         return whole_reply(static_cast<std::int64_t>(client.errors.size()));
                     }),
        client_query("SYSTem:VERSion", [](Client&) { return std::string("1999.0"); }),
        client_query("SYSTem:HELP:HEADers",
                     [&table](Client&) { return block_reply(headers_of(table)); }),
        action("STATus:PRESet",
               [](Client& client) {
                   client.status.operation.set_enable(0);
                   client.status.questionable.set_enable(0);
               }),
        real_setting("ACQuire:TIMeout", time_out),
    };
}

} // namespace

std::vector<Command> common_commands(const CommandTable& table) {
    std::vector<Command> all = standard_commands();
    const auto append = [&all](std::vector<Command> more) {
        std::move(more.begin(), more.end(), std::back_inserter(all));
    };
    append(register_commands("STATus:OPERation", &StatusRegisters::operation));
    append(register_commands("STATus:QUEStionable", &StatusRegisters::questionable));
    append(system_commands(table));
    return all;
}

} // namespace kv408
