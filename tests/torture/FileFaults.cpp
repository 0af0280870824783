// Every call for a file, and every allocation, of a load and of a write of the settings fails once,
// fails for good, or ends the process there. Nothing may open, nothing may be lost. Argument:
// "quick" for a share of it.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

#include "device/simulated/SimulatedDevice.h"
#include "device/storage/OpenSslCryptography.h"
#include "device/storage/PlistFiles.h"
#include "device/storage/RootedFiles.h"
#include "sentrel/Process.h"
#include "sentrel/settings/SNSettings.h"
#include "tests/torture/FaultInjection.h"

namespace sentrel::torture {
namespace {

namespace fs = std::filesystem;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

const std::string settingsFile(settingsFilePath);
const PropertyList folder(Dictionary{{"SentrelFolderDisplayName", "Work"},
                                     {"SentrelAllIcons", Array{}}});

struct Figures {
  long loads = 0, writes = 0, kills = 0, updates = 0;
  long opened = 0, lost = 0, left = 0, untold = 0;
} figures;

/// A device root with protected things in its settings, gone afterwards.
class Root {
 public:
  Root() {
    path_ = (fs::temp_directory_path() / "sentrel-torture-XXXXXX").string();
    if (!::mkdtemp(path_.data())) std::abort();
    for (const char* extension : {"Flipswitch.dylib", "FlipControlCenter.dylib"})
      put("/Library/MobileSubstrate/DynamicLibraries/" + std::string(extension));
    put(settingsFile);
    if (!files().writeDictionary(settingsFile, protecting())) std::abort();
  }
  ~Root() { fs::remove_all(path_); }

  storage::PlistFiles files() const { return storage::PlistFiles(storage::DeviceRoot(path_)); }
  const std::string& path() const { return path_; }

  static Dictionary protecting() {
    return {{"SentrelEnabled", true},
            {"SentrelApplications", Array{"com.example.bank"}},
            {"SentrelFlipSwitches", Array{"wifi"}},
            {"SentrelFolders", Array{folder}},
            {"SentrelTrustedNetworks", Array{"home"}},
            {"SentrelPasscode", "not to be deciphered"}};
  }

  /// Drafts that nobody has cleared away.
  long drafts() const {
    const fs::path place = fs::path(path_ + settingsFile).parent_path();
    return std::distance(fs::directory_iterator(place), fs::directory_iterator()) - 1;
  }

 private:
  void put(const std::string& file) const {
    fs::create_directories(fs::path(path_ + file).parent_path());
    std::ofstream(path_ + file) << "<plist><dict/></plist>";
  }

  std::string path_;
};

/// A home-screen process on the root's files, in a network that nobody trusts.
class Life {
 public:
  explicit Life(const Root& root) : process_(onFiles(root)), scope_(process_) {}

  SNSettings& settings() { return SNSettings::sharedSettings(); }

  bool isLocked() {
    const SNSettings& it = settings();
    return it.isAppProtected("com.example.bank") && it.isFlipSwitchProtected("wifi") &&
           it.hasFolder(folder) && !it.isCurrentlyConnectedToTrustedNetwork() &&
           !it.validatePasscode("") && !it.isUnlockWithAppleWatch();
  }

