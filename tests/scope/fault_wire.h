#pragma once

#include <chrono>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/wire_log.h"

namespace kv408 {

/// The texts that the link tells, as the users know them.
namespace told {
inline const std::string write_failed = "Error finding WKTP2B device. Aborting application.";
inline const std::string no_list = "Error finding USB device. Aborting application.";
inline const std::string no_device = "ERROR!!! No attached device is found!!!";
inline const std::string open_failed =
    "Error opening device: lm4rxa-SIM00001. Application is aborting. Reset hardware and try again.";
inline const std::string no_speed = "error seting baud rate";
inline const std::string wrong_answer = "Buffer(0) <> 6";
inline const std::string retry =
    "No connection to Device, maybe it's not powered. Please check and click <Retry>!";
inline const std::string not_sent = "Error Sending Data.";
} // namespace told

/// Reads off the wire alone what must have been told: by the rules of the link, from what the
/// bridge answered, whatever was broken. It also holds the program to those rules: three attempts,
/// each with its pause and its time-out, and nothing that depends on a command that was not
/// acknowledged.
class WireReader {
public:
    /// `gain_senders` are the channels whose controls send amplifier-gain frames first, in order;
    /// then set-ups do, for each channel whose frame was not acknowledged.
    explicit WireReader(std::vector<int> gain_senders) : gain_senders_(std::move(gain_senders)) {}

    /// The messages that the operations from `first` on must have brought.
    std::vector<std::string> read(const std::vector<simulator::WireOperation>& operations,
                                  std::size_t first) {
        for (std::size_t index = first; index < operations.size(); ++index) {
            take(operations[index]);
        }
        return told_;
    }

private:
    using Operation = simulator::Operation;
    using WireOperation = simulator::WireOperation;

    void take(const WireOperation& operation) {
        switch (operation.operation) {
        case Operation::get_num_devices:
            return take_count(operation);
        case Operation::get_product_string:
            return take_serial(operation);
        case Operation::open:
            checking_ = operation.status == bridge_success;
            return tell_unless(checking_, told::open_failed);
        case Operation::set_baud_rate:
            return tell_unless(operation.status == bridge_success, told::no_speed);
        case Operation::set_timeouts:
            time_out_ = std::chrono::milliseconds(operation.arguments.at(0));
            return;
        case Operation::write:
            return take_write(operation);
        case Operation::read:
            return take_read(operation);
        default:
            return;
        }
    }

    void tell_unless(bool good, const std::string& text) {
        if (!good) {
            told_.push_back(text);
        }
    }

    void take_count(const WireOperation& operation) {
        attempts_ = 0;
        if (operation.status != bridge_success) {
            told_.push_back(told::no_list);
        } else if (operation.count == 0) {
            told_.push_back(told::no_device);
            told_.push_back(told::retry);
        }
    }

    void take_serial(const WireOperation& operation) {
        const std::string serial(operation.bytes.begin(), operation.bytes.end());
        tell_unless(serial.starts_with("lm4rxa"), told::write_failed);
    }

    void take_write(const WireOperation& operation) {
        if (operation.status != bridge_success) {
            told_.push_back(told::write_failed);
            return;
        }
        const int code = operation.bytes.at(1);
        EXPECT_TRUE(attempts_ == 0 || code == code_) << "another command before the third attempt";
        EXPECT_NE(code, forbidden_) << "sent although the command before it failed";
        tried_ = code == 9 ? tried_ : 0;
        forbidden_ = 0;
        written_ = operation.ended;
        code_ = code;
        awaited_ = codes_with_acknowledge().contains(code);
    }

    void take_read(const WireOperation& operation) {
        if (!awaited_) {
            return;
        }
        awaited_ = false;
        EXPECT_EQ(time_out_, std::chrono::milliseconds(code_ == 29 ? 100 : 1000));
        EXPECT_EQ(operation.began - written_, std::chrono::milliseconds(20));
        // A bridge that refused the shorter one goes on with the usual one.
        EXPECT_LE(operation.ended - operation.began, std::chrono::milliseconds(1000));
        const Byte byte = operation.bytes.empty() ? Byte{0} : operation.bytes.front();
        const bool timed_out = operation.status == bridge_read_timed_out;
        ++attempts_;
        if (checking_) {
            take_check(timed_out, byte == 6);
        } else if (operation.status == bridge_success && byte == 6) {
            finish_command(true);
        } else if (attempts_ == 3) {
            tell_missing(timed_out);
            finish_command(false);
        }
    }

    void take_check(bool timed_out, bool right) {
        if (timed_out && attempts_ < 3) {
            return;
        }
        attempts_ = 0;
        checking_ = false;
        tell_unless(right || timed_out, told::wrong_answer);
        tell_unless(right && !timed_out, told::retry);
    }

    void finish_command(bool acknowledged) {
        attempts_ = 0;
        if (code_ != 9) {
            return;
        }
        const int sender = gain_sender();
        if (acknowledged) {
            // The frame holds the ranges of both.
            open_.clear();
        } else if (gains_sent_ < gain_senders_.size()) {
            open_.insert(sender);
        } else {
            tried_ = sender;
        }
        ++gains_sent_;
    }

    /// The channel that the gain frame under way is sent for.
    [[nodiscard]] int gain_sender() const {
        if (gains_sent_ < gain_senders_.size()) {
            return gain_senders_.at(gains_sent_);
        }
        const auto next = open_.upper_bound(tried_);
        return next != open_.end() ? *next : tried_ + 1;
    }

    void tell_missing(bool timed_out) {
        const auto& [label, consequence, next] = codes_with_acknowledge().at(code_);
        std::string text = label;
        if (code_ == 9) {
            text = gain_sender() == 1 ? "_SET AMP GAIN_" : " SET AMP GAIN ";
        }
        told_.push_back(text + (timed_out ? "Comm timed out" : "CommError"));
        told_.push_back(told::not_sent);
        if (!std::string(consequence).empty()) {
            told_.emplace_back(consequence);
        }
        forbidden_ = next;
    }

    struct Acknowledged {
        const char* label;       ///< what the message begins with
        const char* consequence; ///< what is told besides
        int next;                ///< command that is not sent then
    };

    static const std::map<int, Acknowledged>& codes_with_acknowledge() {
        static const std::map<int, Acknowledged> codes = {
            {8, {" SETTRIG ", "error set triger", 27}},
            {27, {" SETTTO ", "error set triger", 0}},
            {9, {"", "Error Vold/div set", 0}},
            {29, {" CALDELPS", "", 0}},
            {30, {" set time base offset ch1 ", "Error setting scope", 35}},
            {35, {" set time base offset ch2 ", "Error setting scope", 31}},
            {31, {" set time base resolution ", "Error setting scope", 32}}};
        return codes;
    }

    std::vector<int> gain_senders_;
    std::size_t gains_sent_ = 0; ///< gain commands that were acknowledged or given up
    std::set<int> open_;         ///< channels whose frame was not acknowledged
    int tried_ = 0;              ///< channel whose frame this set-up has sent in vain, 0 for none
    std::vector<std::string> told_;
    std::chrono::milliseconds time_out_{0}; ///< that was asked for last
    std::chrono::nanoseconds written_{0};   ///< when the last command was
    bool checking_ = false;                 ///< the start-up check follows
    bool awaited_ = false;                  ///< the next read is that of an acknowledge
    int code_ = 0;                          ///< command sent last
    int attempts_ = 0;                      ///< attempts of it that failed
    int forbidden_ = 0;                     ///< command that may not be the next one
};

} // namespace kv408
