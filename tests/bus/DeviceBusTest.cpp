#include "device/bus/DeviceBus.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <list>
#include <set>

#include "tests/support/BusTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::bus {
namespace {

namespace fs = std::filesystem;

class DeviceBuses : public ::testing::Test {
 protected:
  DeviceBuses() { fs::create_directories(file().parent_path()); }

  fs::path file() const { return root_ / "var/run/sentrel/bus-address"; }
  BusChoice choice() const { return {root_, ""}; }

  const TemporaryFolder folder_;
  const fs::path root_ = folder_.path();
  const Environment named_{"SENTREL_BUS", ""};
  const Environment runtime_{"XDG_RUNTIME_DIR", root_};
};

TEST_F(DeviceBuses, AreNamedByTheOptionElseTheEnvironmentElseTheRoot) {
  EXPECT_EQ(findBus(choice()), std::nullopt);
  std::ofstream(file()) << "unix:path=/of-the-root\n";
  EXPECT_EQ(findBus(choice()), "unix:path=/of-the-root");
  const Environment named("SENTREL_BUS", "unix:path=/of-the-environment");
  EXPECT_EQ(findBus(choice()), "unix:path=/of-the-environment");
  EXPECT_EQ(findBus({root_, "unix:path=/of-the-option"}), "unix:path=/of-the-option");
  const HomeScreenBus joined({root_, "unix:path=/of-the-option"});
  EXPECT_EQ(joined.address(), "unix:path=/of-the-option");
}

TEST_F(DeviceBuses, AreFoundUnderTheRootForAsLongAsTheyRun) {
  {
    const HomeScreenBus bus(choice());
    EXPECT_EQ(findBus(choice()), bus.address());
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    const HomeScreenBus second(choice());
    EXPECT_EQ(second.address(), bus.address());
  }
  EXPECT_EQ(findBus(choice()), std::nullopt);
}

TEST_F(DeviceBuses, ReplaceWhateverNoLongerLeadsToABus) {
  const std::string contents[] = {"",
                                  "\n",
                                  "unix:path=/nonexistent/bus\n",
                                  "unix:path=/tmp/%4\n",
                                  "tcp:host=localhost,port=1\n",
                                  "unix:path=" + std::string(500, 'x') + "\n",
                                  std::string(5000, 'y'),
                                  std::string(30, '\0')};
  for (const std::string& content : contents) {
    std::ofstream(file(), std::ios::trunc) << content;
    const HomeScreenBus bus(choice());
    EXPECT_NE(bus.address() + "\n", content);
    EXPECT_EQ(findBus(choice()), bus.address());
  }
  ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
  const HomeScreenBus bus(choice());
  EXPECT_EQ(findBus(choice()), bus.address());
}

TEST_F(DeviceBuses, StartAgainAfterTheirOwnerWasKilled) {
  ChildProcess owner([this](const ChildProcess::Ready& ready) {
    const HomeScreenBus bus(choice());
    ready(bus.address());
    pause();
  });
  const auto loop = std::make_shared<loop::RunLoop>();
  bool lost = false;
  BusConnection::Options options;
  options.address = owner.said();
  options.onLost = [&lost](const std::string&) { lost = true; };
  const BusConnection connection(loop, std::move(options));
  owner.end();
  ASSERT_TRUE(runUntil(*loop, [&] { return lost; }));
  ASSERT_EQ(findBus(choice()), owner.said());
  const HomeScreenBus bus(choice());
  EXPECT_NE(bus.address(), owner.said());
  const auto folders = std::count_if(fs::directory_iterator(root_), {}, [](const auto& entry) {
    return entry.path().filename().native().starts_with("sentrel-bus-");
  });
  EXPECT_EQ(folders, 1);
}

TEST_F(DeviceBuses, AreStartedOnceHoweverManyBeginAtOnce) {
  int gate[2];
  ASSERT_EQ(pipe(gate), 0);
  int answers[2];
  ASSERT_EQ(pipe(answers), 0);
  std::list<ChildProcess> children;
  for (int i = 0; i < 6; ++i)
    children.emplace_back([&](const ChildProcess::Ready& ready) {
      ready("waiting");
      close(gate[1]);
      char c = 0;
      if (read(gate[0], &c, 1) != 0) return;
      const HomeScreenBus bus(choice());
      const std::string line = bus.address() + "\n";
      if (write(answers[1], line.data(), line.size()) > 0) pause();
    });
  close(gate[1]);
  close(gate[0]);
  close(answers[1]);
  FILE* lines = fdopen(answers[0], "r");
  std::set<std::string> addresses;
  char line[512];
  int count = 0;
  for (; count < 6 && fgets(line, sizeof line, lines); ++count)
    addresses.insert(line);
  fclose(lines);
  EXPECT_EQ(count, 6);
  EXPECT_EQ(addresses.size(), 1u);
}

TEST_F(DeviceBuses, SayWhereTheyCannotBeWrittenDown) {
  fs::remove_all(file().parent_path());
  std::ofstream(file().parent_path()) << "in the way";
  try {
    const HomeScreenBus bus(choice());
    FAIL();
  } catch (const BusError& error) {
    EXPECT_THAT(error.what(), ::testing::HasSubstr(file().parent_path().native()));
  }
}

TEST_F(DeviceBuses, TellASecondHomeScreenThatTheNameIsTaken) {
  const auto silent = [](const std::string&, const UserInfo&) { return UserInfo(); };
  const auto loop = std::make_shared<loop::RunLoop>();
  const HomeScreenBus first(choice());
  const HomeScreenBus second(choice());
  BusConnection::Options options;
  options.address = first.address();
  BusConnection owner(loop, options);
  options.address = second.address();
  BusConnection late(loop, options);
  owner.serve(springBoardService, testChannel, silent);
  try {
    late.serve(springBoardService, testChannel, silent);
    FAIL();
  } catch (const BusError& error) {
    EXPECT_STREQ(error.what(),
                 "another process already has the name com.quorvin.sentrel.SpringBoard on this "
                 "bus");
  }
}

}  // namespace
}  // namespace sentrel::bus
