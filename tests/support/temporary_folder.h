#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

namespace kv408 {

/// An empty folder that goes with everything in it when the test ends.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("kv408-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }

    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Where it is.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// What the file `path` holds; nothing where there is none.
inline std::string content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kv408
