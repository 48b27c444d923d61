#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "remote/long_answer.h"

namespace kv408 {

/// A thread for answers that take too long to make for the program to wait. It gets a copy of all
/// that an answer is made from, and shares nothing else with the program.
class Aside {
public:
    /// `wake` is called, on the thread, when an answer has been made.
    explicit Aside(std::function<void()> wake) : wake_(std::move(wake)) {}

    /// Waits for the answer that is being made; those not begun are never made.
    ~Aside();
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

    /// The result of `make`, which is run on the thread; an empty text becomes error `-240` with
    /// `failure`. `make` is not run when the answer has been destroyed before.
    std::unique_ptr<LongAnswer> answer(std::function<std::string()> make, std::string failure);

private:
    struct Task;
    class Made;

    void run();

    std::function<void()> wake_;
    std::mutex mutex_;
    std::condition_variable more_;
    std::deque<std::weak_ptr<Task>> tasks_;
    bool ended_ = false;
    std::thread thread_; ///< from the first answer on
};

} // namespace kv408
