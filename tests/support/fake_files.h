#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/file_choosers.h"
#include "host/files.h"
#include "host/places.h"

namespace kv408 {

/// A file system in memory.
class FakeFiles : public Files {
public:
    FileResult read(const std::filesystem::path& path, std::string& bytes) override {
        if (!unreadable.empty()) {
            return {.status = FileStatus::failed, .reason = unreadable};
        }
        const auto found = files.find(path.generic_string());
        if (found == files.end()) {
            return {.status = FileStatus::not_found, .reason = "No such file or directory"};
        }
        bytes = found->second;
        return {};
    }

    FileResult replace(const std::filesystem::path& path, std::string_view bytes) override {
        if (!refusal.empty()) {
            return {.status = FileStatus::failed, .reason = refusal};
        }
        written.push_back(path.generic_string());
        files[path.generic_string()] = bytes;
        return {};
    }

    FileResult put(const std::filesystem::path& path, std::string_view bytes) override {
        put_beside.push_back(path.generic_string());
        return replace(path, bytes);
    }

    FileResult create(const std::filesystem::path& path, std::string_view bytes) override {
        if (files.contains(path.generic_string())) {
            return {.status = FileStatus::exists, .reason = "File exists"};
        }
        return replace(path, bytes);
    }

    FileResult create_folder(const std::filesystem::path& path) override {
        if (!folder_refusal.empty()) {
            return {.status = FileStatus::failed, .reason = folder_refusal};
        }
        folders.insert(path.generic_string());
        return {};
    }

    FileResult set_aside(const std::filesystem::path& target, std::string_view bytes,
                         std::filesystem::path& place) override {
        if (!aside_refusal.empty()) {
            return {.status = FileStatus::failed, .reason = aside_refusal};
        }
        place = target;
        place += ".unsaved";
        files[place.generic_string()] = bytes;
        return {};
    }

    std::filesystem::path aside(const std::filesystem::path& target) override {
        const std::string place = target.generic_string() + ".unsaved";
        return files.contains(place) ? place : std::string();
    }

    void drop_aside(const std::filesystem::path& target) override {
        files.erase(target.generic_string() + ".unsaved");
    }

    std::map<std::string, std::string> files; ///< contents by path
    std::set<std::string> folders;            ///< folders that were made
    std::vector<std::string> put_beside;      ///< paths where no link would be followed
    std::vector<std::string> written;         ///< paths of all replacements, oldest first
    std::string unreadable;                   ///< not empty: why nothing can be read
    std::string refusal;                      ///< not empty: why nothing can be written
    std::string aside_refusal;                ///< not empty: why nothing can be set aside
    std::string folder_refusal;               ///< not empty: why no folder can be made
};

/// File dialogs that nobody has to click: records every question and answers from a list.
class FakeFileChoosers : public FileChoosers {
public:
    std::optional<std::filesystem::path> open_file(const FileQuestion& question) override {
        opened.push_back(question);
        return next();
    }

    std::optional<ChosenFile> save_file(const FileQuestion& question) override {
        saved.push_back(question);
        const auto path = next();
        return path ? std::optional<ChosenFile>({.path = *path, .kind = kind}) : std::nullopt;
    }

    std::optional<std::filesystem::path> choose_folder(const std::string& title) override {
        folders.push_back(title);
        return next();
    }

    std::vector<FileQuestion> opened; ///< questions for a file to read
    std::vector<FileQuestion> saved;  ///< questions for a file to write
    std::vector<std::string> folders; ///< titles of the questions for a folder
    std::deque<std::optional<std::filesystem::path>> answers; ///< then always cancelled
    std::size_t kind = 0;                                     ///< of all files to write
    std::function<void()> on_ask;                             ///< runs while a dialog is "open"

private:
    std::optional<std::filesystem::path> next() {
        if (on_ask) {
            on_ask();
        }
        if (answers.empty()) {
            return std::nullopt;
        }
        auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

/// Where the fakes keep the files.
inline Places fake_places() {
    return {.settings = "/settings/kv408", .program = "/program", .documents = "/documents"};
}

} // namespace kv408
