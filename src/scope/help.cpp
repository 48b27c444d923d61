#include "scope/help.h"

#include <utility>
#include <vector>

#include "host/shown_text.h"

namespace kv408 {
namespace {

constexpr const char* first_page = "index";

/// What the program was built with, and under which licences that is.
constexpr const char* built_in = "Built in: Qt 6 (GNU LGPL version 3), "
#ifndef _WIN32
                                 "libserialport (GNU LGPL version 3), "
#endif
                                 "Asio (Boost Software License 1.0), "
                                 "KissFFT (copyright Mark Borgerding, BSD 3-Clause License), "
                                 "the C++ run-time library of GCC (GNU GPL version 3 with the GCC "
                                 "Runtime Library Exception)";

/// Where the page `name` of the manual may lie, seen from the folder `program`: beside it, as
/// on Windows and where it was built; where a package puts it; in the tree that it was built in.
std::vector<std::filesystem::path> manual_pages(const std::filesystem::path& program,
                                                const std::string& name) {
    const std::filesystem::path html = name + ".html";
    const std::filesystem::path source = name + ".md";
    std::vector<std::filesystem::path> pages;
    for (const auto& page : {program / "manual" / html,
                             program.parent_path() / "share" / "doc" / "kv408" / "manual" / html,
                             program.parent_path().parent_path() / "docs" / "manual" / source}) {
        pages.push_back(page.lexically_normal());
    }
    return pages;
}

} // namespace

Help::Help(FrontPanel& panel, Host host, std::string version)
    : host_(std::move(host)), version_(std::move(version)) {
    panel.menuhelp.on_click([this] { MenuHelp_Click(); });
    panel.menuabout.on_click([this] { MenuAbout_Click(); });
}

std::filesystem::path Help::find(const std::string& name) const {
    for (const auto& page : manual_pages(host_.places.program, name)) {
        std::string content;
        if (host_.files.read(page, content).status == FileStatus::done) {
            return page;
        }
    }
    return {};
}

void Help::MenuHelp_Click() {
    std::filesystem::path page = find(topic_ ? topic_() : first_page);
    if (page.empty()) {
        page = find(first_page);
    }
    if (page.empty()) {
        std::string looked = "It was looked for here:";
        for (const auto& place : manual_pages(host_.places.program, first_page)) {
            looked += '\n' + shown_path(place);
        }
        host_.boxes.show({.text = "The manual has not been found.",
                          .icon = MessageIcon::information,
                          .informative = std::move(looked)});
        return;
    }
    if (!host_.browse || !host_.browse(page)) {
        host_.boxes.show({.text = "No browser could be started.",
                          .icon = MessageIcon::information,
                          .informative = "The page of the manual is " + shown_path(page)});
    }
}

void Help::MenuAbout_Click() {
    const std::filesystem::path manual = find(first_page);
    host_.boxes.show(
        {.text = "Kv408 " + version_,
         .title = "About Kv408",
         .icon = MessageIcon::information,
         .informative = "Front end of a two-channel equivalent-time sampling oscilloscope\n"
                        "Licence: MIT\n\n" +
                        std::string(built_in) +
                        "\n\nSettings: " + shown_path(host_.places.settings) +
                        "\nManual: " + (manual.empty() ? "not found" : shown_path(manual))});
}

} // namespace kv408
