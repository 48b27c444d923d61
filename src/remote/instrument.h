#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "measure/clipping.h"
#include "remote/aside.h"
#include "remote/client.h"
#include "remote/gate.h"
#include "remote/measured_sweep.h"
#include "scope/scope.h"
#include "scope/single_sweep.h"

namespace kv408 {

struct ToolSettings;

/// What remote commands work on: the program, while there is one with an instrument, and the locks
/// that clients and the user at the panel have set.
class Instrument {
public:
    /// Runs one action in the program, as an action of the user is run.
    using Act = std::function<void(const std::function<void()>&)>;

    /// Messages that commands cause go through `gate`; `wake` is called on another thread when a
    /// long answer has been made.
    Instrument(Gate& gate, std::function<void()> wake) : gate_(gate), aside_(std::move(wake)) {}

    /// From now on commands work on `scope`, whose start is complete, by `act`.
    void attach(Scope& scope, Act act);

    /// From now on there is no program, or none with an instrument.
    void detach();

    /// True between the two.
    [[nodiscard]] bool attached() const { return scope_ != nullptr; }

    /// True when a command may run now: no exchange is under way.
    [[nodiscard]] bool may_run() const;

    /// The program. Throws `Refused` where there is none.
    [[nodiscard]] Scope& scope() const;
    [[nodiscard]] const Parts& parts() const { return scope().parts(); }

    /// What was set in the tools when the first program had started: nothing. Null before that.
    [[nodiscard]] const ToolSettings* tools_at_first() const { return tools_at_first_.get(); }

    /// Runs `press`, which sets something for `client`, as a press by the user. Messages that it
    /// shows become errors of the client. Throws `Refused` where the network is locked out, while
    /// an Autoset is under way, and what `press` throws.
    void act(Client& client, const std::function<void(Scope&)>& press);

    /// The same for `press` after Stop, which ends an Autoset that is under way.
    void stop_and_act(Client& client, const std::function<void(Scope&)>& press);

    /// The run that there is now has been begun by `client`.
    void note_run(Client& client);

    /// A person has pressed something: what follows is no client's doing.
    void person_pressed() { cause_.reset(); }

    /// Takes a message of the exchange with the instrument that a client has caused and that comes
    /// in a tick: in those of the run that it has begun, or until a sweep has come with what it has
    /// set. It becomes an error of that client, or, where it has gone, of those that `tell_all`
    /// reaches, which returns whether that is anybody; each text once until a sweep comes. False
    /// for any other message, and for one that no client would be told of.
    bool take_message(const Message& message, const std::function<bool(const Refused&)>& tell_all);

    /// Ends an Autoset that is under way, whoever began it. Throws `Refused` as `act` does.
    void cancel_autoset(Client& client);

    /// Makes long answers.
    [[nodiscard]] Aside& aside() { return aside_; }

    // --- Sweeps -----------------------------------------------------------------------------

    /// Starts sweeping, and stops it when a whole new sweep of each channel that is on has come,
    /// which the client then fetches. If somebody presses Start meanwhile, sweeping goes on.
    void single(Client& client);

    /// Sweeping that `single` has begun is no longer stopped.
    void forget_single();

    /// True while a single sweep, or a sweep with the present set-up, has not come.
    [[nodiscard]] bool pending() const;

    /// The last finished sweep, and the same one for all of a client's line. Throws `Refused` where
    /// there is none.
    [[nodiscard]] const MeasuredSweep& sweep_of(Client& client) const;

    /// How many sweeps have been finished since the program began.
    [[nodiscard]] std::uint64_t sweep_count() const;

    // --- Registers --------------------------------------------------------------------------

    /// True while a sweep runs and no data come for longer than is usual.
    [[nodiscard]] bool silent() const;

    /// True while a sweep runs.
    [[nodiscard]] bool sweeping() const;

    /// Brings the conditions of `client` up to date.
    void show_conditions(Client& client);

    // --- Locks ------------------------------------------------------------------------------

    /// Whether a client has locked the panel.
    [[nodiscard]] bool panel_locked() const { return locked_by_ != nullptr; }

    /// Locks the panel for `client`, or ends its lock. Throws `Refused` where it is another's.
    void lock_panel(Client& client, bool lock);

    /// Ends the lock, whoever has it.
    void unlock_panel();

    /// Ends the lock if it is that of `client`.
    void unlock_panel_of(const Client& client);

    /// A client has gone.
    void forget(Client& client);

    /// Locks the network out, so that no client sets anything, or ends that lock.
    void lock_network(bool lock) { network_locked_ = lock; }

    /// Sets what runs when the panel has been locked or unlocked.
    void on_lock(std::function<void()> listener) { lock_listener_ = std::move(listener); }

private:
    void press_for(Client& client, const std::function<void(Scope&)>& press);
    void single_done(bool came);
    void take(const std::shared_ptr<const Sweep>& sweep);

    /// The client that has pressed something since a person last did.
    struct Cause {
        Client* client = nullptr;           ///< null where it has gone
        bool run = false;                   ///< the whole run is its doing
        std::vector<std::string> told = {}; ///< messages since the last sweep
    };

    Gate& gate_;
    Aside aside_;
    Scope* scope_ = nullptr;
    Act act_;
    std::shared_ptr<const ToolSettings> tools_at_first_;
    std::vector<Client*> single_clients_; ///< that have asked for a single sweep and not gone
    SingleSweep::State single_before_;    ///< of programs before
    SingleSweep::Waiting single_done_;
    ClippingWatch clipping_;
    std::optional<Cause> cause_;
    std::shared_ptr<const MeasuredSweep> last_; ///< of the present program; null before the first
    /// Lives as long as sweeps of the present program are taken.
    std::shared_ptr<const Scope*> taking_;
    std::uint64_t counted_before_ = 0; ///< sweeps of programs before
    bool swept_ = false;               ///< whether the last one swept when it went
    const Client* locked_by_ = nullptr;
    bool network_locked_ = false; ///< by the user at the panel
    std::function<void()> lock_listener_;
};

} // namespace kv408
