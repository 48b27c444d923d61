#include "config/last_settings.h"

#include <ostream>
#include <utility>

#include "host/shown_text.h"

namespace kv408 {

void LastSettings::note(const std::filesystem::path& path, std::string bytes,
                        const FileResult& refused) {
    const std::lock_guard lock(noting_);
    noted_ = Noted{.path = path, .bytes = std::move(bytes), .refused = refused};
}

LastSettings::Outcome LastSettings::save(bool last) {
    const std::lock_guard lock(saving_);
    const std::optional<Noted> settings = noted();
    if (over_ || !settings) {
        return {};
    }
    over_ = last;
    Outcome outcome = write(*settings);
    if (outcome.result.status != FileStatus::done) {
        std::filesystem::path place;
        if (files_.set_aside(settings->path, settings->bytes, place).status == FileStatus::done) {
            outcome.aside = place;
            aside_ = true;
        }
    } else if (std::exchange(aside_, false)) {
        files_.drop_aside(settings->path);
    }
    tell(outcome);
    return outcome;
}

std::optional<LastSettings::Noted> LastSettings::noted() {
    const std::lock_guard lock(noting_);
    return noted_;
}

LastSettings::Outcome LastSettings::write(const Noted& noted) {
    if (noted.refused.status == FileStatus::failed) {
        return {.path = noted.path, .result = noted.refused};
    }
    const std::filesystem::path folder = noted.path.parent_path();
    FileResult made = files_.create_folder(folder);
    if (made.status != FileStatus::done) {
        return {.path = folder, .result = std::move(made)};
    }
    return {.path = noted.path, .result = files_.replace(noted.path, noted.bytes)};
}

void LastSettings::tell(const Outcome& outcome) {
    if (outcome.result.status != FileStatus::done) {
        log_ << "Kv408: the settings could not be saved. " << shown_path(outcome.path) << ": "
             << outcome.result.reason << "\n"
             << where_aside(outcome) << std::endl;
    }
    if (!outcome.result.copy.empty()) {
        log_ << where_copy(outcome.path, outcome.result.copy) << std::endl;
    }
}

std::string where_aside(const LastSettings::Outcome& outcome) {
    return outcome.aside.empty() ? "They could not be kept anywhere else either."
                                 : "They are kept in " + shown_path(outcome.aside) +
                                       "; the next start offers to take them.";
}

std::string where_copy(const std::filesystem::path& path, const std::filesystem::path& copy) {
    return shown_path(path) +
           " was written in place, because it could not be replaced. What it held before lies in " +
           shown_path(copy) + ".";
}

} // namespace kv408
