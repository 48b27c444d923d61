// The line that is told where there is no permission to use a port.

#include "link/posix/serial_trouble.h"

#include <cerrno>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/ports/group_rights.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

/// What is told where joining the group `group` gives the right to use `port`.
std::string trouble_of_group(const std::string& port, const std::string& group) {
    return "You have no permission to use " + port +
           ". This line gives it to you:\nsudo usermod -aG " + group +
           " $USER\nThen log out and in again.";
}

class SerialTrouble : public testing::Test {
protected:
    SerialTrouble() { std::ofstream{path_}; }

    /// Expects the line that gives everybody the right to use `path`, and none about groups.
    static void expect_right_for_all(const std::string& path) {
        EXPECT_EQ(serial_trouble(path, EACCES),
                  "You have no permission to use " + path +
                      ". This line gives it to you until the instrument is unplugged:\n"
                      "sudo chmod a+rw " +
                      path);
    }

    const TemporaryFolder folder_;
    const std::string path_ = (folder_.path() / "port").string();
};

TEST_F(SerialTrouble, ThePortsGroupIsNamedWhereItMayReadAndWrite) {
    const std::string group = leave_to_a_group(path_, 0660);
    EXPECT_EQ(serial_trouble(path_, EACCES), trouble_of_group(path_, group));
    EXPECT_EQ(serial_trouble(path_, EPERM), trouble_of_group(path_, group));
}

TEST_F(SerialTrouble, NoGroupIsNamedThatMayNotReadAndWrite) {
    for (const mode_t mode : {0606, 0620, 0640, 0655}) {
        leave_to_a_group(path_, mode);
        expect_right_for_all(path_);
    }
}

TEST_F(SerialTrouble, NobodyIsToJoinTheGroupOfRoot) {
    struct stat status = {};
    // Everybody may use it, and it is root's and of root's group everywhere.
    ASSERT_EQ(stat("/dev/null", &status), 0);
    ASSERT_EQ(status.st_gid, 0U);
    ASSERT_EQ(status.st_mode & 0777U, 0666U);
    expect_right_for_all("/dev/null");
}

TEST_F(SerialTrouble, ThePortsGroupIsGuessedWhereThePortHasGone) {
    EXPECT_EQ(serial_trouble("/dev/no port", EACCES), trouble_of_group("/dev/no port", "dialout"));
}

} // namespace
} // namespace kv408
