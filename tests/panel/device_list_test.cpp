#include "panel/device_list.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(DeviceList, ShowsSerialNumbersSelectionAndWhetherItMayChange) {
    ListBox device("cmbDevice");
    show_devices(device, {.serials = {"a", "b", "c"}, .selected = 2, .selectable = false});
    EXPECT_EQ(device.entries(), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(device.text(), "c");
    EXPECT_FALSE(device.enabled());
    show_devices(device, {.serials = {"d"}, .selected = 0, .selectable = true});
    EXPECT_EQ(device.entries(), std::vector<std::string>{"d"});
    EXPECT_EQ(device.text(), "d");
    EXPECT_TRUE(device.enabled());
    show_devices(device, {});
    EXPECT_TRUE(device.entries().empty());
    EXPECT_EQ(device.index(), -1);
}

} // namespace
} // namespace kv408
