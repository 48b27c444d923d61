#include "server/options.h"

#include <charconv>
#include <cstdint>
#include <string_view>

#include "host/shown_text.h"

namespace kv408 {
namespace {

constexpr const char* help_text =
    "Usage: kv408-server [--port NUMBER] [--listen ADDRESS] [--simulated]\n"
    "\n"
    "Runs the oscilloscope without a window, for programs that speak SCPI over the network.\n"
    "\n"
    "  --port NUMBER     listens at this TCP port, 5025 unless told otherwise; 0: any free one\n"
    "  --listen ADDRESS  listens at this address of the computer, 127.0.0.1 unless told "
    "otherwise,\n"
    "                    which only this computer reaches; 0.0.0.0 or :: lets the network in, "
    "which\n"
    "                    nothing else keeps out\n"
    "  --simulated       with a simulated instrument\n"
    "  --help            shows this text\n"
    "  --version         shows the version\n"
    "\n"
    "Settings are those of kv408. INT, TERM and HUP save them and end it.\n"
    "Exit code: 0 it was asked to end, 1 it could not listen, 2 wrong use.\n";

constexpr int wrong_use = 2;

std::optional<std::uint16_t> port_in(std::string_view text) {
    std::uint16_t port = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), port);
    if (read.ec != std::errc{} || read.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return port;
}

} // namespace

CommandLine read_command_line(std::span<const char* const> arguments, std::ostream& out,
                              std::ostream& err) {
    ServerOptions options;
    const auto wrong = [&err](const std::string& why) {
        err << "kv408-server: " << why << "; --help tells what there is.\n";
        return CommandLine{std::nullopt, wrong_use};
    };
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help") {
            out << help_text;
            return {};
        }
        if (argument == "--version") {
            out << "kv408-server " << KV408_VERSION << '\n';
            return {};
        }
        if (argument == "--simulated") {
            options.simulated = true;
        } else if (argument == "--port" || argument == "--listen") {
            if (++i == arguments.size()) {
                return wrong(std::string(argument) + " has nothing behind it");
            }
            if (argument == "--listen") {
                options.place.address = arguments[i];
            } else if (const auto port = port_in(arguments[i])) {
                options.place.port = *port;
            } else {
                return wrong('"' + shown_line(arguments[i]) + "\" is no port");
            }
        } else {
            return wrong('"' + shown_line(std::string(argument)) + "\" is no option");
        }
    }
    return {options, 0};
}

} // namespace kv408
