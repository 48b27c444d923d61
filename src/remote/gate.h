#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/message_boxes.h"
#include "host/window_messages.h"

namespace kv408 {

/// What stands between remote commands and the rest of the program: whether one may run now, and
/// where the messages go that it causes.
class Gate {
public:
    /// True while something is under way that no command may interrupt.
    [[nodiscard]] bool closed() const { return closed_ > 0; }

    /// True while messages are collected.
    [[nodiscard]] bool collects() const { return collected_ != nullptr; }

    /// Adds a message to those that are collected.
    void take(const std::string& text) { collected_->push_back(text); }

    /// Sets what is asked of each message that is not collected: it gives true where it has taken
    /// the message, which then is not shown.
    void on_message(std::function<bool(const Message&)> taker) { taker_ = std::move(taker); }

    /// Whether `message` is taken so.
    [[nodiscard]] bool takes(const Message& message) const { return taker_ && taker_(message); }

    /// Keeps the gate closed as long as it lives.
    class Closed {
    public:
        explicit Closed(Gate& gate) : gate_(gate) { ++gate_.closed_; }
        ~Closed() { --gate_.closed_; }
        Closed(const Closed&) = delete;
        Closed& operator=(const Closed&) = delete;

    private:
        Gate& gate_;
    };

    /// Collects messages as long as it lives.
    class Collecting {
    public:
        explicit Collecting(Gate& gate) : gate_(gate) {
            around_ = std::exchange(gate.collected_, &texts_);
        }
        ~Collecting() { gate_.collected_ = around_; }
        Collecting(const Collecting&) = delete;
        Collecting& operator=(const Collecting&) = delete;

        /// The texts so far, oldest first.
        [[nodiscard]] const std::vector<std::string>& texts() const { return texts_; }

    private:
        Gate& gate_;
        std::vector<std::string> texts_;
        std::vector<std::string>* around_ = nullptr;
    };

private:
    int closed_ = 0;
    std::function<bool(const Message&)> taker_;
    std::vector<std::string>* collected_ = nullptr;
};

/// Message boxes of which those that a remote command causes are not opened: their texts go through
/// the gate, and they are answered with the answer that changes least. While one is open in the
/// middle of an exchange the gate is closed.
class GatedMessageBoxes : public MessageBoxes {
public:
    /// Opens the others through `boxes`.
    GatedMessageBoxes(MessageBoxes& boxes, Gate& gate) : boxes_(boxes), gate_(gate) {}

    MessageAnswer show(const Message& message) override;

private:
    MessageBoxes& boxes_;
    Gate& gate_;
};

/// Window messages during which the gate is closed where only the end of the program may come.
class GatedWindowMessages : public WindowMessages {
public:
    /// Passes on to `messages`.
    GatedWindowMessages(WindowMessages& messages, Gate& gate) : messages_(messages), gate_(gate) {}

    void process_pending() override { messages_.process_pending(); }
    void process_endings() override;
    void repaint(std::string_view control_name) override { messages_.repaint(control_name); }

private:
    WindowMessages& messages_;
    Gate& gate_;
};

} // namespace kv408
