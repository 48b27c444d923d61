#include "export/limit_actions.h"

#include <utility>

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// Between two beeps, or two snapshots.
constexpr std::chrono::nanoseconds between_actions = 1s;

/// What saves a snapshot, done on the writer's thread.
class SavingTarget : public WriterTarget<std::function<SavedFile()>> {
public:
    SavedFile add(const std::function<SavedFile()>& saving) override { return saving(); }
};

} // namespace

LimitActions::LimitActions(Host host) : host_(std::move(host)) {}

LimitActions::~LimitActions() = default;

std::string LimitActions::act() {
    const auto due = std::exchange(due_, {});
    const auto is_due = [&due](LimitAction action) {
        return due.at(static_cast<std::size_t>(action));
    };
    if (is_due(LimitAction::stop)) {
        host_.stop();
    }
    const std::chrono::nanoseconds now = host_.clock.now();
    const bool wanted = is_due(LimitAction::beep) || is_due(LimitAction::snapshot);
    if (wanted && (!acted_ || now - *acted_ >= between_actions)) {
        acted_ = now;
        if (is_due(LimitAction::beep)) {
            host_.beep();
        }
        if (is_due(LimitAction::snapshot)) {
            if (!snapshots_) {
                snapshots_ =
                    std::make_unique<BackgroundWriter<Saving>>(std::make_unique<SavingTarget>());
            }
            snapshots_->add(host_.snapshot());
        }
    }
    std::string problem;
    if (snapshots_ && !snapshots_->progress().running) {
        problem = snapshots_->progress().problem;
        snapshots_.reset();
    }
    return problem;
}

std::optional<std::uint64_t> LimitActions::snapshots() const {
    if (!snapshots_) {
        return std::nullopt;
    }
    return snapshots_->progress().recorded;
}

void LimitActions::wait_until_written() {
    if (snapshots_) {
        snapshots_->wait_until_written();
    }
}

} // namespace kv408
