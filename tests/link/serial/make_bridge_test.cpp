#include "link/make_bridge.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "host/system_clock.h"
#include "link/posix/serial_bridge.h"
#include "support/places.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

class MakeBridge : public testing::Test {
protected:
    /// Whether the bridge for the library `name` is the serial one.
    bool serial_for(const std::string& name) {
        BridgeChoice choice = make_bridge(clock_, log_, name);
        bridge_ = std::move(choice.bridge);
        EXPECT_EQ(choice.serial, dynamic_cast<SerialBridge*>(bridge_.get()) != nullptr);
        EXPECT_EQ(choice.library, name);
        EXPECT_EQ(choice.loaders_words.empty(), name == place::lacking_library);
        return choice.serial;
    }

    SystemClock clock_;
    std::ostringstream log_;
    std::unique_ptr<Bridge> bridge_;
};

TEST_F(MakeBridge, WhereNoLibraryIsFoundItIsTheSerialOne) {
    EXPECT_TRUE(serial_for("libNoSuchBridge.so"));
    EXPECT_TRUE(serial_for("/nowhere/libNoSuchBridge.so"));
    EXPECT_EQ(bridge_->trouble(), "");
}

TEST_F(MakeBridge, ALibraryThatLacksFunctionsTellsSo) {
    EXPECT_FALSE(serial_for(place::lacking_library));
    EXPECT_NE(bridge_->trouble().find("lacks the function SI_GetNumDevices"), std::string::npos);
}

TEST_F(MakeBridge, AFileThatIsNoLibraryTellsSo) {
    const TemporaryFolder folder;
    const std::string name = (folder.path() / "libNoLibrary.so").string();
    std::ofstream(name)
        << "This is no library, but it is long enough to be taken for one at first.";
    EXPECT_FALSE(serial_for(name));
    EXPECT_NE(bridge_->trouble().find("could not be loaded: "), std::string::npos);
}

TEST_F(MakeBridge, ALibraryThatMissesAnotherOneTellsSo) {
    EXPECT_FALSE(serial_for(place::needy_library));
    EXPECT_NE(bridge_->trouble().find("kv408_absent.so: "), std::string::npos)
        << bridge_->trouble();
}

} // namespace
} // namespace kv408
