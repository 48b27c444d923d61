// Which processes have a port, by the files that they lock it with.

#include "doctor/posix/device_users.h"

#include <fstream>
#include <optional>

#include <gtest/gtest.h>

#include "support/ports/other_process.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

TEST(DeviceUsers, ALockFileNamesItsProcessAsLongAsThatLives) {
    const TemporaryFolder locks;
    std::optional<OtherProcess> other(std::in_place, "some-terminal", OtherProcess::Deed{});
    std::ofstream(locks.path() / "LCK..ttyUSB0") << "      " << other->id() << '\n';
    const DeviceUsers expected = {{other->id(), "some-terminal"}};
    EXPECT_EQ(users_of("/dev/ttyUSB0", locks.path()), expected);
    EXPECT_EQ(users_of("/dev/ttyUSB1", locks.path()), DeviceUsers());
    other.reset();
    EXPECT_EQ(users_of("/dev/ttyUSB0", locks.path()), DeviceUsers());
}

TEST(DeviceUsers, ALockFileWithoutAProcessIsPassedOver) {
    const TemporaryFolder locks;
    for (const char* const text : {"", "nobody", "0", "-1", "99999999999999999999", "1x"}) {
        std::ofstream(locks.path() / "LCK..ttyUSB0") << text;
        EXPECT_EQ(users_of("/dev/ttyUSB0", locks.path()), DeviceUsers()) << text;
    }
}

} // namespace
} // namespace kv408
