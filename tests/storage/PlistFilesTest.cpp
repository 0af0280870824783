#include "device/storage/PlistFiles.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device/common/FileDescriptor.h"
#include "device/storage/PrivateFolders.h"
#include "device/storage/PropertyListCoding.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;
namespace fs = std::filesystem;

class PlistFilesTest : public testing::Test {
 protected:
  std::optional<Kind> faultAt(const std::string& name) const {
    const auto reading = readDictionaryFile(folder_.path(name));
    const auto* fault = std::get_if<PropertyListFault>(&reading);
    // The port must see it as the diagnosis does.
    using enum DictionaryReading::Outcome;
    const auto expected = !fault                         ? read
                          : fault->kind == Kind::missing ? absent
                          : mayPass(*fault)              ? couldNot
                                                         : damaged;
    EXPECT_EQ(files_.readDictionary("/" + name).outcome, expected);
    return fault ? std::optional(fault->kind) : std::nullopt;
  }

  mode_t modeOf(const std::string& name) const {
    struct stat status {};
    ::lstat(folder_.path(name).c_str(), &status);
    return status.st_mode & 07777;
  }

  /// Runs `action` in a process of its own and answers how that ended.
  template <class Action>
  static int inChild(Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
      action();
      ::_exit(0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
  }

  TemporaryFolder folder_;
  PlistFiles files_{DeviceRoot(folder_.path())};
  const PropertyList::Dictionary old_{{"a", 1}};
  const PropertyList::Dictionary new_{{"a", 2}, {"b", PropertyList::Array{true, "text"}}};
};

TEST_F(PlistFilesTest, TellsWhyAFileCannotBeRead) {
  fs::create_directory(folder_.path("folder"));
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  fs::create_symlink("circle", folder_.path("circle"));
  fs::create_symlink("/dev/zero", folder_.path("device"));
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{AF_UNIX, {}};
  folder_.path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(socket.number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  folder_.put("empty", "");
  folder_.put("array", "<plist><array/></plist>");
  folder_.put("damaged", "<plist><dict>");
  EXPECT_EQ(faultAt("missing"), Kind::missing);
  EXPECT_EQ(faultAt("empty/below"), Kind::missing);
  EXPECT_EQ(faultAt("folder"), Kind::directory);
  EXPECT_EQ(faultAt("pipe"), Kind::pipe);
  EXPECT_EQ(faultAt("device"), Kind::specialFile);
  EXPECT_EQ(faultAt("socket"), Kind::specialFile);
  EXPECT_EQ(faultAt("circle"), Kind::unreachable);
  EXPECT_EQ(faultAt(std::string(300, 'n')), Kind::unreachable);
  EXPECT_EQ(faultAt("empty"), Kind::empty);
  EXPECT_EQ(faultAt("array"), Kind::notADictionary);
  EXPECT_EQ(faultAt("damaged"), Kind::damaged);
}

TEST_F(PlistFilesTest, ReadsNothingWithoutPermission) {
  ASSERT_TRUE(files_.writeDictionary("/secret", old_));
  ASSERT_EQ(::chmod(folder_.path("secret").c_str(), 0), 0);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
  const int status = inChild([this] {
    // Root may read everything; a user without a name may not.
    if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(1);
    ::_exit(faultAt("secret") == Kind::noPermission ? 0 : 2);
  });
  EXPECT_EQ(status, 0);
}

TEST_F(PlistFilesTest, ReadsWithoutADescriptorLeftAndSaysWhenItCannot) {
  ASSERT_TRUE(files_.writeDictionary("/settings", old_));
  const int status = inChild([this] {
    const rlimit limit{64, 64};
    ::setrlimit(RLIMIT_NOFILE, &limit);
    while (::dup(0) >= 0) {
    }
    for (int i = 0; i < 3; ++i)
      if (files_.readDictionary("/settings") != old_) ::_exit(1);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_NOFILE, &none);
    ::_exit(files_.readDictionary("/settings").outcome == DictionaryReading::Outcome::couldNot ? 0
                                                                                               : 2);
  });
  EXPECT_EQ(status, 0);
}

TEST_F(PlistFilesTest, RefusesALargeFileWithoutReadingIt) {
  folder_.put("large", "<plist><dict/></plist>");
  fs::resize_file(folder_.path("large"), 64 << 20);
  const int status = inChild([this] {
    // Too little memory to hold it.
    const rlimit limit{32 << 20, 32 << 20};
    ::setrlimit(RLIMIT_DATA, &limit);
    ::_exit(faultAt("large") == Kind::tooLarge ? 0 : 1);
  });
  EXPECT_EQ(status, 0);
}

TEST_F(PlistFilesTest, KeepsTheModeAndMakesWhatIsNewPrivate) {
  const mode_t usual = ::umask(0);
  for (const mode_t mask : {0U, 022U, 077U, 0777U}) {
    ::umask(mask);
    const std::string folder = std::to_string(mask);
    EXPECT_TRUE(makePrivateFolders(folder_.path(folder + "/below")));
    EXPECT_TRUE(files_.writeDictionary("/" + folder + "/below/settings", old_));
    EXPECT_EQ(modeOf(folder), 0700u);
    EXPECT_EQ(modeOf(folder + "/below"), 0700u);
    EXPECT_EQ(modeOf(folder + "/below/settings"), 0600u);
    ASSERT_EQ(::chmod(folder_.path(folder + "/below/settings").c_str(), 0644), 0);
    EXPECT_TRUE(files_.writeDictionary("/" + folder + "/below/settings", new_));
    EXPECT_EQ(modeOf(folder + "/below/settings"), 0644u);
  }
  ::umask(usual);
}

TEST_F(PlistFilesTest, OneWriterAtATimeAndNobodyWaitsForAStuckOneForEver) {
  ASSERT_TRUE(files_.writeDictionary("/settings", old_));
  fs::create_directory(folder_.path("elsewhere"));
  fs::create_symlink("../settings", folder_.path("elsewhere/link"));
  PlistFiles others(DeviceRoot(folder_.path()), Seconds(0.02));
  auto held = files_.lock("/elsewhere/link");
  EXPECT_TRUE(files_.lock("/settings")) << "its holder may write";
  EXPECT_TRUE(files_.writeDictionary("/settings", new_));
  EXPECT_FALSE(others.lock("/settings"));
  EXPECT_FALSE(others.writeDictionary("/settings", old_));
  EXPECT_EQ(others.readDictionary("/settings"), new_) << "readers do not wait";
  held.reset();
  EXPECT_TRUE(others.writeDictionary("/settings", old_));
  EXPECT_FALSE(files_.lock("/missing/settings"));
  const int status = inChild([&others] {
    const auto forEver = others.lock("/settings");
    ::raise(SIGKILL);
  });
  EXPECT_EQ(status, SIGKILL);
  EXPECT_TRUE(others.lock("/settings"));
}

TEST_F(PlistFilesTest, SeveralWritersLoseNothing) {
  constexpr int writers = 4;
  constexpr int rounds = 25;
  ASSERT_TRUE(files_.writeDictionary("/settings", {}));
  const auto addAll = [this](int writer) {
    for (int i = 0; i < rounds; ++i) {
      const auto alone = files_.lock("/settings");
      auto file = files_.readDictionary("/settings").dictionary;
      file->emplace(std::to_string(writer) + "." + std::to_string(i), true);
      if (!files_.writeDictionary("/settings", *file)) ::_exit(1);
    }
  };
  std::vector<pid_t> children;
  for (int writer = 0; writer < writers; ++writer)
    if (children.push_back(::fork()); children.back() == 0) {
      addAll(writer);
      ::_exit(0);
    }
  for (const pid_t child : children) {
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(files_.readDictionary("/settings").dictionary->size(), writers * rounds);
}

TEST_F(PlistFilesTest, ClearsAwayWhatKilledWritersLeft) {
  for (const char* name : {".settings.a1B2c3", ".settings.a1B2c", ".other.a1B2c3", "settings"})
    folder_.put(name, "");
  EXPECT_TRUE(files_.writeDictionary("/settings", new_));
  EXPECT_FALSE(fs::exists(folder_.path(".settings.a1B2c3")));
  EXPECT_EQ(folder_.count(), 3) << "what is another's stays";
}

TEST_F(PlistFilesTest, KeepsTheOwner) {
  // Only root may give files away; anybody else keeps what is theirs.
  const bool isRoot = ::geteuid() == 0;
  const uid_t owner = isRoot ? 501 : ::geteuid();
  const gid_t group = isRoot ? 502 : ::getegid();
  ASSERT_TRUE(files_.writeDictionary("/settings", old_));
  ASSERT_EQ(::chown(folder_.path("settings").c_str(), owner, group), 0);
  ASSERT_TRUE(files_.writeDictionary("/settings", new_));
  struct stat status {};
  ASSERT_EQ(::stat(folder_.path("settings").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, owner);
  EXPECT_EQ(status.st_gid, group);
}

TEST_F(PlistFilesTest, WritesThroughALink) {
  fs::create_directory(folder_.path("elsewhere"));
  ASSERT_TRUE(files_.writeDictionary("/elsewhere/settings", old_));
  fs::create_symlink("elsewhere/settings", folder_.path("link"));
  EXPECT_TRUE(files_.writeDictionary("/link", new_));
  EXPECT_TRUE(fs::is_symlink(folder_.path("link")));
  EXPECT_EQ(files_.readDictionary("/elsewhere/settings"), new_);
  EXPECT_EQ(folder_.count(), 2);
}

TEST_F(PlistFilesTest, ReplacesNothingButAFile) {
  fs::create_directory(folder_.path("folder"));
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  fs::create_symlink("nowhere", folder_.path("dangling"));
  for (const char* path : {"/folder", "/pipe", "/dangling", "/missing/settings"})
    EXPECT_FALSE(files_.writeDictionary(path, new_)) << path;
  EXPECT_TRUE(fs::is_directory(folder_.path("folder")));
  EXPECT_TRUE(fs::is_fifo(folder_.path("pipe")));
  EXPECT_TRUE(fs::is_symlink(folder_.path("dangling")));
  EXPECT_EQ(folder_.count(), 3);
}

TEST_F(PlistFilesTest, LeavesTheOldFileWhenTheDiskIsFull) {
  ASSERT_TRUE(files_.writeDictionary("/settings", old_));
  const std::string before = folder_.content("settings");
  const int status = inChild([this] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{64, 64};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(files_.writeDictionary("/settings", new_) ? 1 : 0);
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(folder_.content("settings"), before);
  EXPECT_EQ(folder_.count(), 1);
}

TEST_F(PlistFilesTest, ShowsWholeFilesThroughKilledWriters) {
  const std::string padding(50'000, 'x');
  const PropertyList::Dictionary versions[] = {{{"v", 0}, {"p", padding}},
                                               {{"v", 1}, {"p", padding}}};
  ASSERT_TRUE(files_.writeDictionary("/settings", versions[0]));
  for (int round = 0; round < 20; ++round) {
    const pid_t writer = ::fork();
    if (writer == 0)
      for (unsigned i = 0;; ++i)
        files_.writeDictionary("/settings", versions[i % 2]);
    for (int reads = 0; reads < 5 + round; ++reads) {
      const auto read = files_.readDictionary("/settings");
      EXPECT_TRUE(read == versions[0] || read == versions[1]);
    }
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    const auto left = files_.readDictionary("/settings");
    EXPECT_TRUE(left == versions[0] || left == versions[1]);
  }
}

}  // namespace
}  // namespace sentrel::storage
