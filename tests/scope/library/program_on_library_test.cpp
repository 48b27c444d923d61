// The whole program over the bridge library, found by name through the system's ordinary search,
// here in a folder that holds the simulated instrument under the library's name. That library runs
// on the machine's own clock, and so does this test.

#include <chrono>

#include <gtest/gtest.h>

#include "display/picture.h"
#include "host/system_clock.h"
#include "link/library_bridge.h"
#include "panel/front_panel.h"
#include "scope/parts.h"
#include "scope/scope.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"

namespace kv408 {
namespace {

/// Ticks as the window's timer does until `done`, at most `limit` times.
template <typename Done>
void tick_until(Scope& scope, Clock& clock, int limit, const Done& done) {
    for (int tick = 0; tick < limit && !done(); ++tick) {
        scope.tick();
        clock.sleep(std::chrono::milliseconds(100));
    }
}

TEST(ProgramOnTheLibrary, StartsAndSweepsBothChannels) {
    SystemClock clock;
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    LibraryBridge bridge;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope(Machine{clock, boxes, messages, bridge, files, choosers, fake_places(), coder});
    ASSERT_TRUE(scope.start()) << (boxes.shown.empty() ? "" : boxes.shown[0].text);
    const auto& ready = scope.parts().acquisition.ready;
    tick_until(scope, clock, 30, [&] { return ready[0] && ready[1]; });
    EXPECT_TRUE(ready[0]);
    EXPECT_TRUE(ready[1]);
    EXPECT_EQ(scope.panel().textstatus.text(), "Running");
    scope.close();
    EXPECT_TRUE(boxes.shown.empty());
}

TEST(ProgramOnTheLibrary, WithoutItTheMessageCarriesTheLoadersReason) {
    SystemClock clock;
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    LibraryBridge bridge("libNoSuchBridge.so");
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope(Machine{clock, boxes, messages, bridge, files, choosers, fake_places(), coder});
    EXPECT_FALSE(scope.start());
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Error finding USB device. Aborting application.");
    EXPECT_EQ(boxes.shown[0].informative.find("The bridge library libNoSuchBridge.so could not be "
                                              "loaded: "),
              0U);
}

} // namespace
} // namespace kv408
