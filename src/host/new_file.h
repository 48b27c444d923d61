#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>
#include <utility>

namespace kv408 {

/// Draws the next number for a name.
using NumberDraw = std::function<std::uint64_t()>;

/// A number that nobody can foresee.
[[nodiscard]] std::uint64_t unforeseeable_number();

/// New content of a file: written beside it under a name that nobody can foresee, readable for
/// nobody else, until it takes the file's place. What has not taken it by the end is removed.
class NewFile {
public:
    /// New content of the file at `target`, which is no link. `draw` numbers its name.
    explicit NewFile(std::filesystem::path target, NumberDraw draw = unforeseeable_number);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Whose rights the new content gets when it takes its place.
    struct Like {
        /// Those of the plain file at this path; empty: of what it replaces. Where there is none,
        /// those that the user gives new files.
        std::filesystem::path file = {};
        /// They are the user's alone: it stays readable for nobody else.
        bool nobody = false;
    };
    void be_like(Like like) { like_ = std::move(like); }

    /// Creates the new file, writes `bytes` and flushes them to the disk. A file, link or device
    /// that has its name is never written to: another name is taken.
    [[nodiscard]] std::error_code write(std::string_view bytes);

    /// Takes the place of the file at the target in one step, be it there or not, with its
    /// permissions and, as far as the user may give files away, its owner, unless another file is
    /// to be like. What was written before.
    [[nodiscard]] std::error_code take_place();

    /// Takes the target's place only where nothing is yet; `std::errc::file_exists` otherwise.
    [[nodiscard]] std::error_code take_free_place();

    /// Where the new content lies before it takes its place; empty before it is written.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    [[nodiscard]] std::error_code create();
    /// Closes the file; true when that wrote everything.
    bool close();
    /// The file lies at its place now.
    void settle();

    std::filesystem::path target_;
    NumberDraw draw_;
    Like like_;
    std::filesystem::path path_;
    int descriptor_ = -1;
};

} // namespace kv408
