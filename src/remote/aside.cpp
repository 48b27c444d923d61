#include "remote/aside.h"

#include <atomic>
#include <utility>

#include "remote/scpi_error.h"

namespace kv408 {

struct Aside::Task {
    std::function<std::string()> make;
    std::string made;
    std::atomic<bool> done = false; ///< `made` is whole
};

class Aside::Made : public LongAnswer {
public:
    Made(std::shared_ptr<Task> task, std::string failure)
        : task_(std::move(task)), failure_(std::move(failure)) {}

    [[nodiscard]] bool ready() const override { return task_->done; }

    std::string next() override {
        if (task_->made.empty() && !given_) {
            throw Refused{ScpiError::hardware_error, failure_};
        }
        given_ = true;
        return std::exchange(task_->made, {});
    }

private:
    std::shared_ptr<Task> task_;
    std::string failure_;
    bool given_ = false;
};

Aside::~Aside() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    more_.notify_one();
    if (thread_.joinable()) {
        thread_.join();
    }
}

std::unique_ptr<LongAnswer> Aside::answer(std::function<std::string()> make, std::string failure) {
    const auto task = std::make_shared<Task>();
    task->make = std::move(make);
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(task);
    }
    more_.notify_one();
    if (!thread_.joinable()) {
        thread_ = std::thread([this] { run(); });
    }
    return std::make_unique<Made>(task, std::move(failure));
}

void Aside::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        more_.wait(lock, [this] { return ended_ || !tasks_.empty(); });
        if (ended_) {
            return;
        }
        const auto task = tasks_.front().lock();
        tasks_.pop_front();
        if (!task) {
            continue;
        }
        lock.unlock();
        task->made = std::exchange(task->make, {})();
        task->done = true;
        wake_();
        lock.lock();
    }
}

} // namespace kv408
