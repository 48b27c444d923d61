#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "config/set_up.h"
#include "display/picture_coder.h"
#include "host/clock.h"
#include "host/diagnose.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/places.h"
#include "link/bridge.h"
#include "remote/remote_control.h"
#include "scope/scope.h"
#include "scope/tool_settings.h"
#include "server/event_log.h"
#include "server/waker.h"

namespace kv408 {

/// The whole program without a window: looks for the instrument until it is found, and again when
/// it has been lost, and lets clients operate it.
class Service {
public:
    /// What it needs of the machine.
    struct Host {
        Clock& clock;
        Bridge& bridge;
        Files& files;
        Places places;
        PictureCoder& coder;
        Diagnose diagnose = {};
        std::ostream& log; ///< receives a line for each event
    };

    /// Listens at `place` from now on. Throws `std::system_error` where that is not possible.
    Service(const Host& host, const Network::Place& place);
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// Runs until `ask_end`, and saves the settings.
    void run();

    /// Asks for the end; on any thread.
    void ask_end();

    /// Saves the settings as last known; on any thread.
    void save();

    /// The port that is listened at.
    [[nodiscard]] std::uint16_t port() const { return control_.port(); }

private:
    /// Message boxes without a window: their texts go to log and clients.
    class Boxes : public MessageBoxes {
    public:
        explicit Boxes(Service& service) : service_(service) {}
        MessageAnswer show(const Message& message) override { return service_.tell(message); }

    private:
        Service& service_;
    };

    /// Lets clients in between two points of a pass.
    class Messages : public WindowMessages {
    public:
        explicit Messages(Service& service) : service_(service) {}
        void process_pending() override;
        void process_endings() override { service_.end_if_asked(); }
        void repaint(std::string_view) override {}

    private:
        Service& service_;
    };

    /// File dialogs without a window: each is cancelled at once.
    class Choosers : public FileChoosers {
    public:
        std::optional<std::filesystem::path> open_file(const FileQuestion&) override { return {}; }
        std::optional<ChosenFile> save_file(const FileQuestion&) override { return {}; }
        std::optional<std::filesystem::path> choose_folder(const std::string&) override {
            return {};
        }
    };

    /// What the next program takes over from one whose instrument has been lost.
    struct Carried {
        PanelSetUp set_up;
        ToolSettings tools;
        bool sweeping = true;
    };

    void run_once();
    void tick_until_ended();
    void carry_on();
    [[nodiscard]] Carried carried() const;
    MessageAnswer tell(const Message& message);
    void note_well();
    void end_if_asked();
    /// Serves clients meanwhile, unless the end is asked for.
    void wait(std::chrono::nanoseconds duration);
    void show_clients();

    Host host_;
    EventLog log_;
    ToldOnce told_all_; ///< what all clients were told, nobody having caused it
    Waker waker_;
    std::atomic<bool> end_asked_ = false;
    Gate gate_;
    Boxes boxes_{*this};
    Messages messages_{*this};
    Choosers choosers_;
    GatedMessageBoxes gated_boxes_{boxes_, gate_};
    GatedWindowMessages gated_messages_{messages_, gate_};
    RemoteControl control_;
    std::map<Network::Connection, std::string> known_; ///< clients in the log, with their addresses
    std::unique_ptr<Scope> scope_;
    bool started_ = false; ///< the start of `scope_` is complete
    std::optional<Carried> carried_;
    std::mutex saving_; ///< guards the exchange of `scope_` against `save`
};

} // namespace kv408
