#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/message_boxes.h"
#include "host/window_messages.h"

namespace kv408 {

/// Message boxes that nobody has to click: records every message and answers from a list.
class FakeMessageBoxes : public MessageBoxes {
public:
    MessageAnswer show(const Message& message) override {
        shown.push_back(message);
        if (on_show) {
            on_show(message);
        }
        if (answers.empty()) {
            return MessageAnswer::ok;
        }
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    /// The texts of all messages so far.
    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> result;
        for (const Message& message : shown) {
            result.push_back(message.text);
        }
        return result;
    }

    std::vector<Message> shown;                  ///< every message, oldest first
    std::deque<MessageAnswer> answers;           ///< the next answers; then always `ok`
    std::function<void(const Message&)> on_show; ///< runs while the box is "open"
};

/// A window queue that runs what a test puts into it.
class FakeWindowMessages : public WindowMessages {
public:
    void process_pending() override {
        ++processed;
        if (on_process) {
            on_process(processed);
        }
    }

    void repaint(std::string_view control_name) override { repainted.emplace_back(control_name); }

    int processed = 0;                   ///< how often the queue was let run
    std::function<void(int)> on_process; ///< runs each time, with `processed`
    std::vector<std::string> repainted;  ///< names of the controls painted at once
};

} // namespace kv408
