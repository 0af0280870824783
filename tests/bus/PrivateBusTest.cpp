#include "device/bus/PrivateBus.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "tests/support/BusTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::bus {
namespace {

namespace fs = std::filesystem;

class PrivateBuses : public ::testing::Test {
 protected:
  bool canConnect(const PrivateBus& bus) {
    BusConnection::Options options;
    options.address = bus.address();
    return BusConnection(loop_, std::move(options)).isConnected();
  }

  const std::shared_ptr<loop::RunLoop> loop_ = std::make_shared<loop::RunLoop>();
};

TEST_F(PrivateBuses, LeaveNothingBehind) {
  const TemporaryFolder folder;
  const fs::path parent = folder.path();
  const Environment runtime("XDG_RUNTIME_DIR", parent);
  pid_t daemon = 0;
  {
    const PrivateBus bus;
    daemon = bus.daemon();
    ASSERT_EQ(std::distance(fs::directory_iterator(parent), {}), 1);
    const fs::path own = fs::directory_iterator(parent)->path();
    EXPECT_EQ(fs::status(own).permissions(), fs::perms::owner_all);
    EXPECT_EQ(kill(daemon, 0), 0);
  }
  EXPECT_EQ(kill(daemon, 0), -1);
  EXPECT_TRUE(fs::is_empty(parent));
}

TEST_F(PrivateBuses, StartUnderTemporaryFoldersOfAnyName) {
  const TemporaryFolder folder;
  const fs::path parent = folder.path();
  const std::string names[] = {"a space, 100% & <odd>; =\"\xC3\xA9'", std::string(150, 'x')};
  for (const std::string& name : names) {
    fs::create_directory(parent / name);
    const Environment runtime("XDG_RUNTIME_DIR", parent / name);
    EXPECT_TRUE(canConnect(PrivateBus())) << name;
  }
}

TEST_F(PrivateBuses, SaySoWhenThereIsNoDaemonToStart) {
  const Environment path("PATH", "/nonexistent");
  try {
    const PrivateBus bus;
    FAIL();
  } catch (const BusError& error) {
    EXPECT_STREQ(error.what(),
                 "cannot start a private bus: dbus-daemon did not start; is the package "
                 "dbus-daemon installed?");
  }
}

TEST_F(PrivateBuses, EndWithTheProcessThatStartedThem) {
  const TemporaryFolder folder;
  const fs::path parent = folder.path();
  const Environment runtime("XDG_RUNTIME_DIR", parent);
  ChildProcess owner([](const ChildProcess::Ready& ready) {
    const PrivateBus bus;
    ready(bus.address());
    pause();
  });
  bool lost = false;
  BusConnection::Options options;
  options.address = owner.said();
  options.onLost = [&lost](const std::string&) { lost = true; };
  const BusConnection connection(loop_, std::move(options));
  ASSERT_TRUE(connection.isConnected());
  owner.end();
  EXPECT_TRUE(runUntil(*loop_, [&] { return lost; }));
}

TEST_F(BusTest, GivesOnlyNamesOfThisSystem) {
  const auto connection = connect();
  const auto silent = [](const std::string&, const UserInfo&) { return UserInfo(); };
  EXPECT_THROW(connection->serve("org.example.Foreign", testChannel, silent), BusError);
  EXPECT_NO_THROW(connection->serve("com.quorvin.example", testChannel, silent));
}

}  // namespace
}  // namespace sentrel::bus
