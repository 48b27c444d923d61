#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/message_boxes.h"
#include "panel/controls.h"
#include "remote/own_addresses.h"
#include "remote/remote_control.h"

namespace kv408 {

/// The controls of the remote control window.
struct RemoteControls {
    CheckBox chkRemote{"chkRemote"};                   ///< on, until the program ends
    ListBox cmbRemoteAddress{"cmbRemoteAddress"};      ///< fills the address
    TextBox txtRemoteAddress{"txtRemoteAddress"};      ///< of this computer: where it listens
    TextBox txtRemotePort{"txtRemotePort"};            ///< TCP port; 0: any that is free
    Label lblRemoteState{"lblRemoteState"};            ///< where it listens
    ListBox cmbRemoteClients{"cmbRemoteClients"};      ///< the clients by their addresses
    Button cmdRemoteDisconnect{"cmdRemoteDisconnect"}; ///< ends the selected client's connection
    CheckBox chkRemoteLock{"chkRemoteLock"};           ///< the network sets nothing
    Button cmdRemoteUnlock{"cmdRemoteUnlock"};         ///< ends a client's lock of the panel
    Label lblRemote{"lblRemote"}; ///< in the main window: how many clients there are, and who
};

/// The window `frmRemote`: switches remote control on and off for this session. It is modeless.
class RemoteDialog {
public:
    /// Tells the addresses of this computer; see `own_addresses`.
    using FindAddresses = std::function<std::vector<std::string>()>;

    /// Operates `control`, which outlives it; what goes wrong is told through `boxes`. The system
    /// is asked by `find` only when the window is opened: till then nothing touches the network.
    RemoteDialog(RemoteControl& control, MessageBoxes& boxes, FindAddresses find = own_addresses);
    ~RemoteDialog();
    RemoteDialog(const RemoteDialog&) = delete;
    RemoteDialog& operator=(const RemoteDialog&) = delete;

    [[nodiscard]] RemoteControls& controls() { return controls_; }

    /// Opens the window; one that is open already is brought to the front.
    void open();

    /// Sets what shows the window.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }

    /// Sets what runs when a client has locked or unlocked the panel.
    void on_lock(std::function<void(bool locked)> listener) { lock_ = std::move(listener); }

private:
    void chkRemote_Click();
    void cmdRemoteDisconnect_Click();
    void offer(const std::vector<std::string>& own);
    void address_chosen();
    void address_typed();
    void switch_on();
    void show_state();

    RemoteControl& control_;
    MessageBoxes& boxes_;
    FindAddresses find_;
    RemoteControls controls_;
    std::vector<std::string> addresses_; ///< that the list of addresses stands for
    bool filling_ = false;               ///< list or box are being brought to what the other says
    std::vector<Server::Seen> clients_;  ///< as they stand in the list
    std::function<void()> show_;
    std::function<void(bool)> lock_;
};

} // namespace kv408
