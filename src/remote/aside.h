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

/// A thread for answers that take longer to make than the program may be held up. It gets whole
/// what they are made from and has nothing else of the program's.
class Aside {
public:
    /// `wake` is called, on the thread, when an answer has been made.
    explicit Aside(std::function<void()> wake) : wake_(std::move(wake)) {}

    /// Ends what is under way first; what has not been begun is not made.
    ~Aside();
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

    /// What `make` gives, once that has been run on the thread; an empty text becomes `-240` with
    /// `failure`. Not made where the answer has gone before.
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
