// The window of remote control, without a screen.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "remote/remote_dialog.h"
#include "remote_program.h"

namespace kv408 {
namespace {

// With remote control off nothing of the network is touched: even to ask for addresses opens a
// socket on some systems, and waits for the network on others.
TEST(RemoteDialog, AsksForTheAddressesOnlyWhenItIsOpened) {
    RemoteProgram program;
    int asked = 0;
    RemoteDialog dialog(program.control, program.boxes, [&asked] {
        ++asked;
        return std::vector<std::string>{"192.0.2.7"};
    });
    ListBox& offered = dialog.controls().cmbRemoteAddress;
    EXPECT_EQ(asked, 0);
    EXPECT_THAT(offered.entries(), testing::ElementsAre("This computer only", "The network too"));
    EXPECT_EQ(dialog.controls().txtRemoteAddress.text(), "127.0.0.1");
    dialog.open();
    EXPECT_EQ(asked, 1);
    EXPECT_THAT(offered.entries(), testing::Contains("Through 192.0.2.7"));
    EXPECT_EQ(offered.index(), 0);
}

} // namespace
} // namespace kv408
