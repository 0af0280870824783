#include "device/bus/BusNotificationCenter.h"
#include "tests/programs/RunningProgram.h"
#include "tests/support/BusTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::bus {
namespace {

/// The home-screen program, told what to do line by line, on a bus where this process listens.
class SensorCommand : public BusTest {};

TEST_F(SensorCommand, IsHeardByEveryProcess) {
  const TemporaryFolder root;
  RunningProgram home("sentrel-springboard", {"--root", root.path(), "--bus", bus_.address()});
  BusNotificationCenter center(connect(), BusNotificationKind::distributed);
  std::vector<std::int64_t> events;
  const Observation observation = center.addObserver(
      "com.quorvin.sentrelPearlIDNotification", [&events](const Notification& notification) {
        const PropertyList* code = find(*notification.userInfo, "EC");
        events.push_back(code ? code->integerValue() : 0);
      });
  home.say("sensor x\nsensor 3x\nsensor \nsensor\nsensor 3\nsensor -12");
  EXPECT_TRUE(runUntil(*loop_, [&events] { return events.size() == 2; }));
  EXPECT_EQ(events, (std::vector<std::int64_t>{3, -12}));
  home.say("quit\r");
  EXPECT_EQ(home.exitCode(), 2) << "for the lines that made no sense";
}

}  // namespace
}  // namespace sentrel::bus
