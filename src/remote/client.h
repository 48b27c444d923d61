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
#include "remote/measured_sweep.h"
#include "remote/message_reader.h"
#include "remote/scpi_error.h"
#include "remote/status_registers.h"
#include "remote/web_watch.h"
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
    /// Why a client's next command has to wait.
    enum class Hold {
        none,
        wait,   ///< the next command waits until nothing is pending
        answer, ///< the same; then the answer is 1, or 0 after the time-out
    };

    /// A client that sends commands of `table`, which outlives it.
    explicit Client(const CommandTable& table) : table_(table) {}

    /// Takes `bytes` up to the end of a line, and returns how many bytes that were; the rest is to
    /// be offered again when the client is no longer `busy`.
    std::size_t take(std::string_view bytes);

    /// What decides whether a waiting client may go on.
    struct Moment {
        double seconds = 0.0; ///< of a clock that never goes back
        bool pending = false; ///< what was begun before has not been finished yet
    };

    /// Runs the next command of the present line, unless it is held back. Returns the bytes of the
    /// line's reply that are to be sent now: after the last command all that is left, with the line
    /// end; before that a part once much of it has gathered; else none.
    std::string run(const Moment& moment);

    /// True where an answer is being made, and nothing runs before that is done.
    [[nodiscard]] bool awaits_answer() const { return long_answer_ && !long_answer_->ready(); }

    /// True where a line is under way: part of it is held back or has not been run.
    [[nodiscard]] bool busy() const { return message_.has_value(); }

    /// True where `run` would do something now.
    [[nodiscard]] bool can_run(const Moment& moment) const;

    /// True once a web page has sent something through its user's browser: nothing more is taken or
    /// answered.
    [[nodiscard]] bool closed() const { return web_.seen(); }

    // --- For the commands -------------------------------------------------------------------

    /// Holds this client back from now on until nothing is pending or `time_out` has passed. The
    /// rest of the line is about a sweep that comes afterwards.
    void hold(Hold hold) {
        hold_ = hold;
        line_sweep.reset();
    }

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
    /// The sweep that the present line has been told of first: all of the line is about it. Null
    /// where there has been none.
    std::shared_ptr<const MeasuredSweep> line_sweep;
    ErrorQueue errors;

    /// True when answers of the present line wait to be sent.
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
    WebWatch web_;
    std::optional<MessageReader> message_;    ///< the line that is being run
    std::vector<std::string> path_;           ///< where its headers without a leading colon begin
    std::string reply_;                       ///< the part of its reply that has not been sent yet
    bool answered_ = false;                   ///< the reply has begun
    std::unique_ptr<LongAnswer> long_answer_; ///< that is being given
    bool part_given_ = false;                 ///< of that
    Hold hold_ = Hold::none;
    std::optional<double> held_until_; ///< seconds; none before the first look at the time
    bool tell_completion_ = false;
};

} // namespace kv408
