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
    const auto takes_turn = [&](LimitAction action) {
        auto& acted = acted_.at(static_cast<std::size_t>(action));
        const bool turn = is_due(action) && (!acted || now - *acted >= between_actions);
        if (turn) {
            acted = now;
        }
        return turn;
    };
    if (takes_turn(LimitAction::beep)) {
        host_.beep();
    }
    if (takes_turn(LimitAction::snapshot)) {
        if (!snapshots_) {
            snapshots_ =
                std::make_unique<BackgroundWriter<Saving>>(std::make_unique<SavingTarget>());
        }
        snapshots_->add(host_.snapshot());
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
