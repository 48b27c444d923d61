#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "host/browse.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "host/places.h"
#include "panel/front_panel.h"

namespace kv408 {

/// The menu "Help": the manual in the browser, and what this program is.
class Help {
public:
    /// What it needs of the machine.
    struct Host {
        Files& files;
        MessageBoxes& boxes;
        Places places;
        Browse browse;
    };

    /// Connects Help and About of `panel`; `version` is the program's.
    Help(FrontPanel& panel, Host host, std::string version);
    Help(const Help&) = delete;
    Help& operator=(const Help&) = delete;

    /// Sets what gives the page of the manual about what the user is looking at: its file name
    /// without extension. Without it, and for an empty name, the manual opens at its first page.
    void on_topic(std::function<std::string()> topic) { topic_ = std::move(topic); }

private:
    void MenuHelp_Click();
    void MenuAbout_Click();
    /// Where the page `name` of the manual lies; empty where there is none.
    [[nodiscard]] std::filesystem::path find(const std::string& name) const;

    Host host_;
    std::string version_;
    std::function<std::string()> topic_;
};

} // namespace kv408
