#include <gtest/gtest.h>
#include <signal.h>

#include <optional>

#include "tests/programs/ProgramRun.h"
#include "tests/programs/RunningProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel {
namespace {

/// The home-screen process and the sharing daemon on one device root.
class SharingDaemon : public ::testing::Test {
 protected:
  SharingDaemon() { EXPECT_TRUE(home.hear().starts_with("ready ")); }

  void startDaemon() {
    daemon.emplace("sentrel-sharingd", arguments);
    EXPECT_EQ(daemon->hear(), "ready");
  }

  TemporaryFolder root;
  std::vector<std::string> arguments{"--root", root.path()};
  RunningProgram home{"sentrel-springboard", arguments};
  std::optional<RunningProgram> daemon;
};

constexpr const char* nothing = "watch {}";

TEST_F(SharingDaemon, AnswersForTheWatchAsItIs) {
  startDaemon();
  const char* const commands[] = {"wrist 3",       "lock 0",     "nearby yes",    "active yes",
                                  "connected yes", "rssi 1 -45", "name A watch\r"};
  for (const char* command : commands)
    EXPECT_EQ(daemon->ask(command), "OK") << command;
  EXPECT_EQ(home.ask("watch"),
            "watch {active = YES; connected = YES; name = \"A watch\"; nearby = YES; "
            "pairedWatchLockState = 0; pairedWatchWristState = 3; rssi = -45}");
  EXPECT_EQ(daemon->ask("unpair"), "OK");
  EXPECT_EQ(home.ask("watch"),
            "watch {pairedWatchLockState = 0; pairedWatchWristState = 3; rssi = -45}");
  EXPECT_EQ(daemon->ask("pair"), "OK");
  EXPECT_EQ(daemon->ask("show"),
            "{active = YES; connected = YES; lock = 0; name = \"A watch\"; nearby = YES; "
            "paired = YES; rssi = (1, -45); taps = 0; wake-ups = 2; wrist = 3}");
}

TEST_F(SharingDaemon, SaysEachTap) {
  startDaemon();
  EXPECT_EQ(home.ask("tap 2"), "tapped");
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(daemon->hear(), "tap");
  EXPECT_NE(daemon->ask("show").find("taps = 3"), std::string::npos);
}

TEST_F(SharingDaemon, IsReadAsAnEmptyAnswerWhereItFails) {
  EXPECT_EQ(home.ask("watch"), nothing) << "absent";
  startDaemon();
  EXPECT_NE(home.ask("watch"), nothing);
  kill(daemon->process(), SIGSTOP);
  home.say("watch");
  EXPECT_EQ(home.ask("lock"), "locked") << "the home screen waits for nobody";
  EXPECT_EQ(home.hear(), nothing) << "hanging";
  home.say("watch");
  daemon.reset();
  EXPECT_EQ(home.hear(), nothing) << "killed meanwhile";
  startDaemon();
  EXPECT_NE(home.ask("watch"), nothing) << "started again";
}

TEST_F(SharingDaemon, RefusesCommandsThatMakeNoSense) {
  startDaemon();
  const std::string before = daemon->ask("show");
  const char* const commands[] = {
      "wrist",     "wrist three",   "wrist 3 4", "lock 4294967296", "nearby", "nearby 1", "rssi -1",
      "rssi -1 x", "rssi -1 -2 -3", "name",      "unpair the dog",  "dance"};
  for (const char* command : commands)
    EXPECT_EQ(daemon->ask(command), "?") << command;
  EXPECT_EQ(daemon->ask("show"), before);
  daemon->say("quit");
  EXPECT_EQ(daemon->exitCode(), 2);
}

TEST_F(SharingDaemon, NeedsABusAndItsNameToItself) {
  const TemporaryFolder elsewhere;
  const ProgramResult alone = runProgram("sentrel-sharingd", {"--root", elsewhere.path()});
  EXPECT_EQ(alone.code, 3);
  EXPECT_NE(alone.errors.find("start sentrel-springboard"), std::string::npos) << alone.errors;
  startDaemon();
  const ProgramResult second = runProgram("sentrel-sharingd", arguments);
  EXPECT_EQ(second.code, 3);
  EXPECT_NE(second.errors.find("already has the name"), std::string::npos) << second.errors;
}

}  // namespace
}  // namespace sentrel
