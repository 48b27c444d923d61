#include <chrono>

#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

using Frame = FakeBridge::Frame;

TEST(FlashWord, IsReadHighByteFirstTwentyMillisecondsAfterItsFrame) {
    LinkRig rig;
    rig.open();
    rig.arguments({0, 1, 2, 3, 4, 5});
    rig.bridge.on_frame = [&](const Frame&) { rig.bridge.receive({0x12, 0xFE}); };
    const auto before = rig.clock.now();
    std::uint16_t word = 0;
    EXPECT_TRUE(rig.link.read_flash_word(0xA43D, word));
    EXPECT_EQ(word, 0x12FE);
    EXPECT_EQ(rig.clock.now() - before, std::chrono::milliseconds(20));
    EXPECT_EQ(rig.bridge.calls.front().operation, "SI_FlushBuffers");
    EXPECT_EQ(rig.bridge.frames(),
              std::vector<Frame>{(Frame{4, 33, 0xA4, 0x3D, 0, 0, 0, (33 + 0xA4 + 0x3D) % 256})});
}

TEST(FlashWord, ThatDoesNotComeLeavesTheValue) {
    LinkRig rig;
    rig.open();
    std::uint16_t word = 77;
    EXPECT_FALSE(rig.link.read_flash_word(0xA400, word));
    rig.bridge.on_frame = [&](const Frame&) { rig.bridge.receive({1}); };
    EXPECT_FALSE(rig.link.read_flash_word(0xA400, word));
    EXPECT_EQ(word, 77);
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(FlashWord, IsWrittenAfterAPauseAndNothingIsRead) {
    LinkRig rig;
    rig.open();
    const auto before = rig.clock.now();
    rig.link.write_flash_word(0xA43F, 55);
    EXPECT_EQ(rig.bridge.frames(), std::vector<Frame>{(Frame{4, 34, 0xA4, 0x3F, 0, 55, 0,
                                                             (34 + 0xA4 + 0x3F + 55) % 256})});
    EXPECT_EQ(rig.bridge.calls.front().operation, "SI_FlushBuffers");
    EXPECT_EQ(rig.bridge.calls.back().time - before, std::chrono::milliseconds(20));
    EXPECT_EQ(rig.bridge.count("SI_Read"), 0);
    rig.link.write_flash_word(0xA405, 0xFFFE);
    EXPECT_EQ(rig.bridge.frames().back().at(4), 0xFF);
    EXPECT_EQ(rig.bridge.frames().back().at(5), 0xFE);
}

} // namespace
} // namespace kv408
