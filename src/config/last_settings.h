#pragma once

#include <filesystem>
#include <iosfwd>
#include <mutex>
#include <optional>
#include <string>

#include "host/files.h"

namespace kv408 {

/// The settings as they were last known, for the end of the program: whatever thread brings it
/// about saves what stands here. One thread notes them, any may save; nothing of the panel is
/// looked at.
class LastSettings {
public:
    /// How saving ended.
    struct Outcome {
        std::filesystem::path path = {};  ///< what could not be made or written
        FileResult result = {};           ///< why not
        std::filesystem::path aside = {}; ///< where the settings lie instead; empty: nowhere
    };

    /// Saves to `files`, which take calls from several threads; reports what fails on `log`.
    LastSettings(Files& files, std::ostream& log) : files_(files), log_(log) {}

    /// From now on `bytes` are what is to be saved to the file at `path`. Where `refused` is a
    /// failure that file stays as it is, and saving it has that outcome.
    void note(const std::filesystem::path& path, std::string bytes, const FileResult& refused);

    /// Saves what has been noted; done as well where nothing has. What cannot be saved is set aside
    /// for the next start. With `last` nothing is saved any more afterwards: nothing older can
    /// follow.
    Outcome save(bool last);

private:
    struct Noted {
        std::filesystem::path path;
        std::string bytes;
        FileResult refused;
    };

    [[nodiscard]] std::optional<Noted> noted();
    [[nodiscard]] Outcome write(const Noted& noted);
    void tell(const Outcome& outcome);

    Files& files_;
    std::ostream& log_;
    std::mutex noting_; ///< guards `noted_`; never held for long
    std::optional<Noted> noted_;
    std::mutex saving_; ///< held while a file is written; guards `over_`
    bool over_ = false;
    bool aside_ = false; ///< something has been set aside
};

/// Where settings lie that could not be saved, for people.
[[nodiscard]] std::string where_aside(const LastSettings::Outcome& outcome);

/// That the file at `path` was written in place, and where the `copy` of its old content lies.
[[nodiscard]] std::string where_copy(const std::filesystem::path& path,
                                     const std::filesystem::path& copy);

} // namespace kv408
