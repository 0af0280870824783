#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "device/bus/BusNotificationCenter.h"
#include "tests/support/BusTesting.h"

namespace sentrel::bus {
namespace {

/// The home-screen program, told what to do line by line, on a bus where this process listens.
class SensorCommand : public BusTest {
 protected:
  SensorCommand() {
    const std::string command = SENTREL_PROGRAMS "/sentrel-springboard --root '" + root_ +
                                "' --bus '" + bus_.address() + "' >/dev/null 2>&1";
    program_ = popen(command.c_str(), "w");
  }
  ~SensorCommand() override { std::filesystem::remove_all(root_); }

  static std::string makeRoot() {
    std::string folder = std::filesystem::temp_directory_path() / "sentrel-root-XXXXXX";
    return mkdtemp(folder.data()) ? folder : "";
  }

  void say(const char* lines) {
    std::fputs(lines, program_);
    std::fflush(program_);
  }

  const std::string root_ = makeRoot();
  FILE* program_ = nullptr;
};

TEST_F(SensorCommand, IsHeardByEveryProcess) {
  BusNotificationCenter center(connect(), BusNotificationKind::distributed);
  std::vector<std::int64_t> events;
  const Observation observation = center.addObserver(
      "com.quorvin.sentrelPearlIDNotification", [&events](const Notification& notification) {
        const PropertyList* code = find(*notification.userInfo, "EC");
        events.push_back(code ? code->integerValue() : 0);
      });
  say("sensor x\nsensor 3x\nsensor \nsensor\nsensor 3\nsensor -12\n");
  EXPECT_TRUE(runUntil(*loop_, [&events] { return events.size() == 2; }));
  EXPECT_EQ(events, (std::vector<std::int64_t>{3, -12}));
  say("quit\n");
  EXPECT_EQ(pclose(program_), 0);
}

}  // namespace
}  // namespace sentrel::bus
