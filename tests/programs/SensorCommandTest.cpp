#include "device/bus/BusNotificationCenter.h"
#include "tests/programs/RunningProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/BusTesting.h"

namespace sentrel::bus {
namespace {

/// The home-screen program, told what to do line by line, on a bus where this process listens.
class SensorCommand : public BusTest {
 protected:
  TemporaryFolder root_;
  RunningProgram home_{"sentrel-springboard", {"--root", root_.path(), "--bus", bus_.address()}};
};

TEST_F(SensorCommand, IsHeardByEveryProcess) {
  BusNotificationCenter center(connect(), BusNotificationKind::distributed);
  std::vector<std::int64_t> events;
  const Observation observation = center.addObserver(
      "com.quorvin.sentrelPearlIDNotification", [&events](const Notification& notification) {
        const PropertyList* code = find(*notification.userInfo, "EC");
        events.push_back(code ? code->integerValue() : 0);
      });
  home_.say("sensor x\nsensor 3x\nsensor \nsensor\nsensor 3\nsensor -12");
  EXPECT_TRUE(runUntil(*loop_, [&events] { return events.size() == 2; }));
  EXPECT_EQ(events, (std::vector<std::int64_t>{3, -12}));
  home_.say("quit");
  EXPECT_EQ(home_.exitCode(), 0);
}

}  // namespace
}  // namespace sentrel::bus
