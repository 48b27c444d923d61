#include "remote/remote_dialog.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "state/rounding.h"

namespace kv408 {
namespace {

/// What the list begins with; the addresses by which the network reaches this computer follow.
constexpr std::array<const char*, 2> usual_names{"This computer only", "The network too"};
constexpr std::array<const char*, 2> usual_addresses{"127.0.0.1", "0.0.0.0"};

std::string clients_text(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " client" : " clients");
}

} // namespace

RemoteDialog::RemoteDialog(RemoteControl& control, MessageBoxes& boxes, FindAddresses find)
    : control_(control), boxes_(boxes), find_(std::move(find)) {
    offer({});
    controls_.txtRemoteAddress.on_change([this] { address_typed(); });
    controls_.cmbRemoteAddress.on_click([this] { address_chosen(); });
    controls_.cmbRemoteAddress.set_index(0);
    controls_.txtRemotePort.set_text("5025");
    controls_.chkRemote.on_click([this] { chkRemote_Click(); });
    controls_.txtRemotePort.on_change([this] {
        const auto port = int32_in(controls_.txtRemotePort.text());
        constexpr int largest = 65535;
        controls_.txtRemotePort.set_faulty(!port || *port < 0 || *port > largest);
    });
    controls_.cmdRemoteDisconnect.on_click([this] { cmdRemoteDisconnect_Click(); });
    controls_.chkRemoteLock.on_click(
        [this] { control_.instrument().lock_network(controls_.chkRemoteLock.checked()); });
    controls_.cmdRemoteUnlock.on_click([this] { control_.instrument().unlock_panel(); });
    control_.on_change([this] { show_state(); });
    show_state();
}

RemoteDialog::~RemoteDialog() {
    control_.on_change({});
}

void RemoteDialog::offer(const std::vector<std::string>& own) {
    addresses_.assign(usual_addresses.begin(), usual_addresses.end());
    std::vector<std::string> entries(usual_names.begin(), usual_names.end());
    for (const std::string& address : own) {
        addresses_.push_back(address);
        entries.push_back("Through " + address);
    }
    controls_.cmbRemoteAddress.set_entries(std::move(entries));
}

void RemoteDialog::address_chosen() {
    const auto chosen = static_cast<std::size_t>(controls_.cmbRemoteAddress.index());
    if (!filling_ && chosen < addresses_.size()) {
        controls_.txtRemoteAddress.set_text(addresses_[chosen]);
    }
}

void RemoteDialog::address_typed() {
    const std::string& address = controls_.txtRemoteAddress.text();
    controls_.txtRemoteAddress.set_faulty(!is_address(address));
    const auto known = std::find(addresses_.begin(), addresses_.end(), address);
    filling_ = true;
    controls_.cmbRemoteAddress.set_index(
        known == addresses_.end() ? -1 : static_cast<int>(known - addresses_.begin()));
    filling_ = false;
}

void RemoteDialog::open() {
    offer(find_()); // a network may have come or gone
    address_typed();
    if (show_) {
        show_();
    }
}

void RemoteDialog::chkRemote_Click() {
    if (!controls_.chkRemote.checked()) {
        control_.close();
    } else if (!control_.is_open()) {
        switch_on();
    }
    show_state();
}

void RemoteDialog::switch_on() {
    std::string reason;
    if (controls_.txtRemotePort.faulty()) {
        reason = "The port is no number from 0 to 65535.";
    } else if (controls_.txtRemoteAddress.faulty()) {
        reason = "The address is none: 192.168.1.5 and fd00::5 are such.";
    } else {
        const auto port = int32_in(controls_.txtRemotePort.text()).value_or(0);
        try {
            control_.open({controls_.txtRemoteAddress.text(), static_cast<std::uint16_t>(port)});
            return;
        } catch (const std::system_error& error) {
            reason = error.code().message();
        }
    }
    controls_.chkRemote.put_checked(false);
    boxes_.show({.text = "Remote control could not be switched on: " + reason,
                 .icon = MessageIcon::exclamation});
}

void RemoteDialog::cmdRemoteDisconnect_Click() {
    const auto selected = static_cast<std::size_t>(controls_.cmbRemoteClients.index());
    if (selected < clients_.size()) {
        control_.disconnect(clients_[selected].connection);
    }
}

void RemoteDialog::show_state() {
    const bool on = control_.is_open();
    const auto index = static_cast<std::size_t>(controls_.cmbRemoteClients.index());
    const std::vector<Server::Seen> before = std::exchange(clients_, control_.clients());
    std::vector<std::string> addresses;
    std::string all;
    for (const Server::Seen& client : clients_) {
        addresses.push_back(client.address);
        all += (all.empty() ? ": " : ", ") + client.address;
    }
    // Who is chosen stays so while others come and go; else the first one is.
    int selected = clients_.empty() ? -1 : 0;
    for (std::size_t place = 0; place < clients_.size(); ++place) {
        if (index < before.size() && clients_[place].connection == before[index].connection) {
            selected = static_cast<int>(place);
        }
    }
    controls_.cmbRemoteClients.set_entries(addresses);
    controls_.cmbRemoteClients.set_index(selected);
    controls_.cmbRemoteAddress.set_enabled(!on);
    controls_.txtRemoteAddress.set_enabled(!on);
    controls_.txtRemotePort.set_enabled(!on);
    controls_.cmdRemoteDisconnect.set_enabled(!clients_.empty());
    controls_.cmdRemoteUnlock.set_enabled(control_.instrument().panel_locked());
    controls_.lblRemoteState.set_caption(on ? "Port " + std::to_string(control_.port()) + ", " +
                                                  clients_text(clients_.size())
                                            : "Off: there is no connection to the network.");
    controls_.lblRemote.set_caption("Remote control: " + clients_text(clients_.size()) + all);
    controls_.lblRemote.set_visible(on);
    if (lock_) {
        lock_(control_.instrument().panel_locked());
    }
}

} // namespace kv408
