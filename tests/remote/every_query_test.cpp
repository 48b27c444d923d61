// Every query of the program's own table is asked, with each number that its header may have, in
// what a client may find: it answers in one line, or its error says why it cannot.

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "remote/with_masks.h"

namespace kv408 {
namespace {

using AskedTexts = std::vector<std::string>;

/// `headers` with each number that may stand at the first `mark`.
AskedTexts numbered_headers(const AskedTexts& headers, const std::string& mark, int last) {
    AskedTexts all;
    for (const std::string& header : headers) {
        const auto at = header.find(mark);
        if (at == std::string::npos) {
            all.push_back(header);
            continue;
        }
        for (int number = 1; number <= last; ++number) {
            std::string one = header;
            all.push_back(one.replace(at, mark.size(), std::to_string(number)));
        }
    }
    return all;
}

/// The headers that `pattern` stands for.
AskedTexts headers_asked(const std::string& pattern) {
    AskedTexts headers = numbered_headers(numbered_headers({pattern}, "<n>", 2), "<1-3>", 3);
    const auto open = pattern.find('[');
    if (open != std::string::npos) {
        const auto close = pattern.find(']');
        headers = {pattern.substr(0, open) + pattern.substr(close + 1),
                   pattern.substr(0, open) + pattern.substr(open + 1, close - open - 1) +
                       pattern.substr(close + 1)};
    }
    return headers;
}

/// What the queries take that want something, by how their headers begin.
AskedTexts wanted_parameters(const Command& command) {
    if (command.header == "DISPlay:COLor") {
        return {" CH1", " CH2", " BACK", " TEXT", " GRID", " TBAC", " ANN"};
    }
    if (command.header == "HCOPy:SDUMp:DATA") {
        return {" PNG", " BMP"};
    }
    if (command.header == "DENSity:COUNts<n>") {
        return {" 0,1"};
    }
    if (command.header.starts_with("STATistics:")) {
        return {" CHAN1,VMAX", " CHAN2,NWID"};
    }
    if (command.header.starts_with("MEASure:") || command.header.starts_with("CURSor:VOLTage")) {
        return {" CHAN1", " CHAN2"};
    }
    ADD_FAILURE() << command.header << "? wants parameters: name them here";
    return {};
}

AskedTexts parameters_asked(const Command& command) {
    if (command.query_takes.least > 0) {
        return wanted_parameters(command);
    }
    return command.query_takes.most > 0 ? AskedTexts{"", " MIN", " MAX", " DEF"} : AskedTexts{""};
}

/// The length of the number, word, text or block that `reply` begins with, by IEEE 488.2, chapter
/// 8.7; 0 where it begins with none.
std::size_t item_length(std::string_view reply) {
    const auto span_of = [reply](const char* letters) {
        return std::min(reply.find_first_not_of(letters), reply.size());
    };
    if (reply.empty()) {
        return 0;
    }
    if (reply.front() == '"') {
        std::size_t at = 1;
        while (at < reply.size() && (reply[at] != '"' || reply.substr(at, 2) == "\"\"")) {
            at += reply[at] == '"' ? 2 : 1;
        }
        return at < reply.size() ? at + 1 : 0;
    }
    if (reply.front() == '#' && reply.size() > 1 && std::isdigit(reply[1]) != 0) {
        const auto digits = static_cast<std::size_t>(reply[1] - '0');
        const std::size_t length = 2 + digits + std::stoul(std::string(reply.substr(2, digits)));
        return length <= reply.size() ? length : 0;
    }
    return std::isupper(reply.front()) != 0 ? span_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_")
                                            : span_of("-+.0123456789E");
}

bool is_well_formed(std::string_view reply) {
    while (true) {
        const std::size_t length = item_length(reply);
        if (length == 0 || length == reply.size()) {
            return length > 0;
        }
        if (reply[length] != ',') {
            return false;
        }
        reply.remove_prefix(length + 1);
    }
}

/// What queries are answered with that cannot be answered as they are elsewhere.
struct QueryOutcome {
    std::string_view headers;    ///< how they begin, as they are asked
    std::string_view error;      ///< with its number; empty: they answer
    std::string_view reply = {}; ///< up to the first comma
    bool limits_alone = false;   ///< only those for MIN, MAX and DEF