 private:
  Platform onFiles(const Root& root) {
    device_.wifi().joined = "cafe";
    Platform platform = base_->process().platform();
    const storage::DeviceRoot deviceRoot(root.path());
    platform.propertyListFiles =
        std::make_shared<storage::PlistFiles>(deviceRoot, /*patience=*/Seconds(0.01));
    platform.files = std::make_shared<storage::RootedFiles>(deviceRoot);
    platform.cryptography = std::make_shared<storage::OpenSslCryptography>();
    return platform;
  }

  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> base_ =
      device_.launch(std::string(springBoardBundleIdentifier));
  Process process_;
  Process::Scope scope_;
};

struct Fault {
  unsigned kinds;
  int error;
  Mode mode;
};

constexpr std::array faults{
    Fault{files, EMFILE, Mode::once},    Fault{files, EMFILE, Mode::lasting},
    Fault{files, ENFILE, Mode::lasting}, Fault{files, ENOMEM, Mode::once},
    Fault{files, EIO, Mode::once},       Fault{files, EIO, Mode::lasting},
    Fault{files, EACCES, Mode::lasting}, Fault{files, ENOSPC, Mode::lasting},
    Fault{files, EROFS, Mode::lasting},  Fault{files, EINTR, Mode::once},
    Fault{files, 0, Mode::once},         Fault{memory, ENOMEM, Mode::once},
    Fault{memory, ENOMEM, Mode::lasting}};

/// How `action` ended in a process of its own.
template <class Action>
int statusOf(Action action) {
  const pid_t child = ::fork();
  if (child == 0) {
    action();
    ::_exit(0);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return status;
}

long wrongs() {
  return figures.opened + figures.lost + figures.untold;
}

/// Calls `action` with each of its calls failing. Without memory in a process of its own, since
/// some libraries end theirs then: that opens nothing.
template <class Action>
void atEveryCall(const Fault& fault, int step, long& count, Action action) {
  const auto failingAt = [&fault](long at) {
    return [&fault, at] { arm(fault.kinds, at, fault.error, fault.mode); };
  };
  const long calls = action(failingAt(0));
  for (long at = 1; at <= calls; at += step, ++count) {
    if (fault.kinds == memory) {
      const int status = statusOf([&] {
        ::close(STDERR_FILENO);
        const long before = wrongs();
        action(failingAt(at));
        ::_exit(wrongs() > before);
      });
      if (WIFEXITED(status) && WEXITSTATUS(status) != 0) ++figures.opened;
    } else {
      action(failingAt(at));
    }
  }
}

/// What the process makes of no memory is its own matter, as long as nothing is open afterwards.
template <class Action>
long disturbed(const std::function<void()>& start, Action action) {
  start();
  try {
    action();
  } catch (const std::bad_alloc&) {
  }
  return disarm();
}

void expectLocked(Life& life, const char* when, const Fault& fault) {
  if (life.isLocked()) return;
  ++figures.opened;
  std::printf("opened: %s, with %s\n", when, std::strerror(fault.error));
}

void tortureLoads(const Root& root, int step) {
  for (const Fault& fault : faults) {
    atEveryCall(fault, step, figures.loads, [&](const auto& start) {
      Life life(root);
      const long calls = disturbed(start, [&life] { life.settings(); });
      expectLocked(life, "after a start", fault);
      life.settings().reloadSettings();
      expectLocked(life, "after the fault", fault);
      return calls;
    });
    Life life(root);
    expectLocked(life, "before a reload", fault);
    atEveryCall(fault, step, figures.loads, [&](const auto& start) {
      const long calls = disturbed(start, [&life] { life.settings().reloadSettings(); });
      expectLocked(life, "after a reload", fault);
      return calls;
    });
  }
}

/// A write that says it is done is, and no other.
void tortureWrites(const Root& root, int step) {
  Life life(root);
  for (const Fault& fault : faults)
    atEveryCall(fault, step, figures.writes, [&](const auto& start) {
      const Dictionary before = *root.files().readDictionary(settingsFile).dictionary;
      const std::int64_t number =
          before.contains("number") ? before.at("number").integerValue() + 1 : 1;
      bool isDone = false;
      const long calls = disturbed(start, [&] {
        isDone = life.settings().updateSettingsData("number", number, /*postNotification=*/false);
      });
      const auto after = root.files().readDictionary(settingsFile).dictionary;
      Dictionary changed = before;
      changed.insert_or_assign("number", number);
      if (after != changed && after != before) ++figures.lost;
      if (isDone != (after == changed)) ++figures.untold;
      return calls;
    });
  life.settings().updateSettingsData("number", 0, /*postNotification=*/false);
  figures.left += root.drafts();
}

void tortureByKills(const Root& root, int rounds) {
  for (int round = 0; round < rounds; ++round)
    for (long at = 1, ended = 0; !ended; ++at) {
      const auto before = root.files().readDictionary(settingsFile).dictionary;
      ended = WIFEXITED(statusOf([&] {
        auto files = root.files();
        const auto alone = files.lock(settingsFile);
        auto file = files.readDictionary(settingsFile).dictionary;
        file->insert_or_assign("number", std::int64_t{1000} * round + at);
        arm(torture::files, at, 0, Mode::kill);
        files.writeDictionary(settingsFile, *file);
        disarm();
      }));
      auto after = root.files().readDictionary(settingsFile).dictionary;
      if (after && after != before) after->insert_or_assign("number", before->at("number"));
      if (after != before) ++figures.lost;
      ++figures.kills;
    }
  root.files().writeDictionary(settingsFile, Root::protecting());
  figures.left += root.drafts();
}

/// Each writer has a key of its own, and is killed and begins again now and then.
void tortureBySeveral(const Root& root, int writers, int rounds) {
  std::vector<pid_t> children;
  for (int writer = 0; writer < writers; ++writer) {
    children.push_back(::fork());
    if (children.back() != 0) continue;
    Life life(root);
    for (std::int64_t i = 1; i <= rounds; ++i) {
      if (i % 10 == 0)
        statusOf([&] {
          arm(torture::files, i % 25, 0, Mode::kill);
          life.settings().updateSettingsData("killed", i, /*postNotification=*/false);
        });
      while (!life.settings().updateSettingsData("writer" + std::to_string(writer), i,
                                                 /*postNotification=*/false)) {
      }
      const auto own = life.settings().valueForKey("writer" + std::to_string(writer));
      if (own != PropertyList(i)) ::_exit(1);
    }
    ::_exit(0);
  }
  for (const pid_t child : children) {
    int status = -1;
    ::waitpid(child, &status, 0);
    if (status != 0) ++figures.lost;
  }
  const auto file = root.files().readDictionary(settingsFile).dictionary;
  for (int writer = 0; writer < writers; ++writer)
    if (file->at("writer" + std::to_string(writer)) != PropertyList(rounds)) ++figures.lost;
  figures.updates += long{writers} * rounds;
}

int run(bool isQuick) {
  const Root root;
  tortureLoads(root, isQuick ? 7 : 1);
  tortureWrites(root, isQuick ? 7 : 1);
  tortureByKills(root, isQuick ? 2 : 200);
  tortureBySeveral(root, 2, isQuick ? 30 : 500);
  tortureBySeveral(root, 6, isQuick ? 10 : 300);
  const auto& it = figures;
  std::printf(
      "files: %ld loads and %ld writes with a fault, %ld kills in a write, %ld updates of "
      "several writers: %ld opened, %ld lost, %ld told wrongly, %ld drafts left\n",
      it.loads, it.writes, it.kills, it.updates, it.opened, it.lost, it.untold, it.left);
  return wrongs() + it.left > 0;
}

}  // namespace
}  // namespace sentrel::torture

int main(int argc, char** argv) {
  ::alarm(600);  // what hangs ends here
  return sentrel::torture::run(argc > 1 && std::strcmp(argv[1], "quick") == 0);
}
