#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "export/background_writer.h"
#include "host/clock.h"

namespace kv408 {

/// What happens when a value is outside its limits, or a trace hits a mask.
enum class LimitAction { none, beep, stop, snapshot };

/// What people choose them by, in that order.
inline constexpr std::array<std::string_view, 4> limit_action_names = {"Only count", "Beep", "Stop",
                                                                       "Snapshot"};

/// Does what limits and masks ask for.
class LimitActions {
public:
    /// What it needs of the machine and of the program.
    struct Host {
        const Clock& clock;
        std::function<void()> beep;
        std::function<void()> stop; ///< stops the sweep
        /// The plot as it is now; calling what it gives saves it, on any thread.
        std::function<std::function<SavedFile()>()> snapshot;
    };

    /// Does them through `host`, which outlives it.
    explicit LimitActions(Host host);
    ~LimitActions();
    LimitActions(const LimitActions&) = delete;
    LimitActions& operator=(const LimitActions&) = delete;

    /// Asks for `action`.
    void ask(LimitAction action) { due_.at(static_cast<std::size_t>(action)) = true; }

    /// Does what was asked for since the last call, to be called once the picture shows why; beeps
    /// at most once a second, and as often saves a snapshot. What has gone wrong with a snapshot;
    /// empty: nothing.
    [[nodiscard]] std::string act();

    /// How many snapshots were saved; none where none was asked for, or one has failed since.
    [[nodiscard]] std::optional<std::uint64_t> snapshots() const;

    /// Waits until all of them are written.
    void wait_until_written();

private:
    /// What saves a snapshot.
    using Saving = std::function<SavedFile()>;

    Host host_;
    std::array<bool, 4> due_ = {}; ///< by `LimitAction`
    std::array<std::optional<std::chrono::nanoseconds>, 4>
        acted_; ///< the same: when it was done last
    std::unique_ptr<BackgroundWriter<Saving>> snapshots_;
};

} // namespace kv408
