#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "remote/command_table.h"
#include "remote/line_reader.h"
#include "remote/long_answer.h"
#include "remote/message_reader.h"
#include "remote/scpi_error.h"
#include "remote/status_registers.h"
#include "state/sweep.h"

namespace kv408 {

/// What a client has chosen to fetch, and how.
struct ClientWaveform {
    enum class Format { ascii, word, real };

    Channel source = ch1;
    Format format = Format::ascii;
    bool least_first = false;           ///< the order of bytes in blocks
    std::shared_ptr<const Sweep> sweep; ///< null before the first
    std::uint64_t number = 0;           ///< of that sweep
};

/// One client: what it has sent and not yet been answered, its registers, its errors. It knows
/// nothing of the network.
class Client {
public:
    /// What holds a client back, and what follows.
    enum class Hold {
        none,
        wait,   ///< the next command waits until nothing is pending
        answer, ///< the same, and the answer is 1, or 0 when time has run out
    };

    /// A client that sends commands of `table`, which outlives it.
    explicit Client(const CommandTable& table) : table_(table) {}

    /// Takes what has come up to the end of a line, and says how many bytes that were; the rest is
    /// to be offered again when it is no longer `busy`.
    std::size_t take(std::string_view bytes);

    /// What it is waiting for, and the time.
    struct Moment {
        double seconds = 0.0; ///< of a clock that never goes back
        bool pending = false; ///< what was begun before has not been finished yet
    };

    /// Runs the next command of the line that has come, unless it is held back. Returns what of the
    /// line's reply is to leave now: with its end when that was the last command, a part of it when
    /// there is much of it already; empty otherwise.
    std::string run(const Moment& moment);

    /// True where an answer is being made, and nothing runs before that is done.
    [[nodiscard]] bool awaits_answer() const { return long_answer_ && !long_answer_->ready(); }

    /// True where a line is under way: part of it is held back or has not been run.
    [[nodiscard]] bool busy() const { return message_.has_value(); }

    /// True where `run` would do something now.
    [[nodiscard]] bool can_run(const Moment& moment) const;

    /// True once it has spoken the language of the web: no more is taken or answered.
    [[nodiscard]] bool closed() const { return closed_; }

    // --- For the commands -------------------------------------------------------------------

    /// Holds this client back from now on until nothing is pending or `time_out` has passed.
    void hold(Hold hold) { hold_ = hold; }

    /// Sets "operation complete" as soon as nothing is pending (`*OPC`).
    void tell_completion(bool tell) { tell_completion_ = tell; }

    /// Answers with the parts of `answer`, which outlive the call.
    void answer_in_parts(std::unique_ptr<LongAnswer> answer);

    /// Notes `error` in queue and standard event status.
    void note(const Refused& refused);

    /// How long it is held back at most, seconds.
    double time_out = 10.0;
    StatusRegisters status;
    ClientWaveform waveform;
    ErrorQueue errors;

    /// True when an answer waits that the line has given so far.
    [[nodiscard]] bool reply_waits() const { return !reply_.empty(); }

private:
    bool end_hold(const Moment& moment);
    void run_unit();
    void run_header(MessageUnit unit);
    void add_answer(std::string answer);
    void add_part();
    [[nodiscard]] std::string leaving();

    const CommandTable& table_;
    LineReader reader_;
    std::optional<MessageReader> message_; ///< the line that is being run
    std::vector<std::string> path_; ///< where headers of it begin that have no colon in front
    std::string reply_;             ///< what of it has not left yet
    bool answered_ = false;         ///< the reply has begun
    std::unique_ptr<LongAnswer> long_answer_; ///< that is being given
    bool part_given_ = false;                 ///< of that
    bool closed_ = false;
    Hold hold_ = Hold::none;
    std::optional<double> held_until_; ///< seconds; none before the first look at the time
    bool tell_completion_ = false;
};

} // namespace kv408
