#include "host/growing_file.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#ifdef __linux__
#include <csignal>

#include <sys/resource.h>
#endif

namespace kv408 {
namespace {

TEST(GrowingFile, GoesOnBehindWhatIsThere) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "log";
    std::ofstream(path, std::ios::binary) << "begun\n";
    GrowingFile file(path);
    EXPECT_EQ(file.append("one\n").status, FileStatus::done);
    EXPECT_EQ(content(path), "begun\none\n") << "while it is open";
    EXPECT_EQ(file.append("two\n").status, FileStatus::done);
    EXPECT_EQ(content(path), "begun\none\ntwo\n");
}

TEST(GrowingFile, IsNotMadeAnew) {
    const TemporaryFolder folder;
    GrowingFile file(folder.path() / "log");
    const FileResult result = file.append("one\n");
    EXPECT_EQ(result.status, FileStatus::failed);
    EXPECT_FALSE(result.reason.empty());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

#ifdef __linux__
TEST(GrowingFile, OfAPieceThatDoesNotFitNothingStays) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "log";
    std::ofstream(path) << "begun\n";
    GrowingFile file(path);
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = before;
    limit.rlim_cur = 20000;
    setrlimit(RLIMIT_FSIZE, &limit);
    const FileResult fits = file.append(std::string(15000, 'a'));
    const FileResult too_long = file.append(std::string(9000, 'b'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(fits.status, FileStatus::done);
    EXPECT_EQ(too_long.status, FileStatus::failed);
    EXPECT_EQ(too_long.reason, "File too large");
    EXPECT_EQ(content(path), "begun\n" + std::string(15000, 'a'));
    EXPECT_EQ(file.append("and on\n").status, FileStatus::done) << "once there is room";
    EXPECT_EQ(content(path), "begun\n" + std::string(15000, 'a') + "and on\n");
}
#endif

} // namespace
} // namespace kv408