    [[nodiscard]] bool fits(const std::string& header, const std::string& parameters) const {
        const bool limit = parameters == " MIN" || parameters == " MAX" || parameters == " DEF";
        return header.starts_with(headers) && (limit || !limits_alone);
    }
};

constexpr std::string_view nothing_collected =
    "-230,\"Data corrupt or stale;Nothing was collected of the channel\"";
constexpr std::string_view nothing_was_collected =
    "-230,\"Data corrupt or stale;Nothing has been collected\"";
constexpr std::string_view no_hit_in_window =
    "-230,\"Data corrupt or stale;Nothing was hit in the window\"";
constexpr std::string_view no_density =
    "-230,\"Data corrupt or stale;There is no density of the channel\"";
constexpr std::string_view no_sweep_yet =
    "-230,\"Data corrupt or stale;No sweep has been finished\"";
constexpr std::string_view no_whole_sweep =
    "-230,\"Data corrupt or stale;No whole sweep has come yet\"";
constexpr std::string_view cursors_are_off = "-221,\"Settings conflict;The cursors are off\"";
constexpr std::string_view time_cursors_are_off =
    "-221,\"Settings conflict;The time cursors are off\"";
constexpr std::string_view no_instrument = "-240,\"Hardware error;No instrument\"";
constexpr std::string_view not_measured_reply = "9.91E+37";

/// All errors of the client, each followed by a line end.
std::string errors_of(RemoteProgram& program) {
    std::string all;
    for (std::string one; (one = program.error()) != "0,\"No error\"";) {
        all += one + '\n';
    }
    return all;
}

void ask_one(RemoteProgram& program, const std::string& question, const QueryOutcome& outcome) {
    const std::string reply = program.ask_and_wait(question);
    const std::string errors = errors_of(program);
    if (!outcome.error.empty()) {
        EXPECT_EQ(errors, std::string(outcome.error) + '\n') << question;
        EXPECT_EQ(reply.substr(0, reply.find(',')), outcome.reply) << question;
        return;
    }
    EXPECT_EQ(errors, "") << question;
    if (question == "*IDN?") { // arbitrary text
        EXPECT_EQ(std::count(reply.begin(), reply.end(), ','), 3) << reply;
    } else {
        EXPECT_TRUE(is_well_formed(reply)) << question << " answers " << reply.substr(0, 200);
    }
}

/// Asks `program` all there is. What comes of a question is told by the first of `outcomes` that
/// fits; each has to fit one.
void ask_everything(RemoteProgram& program, std::vector<QueryOutcome> outcomes) {
    std::set<const QueryOutcome*> seen;
    outcomes.push_back({"", ""}); // all else answers
    int asked = 0;
    for (const Command& command : program.control.table().commands()) {
        if (!command.answer) {
            continue;
        }
        for (const std::string& header : headers_asked(command.header)) {
            for (const std::string& parameters : parameters_asked(command)) {
                const auto outcome =
                    std::find_if(outcomes.begin(), outcomes.end(), [&](const QueryOutcome& one) {
                        return one.fits(header, parameters);
                    });
                seen.insert(&*outcome);
                ask_one(program, header + '?' + parameters, *outcome);
                ++asked;
            }
        }
    }
    outcomes.pop_back();
    for (const QueryOutcome& one : outcomes) {
        EXPECT_TRUE(seen.contains(&one)) << one.headers << ": " << one.error;
    }
    EXPECT_GT(asked, 250);
}

void open_every_tool(RemoteProgram& program) {
    program.ask("MEAS:STAT ON;:STAT:STAT ON;:MATH1:FUNC SUBT;:MATH2:FUNC ENV");
    program.ask("HIST:STAT ON;:JITT:STAT ON;:EYE:STAT ON;:MASK:STAT ON;:SPEC:STAT ON");
    EXPECT_EQ(program.error(), "0,\"No error\"");
}

TEST(EveryQuery, AnswersWhereEverythingIsInUse) {
    WithMasks program(simulator::TestConnection::eye_jitter_noise);
    open_every_tool(program);
    program.ask("CURS:MODE TIME");
    program.ticks(600); // so many sweeps the estimate of the bathtub takes
    program.ask("STOP");
    ask_everything(program, {});
}

TEST(EveryQuery, AnswersOrSaysWhyWhereNoToolIsInUse) {
    WithMasks program(simulator::TestConnection::eye_clean);
    program.ticks(20);
    program.ask("STOP;:MEAS:STAT OFF");
    constexpr std::string_view measure_off = "-221,\"Settings conflict;Measure is off\"";
    constexpr std::string_view maths_1_off = "-221,\"Settings conflict;MATH1 is off\"";
    constexpr std::string_view maths_2_off = "-221,\"Settings conflict;MATH2 is off\"";
    constexpr std::string_view spectrum_off = "-221,\"Settings conflict;The spectrum is off\"";
    ask_everything(program, {
                                {"CURSor:POSition", cursors_are_off},
                                {"CURSor:DELTa:INV", time_cursors_are_off},
                                {"CURSor:DELTa", cursors_are_off},
                                {"CURSor:VOLTage", time_cursors_are_off},
                                {"MEASure:STATe", ""},
                                {"MEASure:SLOT", ""},
                                {"MEASure:ANNotate", ""},
                                {"MEASure:", measure_off, not_measured_reply},
                                {"DENSity:SATurated", nothing_collected},
                                {"DENSity:PREamble", nothing_collected},
                                {"DENSity:COUNts", nothing_collected},
                                {"HISTogram:DATA", no_hit_in_window},
                                {"HISTogram:BINS", no_density},
                                {"JITTer:BATHtub", nothing_was_collected},
                                {"MASK:DATA", nothing_was_collected},
                                {"MATH1:SEQ", maths_1_off},
                                {"MATH1:PRE", maths_1_off},
                                {"MATH1:DATA", maths_1_off},
                                {"MATH1:MEAS", maths_1_off},
                                {"MATH2:SEQ", maths_2_off},
                                {"MATH2:PRE", maths_2_off},
                                {"MATH2:DATA", maths_2_off},
                                {"MATH2:MEAS", maths_2_off},
                                {"SPECtrum:PREamble", spectrum_off},
                                {"SPECtrum:DATA", spectrum_off},
                                {"SPECtrum:PEAKs", spectrum_off},
                                {"SPECtrum:PURity", spectrum_off},
                            });
}

TEST(EveryQuery, AnswersOrSaysWhyBeforeTheFirstSweep) {
    WithMasks program(simulator::TestConnection::eye_clean);
    program.simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                           simulator::TriggerRoute::disconnected};
    open_every_tool(program);
    program.ask("CURS:MODE VOLT;:STOP");
    ASSERT_EQ(program.ask("ACQ:COUN?"), "0");
    ask_everything(program, {
                                {"CURSor:DELTa:INV", time_cursors_are_off},
                                {"CURSor:VOLTage", time_cursors_are_off},
                                {"MEASure:STATe", ""},
                                {"MEASure:SLOT", ""},
                                {"MEASure:ANNotate", ""},
                                {"MEASure:", no_sweep_yet, not_measured_reply},
                                {"WAVeform:PREamble", no_sweep_yet},
                                {"WAVeform:DATA", no_sweep_yet},
                                {"WAVeform:SEQuence", no_sweep_yet},
                                {"DENSity:SATurated", nothing_collected},
                                {"DENSity:PREamble", nothing_collected},
                                {"DENSity:COUNts", nothing_collected},
                                {"HISTogram:DATA", no_hit_in_window},
                                {"HISTogram:BINS", no_density},
                                {"JITTer:BATHtub", nothing_was_collected},
                                {"MASK:DATA", nothing_was_collected},
                                {"MATH1:SEQ", no_whole_sweep},
                                {"MATH1:PRE", no_whole_sweep},
                                {"MATH1:DATA", no_whole_sweep},
                                {"MATH1:MEAS", no_whole_sweep},
                                {"MATH2:SEQ", no_whole_sweep},
                                {"MATH2:PRE", no_whole_sweep},
                                {"MATH2:DATA", no_whole_sweep},
                                {"MATH2:MEAS", no_whole_sweep},
                                {"SPECtrum:PREamble", no_whole_sweep},
                                {"SPECtrum:DATA", no_whole_sweep},
                                {"SPECtrum:PEAKs", no_whole_sweep},
                                {"SPECtrum:PURity", no_whole_sweep},
                            });
}

TEST(EveryQuery, AnswersOrSaysThatTheInstrumentIsLost) {
    RemoteProgram program;
    program.start();
    program.ticks(20);
    EXPECT_NE(program.ask("WAV:SEQ?"), "");
    program.control.detach();
    ask_everything(program, {
                                // Pending until the instrument is back.
                                {"*OPC", "-365,\"Time out error\"", "0"},
                                {"*", ""},
                                {"STATus:", ""},
                                {"SYSTem:ERRor", ""},
                                {"SYSTem:VERSion", ""},
                                {"SYSTem:HELP:HEADers", ""},
                                {"SYSTem:LOCK", ""},
                                {"ACQuire:TIMeout", ""},
                                {"ACQuire:COUNt", ""},
                                // A number of its own, and what the client has taken.
                                {"WAVeform:SEQuence", no_instrument},
                                {"WAVeform:", ""},
                                {"MEASure:STATe", no_instrument},
                                {"MEASure:SLOT", no_instrument},
                                {"MEASure:ANNotate", "", "", true},
                                {"MEASure:ANNotate", no_instrument},
                                {"MEASure:", no_instrument, not_measured_reply},
                                // Their limits are the panel's; others have theirs from themselves.
                                {"CHANnel1:POSition", no_instrument},
                                {"CHANnel2:POSition", no_instrument},
                                {"TRIGger:LEVel", no_instrument},
                                {"CURSor:POSition", no_instrument},
                                {"STATistics:LOW", no_instrument},
                                {"STATistics:HIGH", no_instrument},
                                {"", "", "", true},
                                {"", no_instrument},
                            });
}

} // namespace
} // namespace kv408
