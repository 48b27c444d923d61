#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "measure/clipping.h"
#include "remote/aside.h"
#include "remote/client.h"
#include "remote/gate.h"
#include "scope/scope.h"
#include "scope/single_sweep.h"

namespace kv408 {

/// What remote commands work on: the program, as long as there is one with its instrument, and what
/// clients and the person in front of it have agreed on.
class Instrument {
public:
    /// Runs one action in the program, as a person's is run.
    using Act = std::function<void(const std::function<void()>&)>;

    /// Through `gate` go the messages of what is done; `wake` is called on another thread when an
    /// answer that was made aside is there.
    Instrument(Gate& gate, std::function<void()> wake) : gate_(gate), aside_(std::move(wake)) {}

    /// From now on commands work on `scope`, whose start is complete, by `act`.
    void attach(Scope& scope, Act act);

    /// There is no program any more, or none with an instrument.
    void detach();

    /// True between the two.
    [[nodiscard]] bool attached() const { return scope_ != nullptr; }

    /// True when a command may run now: no exchange is under way.
    [[nodiscard]] bool may_run() const;

    /// The program. Throws `Refused` where there is none.
    [[nodiscard]] Scope& scope() const;
    [[nodiscard]] const Parts& parts() const { return scope().parts(); }

    /// Does what sets something, for `client`, as a press by a person. What that shows as a message
    /// becomes an error of the client. Throws `Refused` where the network is locked out and what
    /// `press` throws.
    void act(Client& client, const std::function<void(Scope&)>& press);

    /// Makes answers that take long.
    [[nodiscard]] Aside& aside() { return aside_; }

    // --- Sweeps -----------------------------------------------------------------------------

    /// Starts, and stops when a whole new sweep of each channel that is on has come, which is the
    /// client's then. Where somebody presses Start meanwhile, it stops no more.
    void single(Client& client);

    /// What `single` has begun is of no interest any more.
    void forget_single();

    /// True while something that was begun has not been finished.
    [[nodiscard]] bool pending() const;

    /// How many sweeps have been finished since the program began.
    [[nodiscard]] std::uint64_t sweep_count() const;

    /// The number of `sweep`, as `sweep_count` counts.
    [[nodiscard]] std::uint64_t number_of(const Sweep& sweep) const {
        return counted_before_ + sweep.number;
    }

    // --- Registers --------------------------------------------------------------------------

    /// Brings the conditions of `client` up to date.
    void show_conditions(Client& client);

    // --- Locks ------------------------------------------------------------------------------

    /// Whether a client has locked the panel.
    [[nodiscard]] bool panel_locked() const { return locked_by_ != nullptr; }

    /// Locks the panel for `client`, or ends its lock. Throws `Refused` where it is another's.
    void lock_panel(Client& client, bool lock);

    /// Ends the lock, whoever has it.
    void unlock_panel();

    /// A client has gone.
    void forget(Client& client);

    /// Whether the person has locked the network out.
    [[nodiscard]] bool network_locked() const { return network_locked_; }
    void lock_network(bool lock) { network_locked_ = lock; }

    /// Sets what follows when the panel has been locked or unlocked.
    void on_lock(std::function<void()> listener) { lock_listener_ = std::move(listener); }

private:
    void single_done(bool came);

    Gate& gate_;
    Aside aside_;
    Scope* scope_ = nullptr;
    Act act_;
    std::vector<Client*> single_clients_; ///< that have asked for a single sweep and not gone
    SingleSweep::State single_before_;    ///< of programs before
    SingleSweep::Waiting single_done_;
    ClippingWatch clipping_;
    std::uint64_t counted_before_ = 0; ///< sweeps of programs before
    bool swept_ = false;               ///< whether the last one swept when it went
    const Client* locked_by_ = nullptr;
    bool network_locked_ = false;
    std::function<void()> lock_listener_;
};

} // namespace kv408
