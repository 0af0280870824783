#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "device/bus/BusNotificationCenter.h"
#include "device/storage/PlistFiles.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SettingsKeys.h"
#include "tests/programs/ProgramRun.h"
#include "tests/programs/RunningProgram.h"
#include "tests/storage/TemporaryFolder.h"
#include "tests/support/BusTesting.h"

namespace sentrel {
namespace {

/// No file can grow beyond this as long as it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

/// One line and nothing else.
bool isOneLine(const std::string& text) {
  return std::ranges::count(text, '\n') == 1 && text.ends_with('\n');
}

/// The preferences tool on a device root without a home-screen process.
class Sentrelctl : public ::testing::Test {
 protected:
  Sentrelctl() {
    std::string folder = (std::filesystem::temp_directory_path() / "sentrel-XXXXXX").string();
    root = mkdtemp(folder.data());
  }
  ~Sentrelctl() override { std::filesystem::remove_all(root); }

  ProgramResult run(std::vector<std::string> arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), {"--root", root.string()});
    return runProgram("sentrelctl", arguments, input);
  }

  std::filesystem::path settingsFile() {
    return root / std::filesystem::path(settingsFilePath).relative_path();
  }

  PropertyList::Dictionary stored() {
    return storage::PlistFiles(storage::DeviceRoot(root.string()))
        .readDictionary(std::string(settingsFilePath))
        .value_or(PropertyList::Dictionary());
  }

  void writeRaw(const std::string& content) {
    std::filesystem::create_directories(settingsFile().parent_path());
    std::ofstream(settingsFile()) << content;
  }

  std::filesystem::path root;
};

TEST_F(Sentrelctl, StoresEachKindOfValueWithItsType) {
  ASSERT_EQ(run({"create"}).code, 0);
  EXPECT_EQ(run({"set", "SentrelEnabled", "yes"}).code, 0);
  EXPECT_EQ(run({"set", "SentrelRememberTime", "2.5"}).code, 0);
  EXPECT_EQ(run({"set", "SentrelBlurEffectType", "2"}).code, 0);
  EXPECT_EQ(run({"set", "SentrelBlurEffectsText", "Ours"}).code, 0);
  EXPECT_EQ(run({"set", "SentrelApplications", "a", "b"}).code, 0);
  EXPECT_EQ(run({"add", "SentrelApplications", "c"}).code, 0);
  EXPECT_EQ(run({"drop", "SentrelApplications", "a"}).code, 0);
  EXPECT_EQ(PropertyList(stored()), PropertyList(PropertyList::Dictionary{
                                        {"SentrelEnabled", true},
                                        {"SentrelRememberTime", 2.5},
                                        {"SentrelBlurEffectType", 2},
                                        {"SentrelBlurEffectsText", "Ours"},
                                        {"SentrelApplications", PropertyList::Array{"b", "c"}}}));
  EXPECT_EQ(run({"get", "SentrelRememberTime"}).output, "2.5\n");
  EXPECT_EQ(run({"get", "SentrelApplications"}).output, "b, c\n");
  EXPECT_EQ(run({"toggle", "SentrelEnabled"}).output, "NO\n");
  EXPECT_EQ(run({"remove", "SentrelBlurEffectsText"}).code, 0);
  EXPECT_EQ(stored().count("SentrelBlurEffectsText"), 0U);
  EXPECT_EQ(run({"check"}).code, 0);
}

TEST_F(Sentrelctl, EndsWithTheCodeThatSaysHowItWent) {
  ASSERT_EQ(run({"create"}).code, 0);
  struct Call {
    std::vector<std::string> arguments;
    int code;
  };
  const Call calls[] = {
      {{"create"}, 3},
      {{"get", "SentrelEnabled"}, 1},
      {{"remove", "SentrelEnabled"}, 1},
      {{"drop", "SentrelNCApps", "a"}, 1},
      {{"toggle", "SentrelEnabled"}, 3},
      {{"set", "SentrelEnabled", "maybe"}, 2},
      {{"set", "SentrelEnabled"}, 2},
      {{"set", "SentrelRememberTime", "5x"}, 2},
      {{"set", "SentrelBlurEffectType", "1.5"}, 2},
      {{"set", "SentrelUnknown", "1"}, 2},
      {{"set", "SentrelFolders", "a"}, 2},
      {{"set", "SentrelBlurEffectsText", "not \xff UTF-8"}, 3},
      {{"add", "SentrelEnabled", "a"}, 2},
      {{"get"}, 2},
      {{"frobnicate"}, 2},
      {{}, 2},
  };
  for (const Call& call : calls) {
    const ProgramResult result = run(call.arguments);
    SCOPED_TRACE(call.arguments.empty() ? "no command" : call.arguments.back());
    EXPECT_EQ(result.code, call.code);
    EXPECT_TRUE(result.output.empty()) << result.output;
    const bool isAnswer = call.code == 1;
    EXPECT_EQ(result.errors.empty(), isAnswer) << result.errors;
  }
  EXPECT_TRUE(stored().empty());
}

TEST_F(Sentrelctl, LeavesAFileThatItCannotReadAsItIs) {
  const std::string damaged = "<plist><dict><key>SentrelEnabled</key><true/>";
  writeRaw(damaged);
  EXPECT_EQ(run({"set", "SentrelEnabled", "NO"}).code, 3);
  EXPECT_EQ(run({"create"}).code, 3);
  EXPECT_EQ(run({"check"}).code, 1);
  std::string content;
  std::getline(std::ifstream(settingsFile()), content, '\0');
  EXPECT_EQ(content, damaged);
}

TEST_F(Sentrelctl, SaysSoWhenThereIsNoFileToReadOrItIsDamaged) {
  const std::vector<std::string> calls[] = {{"show"},
                                            {"get", "SentrelEnabled"},
                                            {"folders", "list"},
                                            {"networks", "trusted"},
                                            {"explain", "app"}};
  for (const bool isDamaged : {false, true}) {
    if (isDamaged) writeRaw("<plist><dict>");
    for (const auto& call : calls) {
      SCOPED_TRACE(call.front() + (isDamaged ? ", damaged" : ", missing"));
      const ProgramResult result = run(call);
      EXPECT_EQ(result.code, 3);
      EXPECT_EQ(result.output, "");
      EXPECT_NE(result.errors.find(settingsFile().string()), std::string::npos) << result.errors;
      EXPECT_TRUE(isOneLine(result.errors)) << result.errors;
    }
  }
}

TEST_F(Sentrelctl, TellsAFileThatCannotBeWrittenFromAValueThatCannotBeToggled) {
  ASSERT_EQ(run({"create"}).code, 0);
  ASSERT_EQ(run({"set", "SentrelBlurEffectsText", std::string(5000, 'x')}).code, 0);
  ASSERT_EQ(run({"set", "SentrelEnabled", "NO"}).code, 0);
  ProgramResult full;
  {
    const FileSizeLimit limit(2000);
    full = run({"toggle", "SentrelEnabled"});
  }
  EXPECT_EQ(full.code, 3);
  EXPECT_EQ(full.output, "");
  EXPECT_NE(full.errors.find("could not be written"), std::string::npos) << full.errors;
  EXPECT_EQ(run({"get", "SentrelEnabled"}).output, "NO\n");
  const ProgramResult absent = run({"toggle", "SentrelRemember"});
  EXPECT_EQ(absent.code, 3);
  EXPECT_NE(absent.errors.find("no YES or NO"), std::string::npos) << absent.errors;
}

TEST_F(Sentrelctl, CheckNamesEveryFault) {
  writeRaw(R"(<plist><dict>
    <key>SentrelEnabled</key><string>YES</string>
    <key>SentrelRemember</key><integer>2</integer>
    <key>SentrelRememberTime</key><array/>
    <key>SentrelApplications</key><array><string>a</string><string>a</string><integer>1</integer></array>
    <key>SentrelNCApps</key><string>a</string>
    <key>SentrelFolders</key><array><dict/></array>
    <key>SentrelUsePasscodeOnly</key><true/>
    <key>SentrelEnabld</key><true/>
  </dict></plist>)");
  const ProgramResult result = run({"check"});
  EXPECT_EQ(result.code, 1);
  for (const char* fault :
       {"SentrelEnabled: holds YES", "SentrelRemember: holds 2", "SentrelRememberTime: holds",
        "SentrelApplications: holds \"a\" more than once", "SentrelApplications: holds 1",
        "SentrelNCApps: holds a", "SentrelFolders: record 1",
        "SentrelUsePasscodeOnly: has no effect", "SentrelEnabld: is no setting"})
    EXPECT_NE(result.output.find(fault), std::string::npos) << fault << "\n" << result.output;
}

TEST_F(Sentrelctl, PasscodeComesFromStandardInputAndIsStoredEnciphered) {
  ASSERT_EQ(run({"create"}).code, 0);
  EXPECT_EQ(run({"passcode", "check"}, "2468\n").code, 1);
  EXPECT_EQ(run({"passcode", "set"}, "").code, 2);
  EXPECT_EQ(run({"passcode", "set"}, "2468\n").code, 0);
  EXPECT_EQ(run({"get", "SentrelPasscode"}).output.size(), 25U);
  EXPECT_EQ(run({"passcode", "check"}, "2468\n").output, "YES\n");
  EXPECT_EQ(run({"passcode", "check"}, "24680\n").output, "NO\n");
  EXPECT_EQ(run({"passcode", "remove"}).code, 0);
  EXPECT_EQ(run({"get", "SentrelPasscode"}).code, 1);
  EXPECT_EQ(run({"passcode", "show"}).code, 2);
}

TEST_F(Sentrelctl, PasscodeThatCannotBeEncipheredIsNotSaidToBeStored) {
  ASSERT_EQ(run({"create"}).code, 0);
  ASSERT_EQ(run({"passcode", "set"}, "2468\n").code, 0);
  // Leaves the cryptographic library without any cipher.
  const std::string configuration = (root / "openssl.cnf").string();
  std::ofstream(configuration) << "openssl_conf = start\n[start]\nproviders = list\n"
                                  "[list]\nnull = none\n[none]\nactivate = 1\n";
  const bus::Environment environment("OPENSSL_CONF", configuration);
  const ProgramResult result = run({"passcode", "set"}, "1357\n");
  EXPECT_EQ(result.code, 3);
  EXPECT_NE(result.errors.find("none is stored"), std::string::npos) << result.errors;
  EXPECT_EQ(run({"get", "SentrelPasscode"}).code, 1);
}

TEST_F(Sentrelctl, TerminalShowsWhatIsTypedAgainAfterAnInterruptedPasscode) {
  ASSERT_EQ(run({"create"}).code, 0);
  int master = -1;
  int terminal = -1;
  ASSERT_EQ(openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
  const auto echoes = [terminal] {
    termios mode{};
    tcgetattr(terminal, &mode);
    return (mode.c_lflag & ECHO) != 0;
  };
  const std::string program = std::string(SENTREL_PROGRAMS) + "/sentrelctl";
  const pid_t child = fork();
  if (child == 0) {
    login_tty(terminal);
    execl(program.c_str(), program.c_str(), "--root", root.c_str(), "passcode", "set", nullptr);
    _exit(127);
  }
  std::string shown;
  pollfd waiting{master, POLLIN, 0};
  while (shown.find("passcode: ") == std::string::npos && poll(&waiting, 1, 30'000) > 0) {
    char c = 0;
    if (read(master, &c, 1) != 1) break;
    shown += c;
  }
  EXPECT_EQ(shown, "passcode: ");
  EXPECT_FALSE(echoes());
  EXPECT_EQ(write(master, "24\x03", 3), 3);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
  EXPECT_TRUE(echoes());
  close(terminal);
  close(master);
}

TEST_F(Sentrelctl, ExplainSaysWhichStepDecides) {
  ASSERT_EQ(run({"create"}).code, 0);
  ASSERT_EQ(run({"set", "SentrelApplications", "com.example.notes"}).code, 0);
  const ProgramResult off = run({"explain", "com.example.notes"});
  EXPECT_EQ(off.code, 1);
  EXPECT_NE(off.output.find("enabled?               no"), std::string::npos) << off.output;
  EXPECT_NE(off.output.find("in the set?            yes"), std::string::npos) << off.output;
  EXPECT_EQ(run({"explain", "pane", "Sentrel"}).code, 0);
  ASSERT_EQ(run({"set", "SentrelEnabled", "YES"}).code, 0);
  EXPECT_EQ(run({"explain", "com.example.notes"}).code, 0);
  EXPECT_EQ(run({"explain", "service", "COM.EXAMPLE.NOTES.share"}).code, 0);
  EXPECT_EQ(run({"explain", "feature", "switcher"}).code, 1);
  EXPECT_EQ(run({"explain", "feature", "nothing"}).code, 2);
  EXPECT_EQ(run({"explain", "nothing", "x"}).code, 2);
}

TEST_F(Sentrelctl, ExplainNamesTheStepThatDecidesAboutAFeature) {
  ASSERT_EQ(run({"create"}).code, 0);
  ASSERT_EQ(run({"set", "SentrelEnabled", "YES"}).code, 0);
  const auto explain = [this](const char* feature) { return run({"explain", "feature", feature}); };
  EXPECT_NE(explain("photos").output.find("in the set?            no"), std::string::npos);
  ASSERT_EQ(run({"add", "SentrelApplications", "com.apple.mobileslideshow"}).code, 0);
  const ProgramResult photos = explain("photos");
  EXPECT_EQ(photos.code, 0);
  EXPECT_NE(photos.output.find("switched on?           no: SentrelPhotosProtected\n"
                               "in the set?            yes: the protected applications\n"
                               "open session?          no: com.apple.mobileslideshow\n"
                               "so it is               protected\n"),
            std::string::npos)
      << photos.output;
  ASSERT_EQ(run({"set", "SentrelCallerIDRemoveFromLockScreen", "YES"}).code, 0);
  ASSERT_EQ(run({"set", "SentrelCallerIDHideOnAttentionAway", "YES"}).code, 0);
  for (const char* companion : {"caller-id-lock-screen", "caller-id-attention"}) {
    const ProgramResult result = explain(companion);
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.output.find("caller ID hidden?      no: SentrelCallerIDOn\n"
                                 "switched on?           yes: "),
              std::string::npos)
        << result.output;
  }
}

TEST_F(Sentrelctl, ExplainAsksForTheSwitchesExtensionBeforeASession) {
  ASSERT_EQ(run({"create"}).code, 0);
  const std::string output = run({"explain", "switch", "com.example.switch"}).output;
  const auto at = [&output](const char* question) { return output.find(question); };
  EXPECT_LT(at("trusted network?"), at("extension installed?")) << output;
  EXPECT_LT(at("extension installed?"), at("open session?")) << output;
}

TEST_F(Sentrelctl, NetworksAndFoldersAreListedAndChanged) {
  ASSERT_EQ(run({"create"}).code, 0);
  EXPECT_EQ(run({"networks", "trust", "Café"}).code, 0);
  EXPECT_EQ(run({"networks", "trusted"}).output, "Café\n");
  EXPECT_EQ(run({"networks", "distrust", "Other"}).code, 1);
  EXPECT_EQ(run({"networks", "distrust", "Café"}).code, 0);
  EXPECT_EQ(run({"networks", "known"}).code, 3) << "no home screen can tell";
  EXPECT_EQ(run({"networks", "current"}).code, 1);
  EXPECT_EQ(run({"folders", "protect", "com.example.chess"}).code, 3);
  EXPECT_EQ(run({"folders", "reset"}).code, 0);
  EXPECT_EQ(run({"folders", "list"}).output, "");
}

TEST_F(Sentrelctl, NeedsADeviceRoot) {
  unsetenv("SENTREL_ROOT");
  EXPECT_EQ(runProgram("sentrelctl", {"show"}).code, 2);
  EXPECT_EQ(runProgram("sentrelctl", {"--root"}).code, 2);
  EXPECT_EQ(runProgram("sentrelctl", {"--help"}).code, 0);
}

/// The same beside the home-screen process of the example phone, where chess lies in a folder.
class SentrelctlOnAPhone : public Sentrelctl {
 protected:
  SentrelctlOnAPhone() {
    std::filesystem::copy(std::filesystem::path(SENTREL_SOURCE) / "examples/root", root,
                          std::filesystem::copy_options::recursive);
    EXPECT_EQ(run({"create"}).code, 0);
    EXPECT_EQ(run({"set", "SentrelEnabled", "YES"}).code, 0);
    home.emplace("sentrel-springboard", std::vector<std::string>{"--root", root.string()});
    EXPECT_TRUE(home->hear().starts_with("ready "));
  }

  std::string explainChess() { return run({"explain", "folder-of", "com.example.chess"}).output; }

  std::optional<RunningProgram> home;
};

TEST_F(SentrelctlOnAPhone, ExplainTellsAStoredFolderFromAllFolders) {
  EXPECT_NE(
      run({"explain", "folder-of", "com.example.maps"}).output.find("in a folder?           no"),
      std::string::npos);
  EXPECT_NE(explainChess().find("in a folder?           yes\n"
                                "in the set?            no: the protected folders\n"
                                "all folders?           no: SentrelAllFoldersProtected\n"
                                "so it is               not protected\n"),
            std::string::npos)
      << explainChess();
  ASSERT_EQ(run({"set", "SentrelAllFoldersProtected", "YES"}).code, 0);
  EXPECT_NE(explainChess().find("in the set?            no: the protected folders\n"
                                "all folders?           yes: SentrelAllFoldersProtected\n"
                                "so it is               protected\n"),
            std::string::npos)
      << explainChess();
  ASSERT_EQ(run({"folders", "protect", "com.example.chess"}).code, 0);
  EXPECT_NE(explainChess().find("in the set?            yes: the protected folders\n"
                                "so it is               protected\n"),
            std::string::npos)
      << explainChess();
}

TEST_F(SentrelctlOnAPhone, UnprotectingAFolderThatIsNotProtectedIsAPlainNo) {
  const ProgramResult result = run({"folders", "unprotect", "com.example.chess"});
  EXPECT_EQ(result.code, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(isOneLine(result.errors)) << result.errors;
  EXPECT_NE(result.errors.find("com.example.chess is not protected"), std::string::npos);
  EXPECT_EQ(run({"folders", "protect", "com.example.chess"}).code, 0);
  EXPECT_EQ(run({"folders", "unprotect", "com.example.chess"}).code, 0);
  EXPECT_EQ(run({"folders", "list"}).output, "");
}

/// The preferences tool on a bus where this process listens.
class SentrelctlOnABus : public bus::BusTest {
 protected:
  storage::TemporaryFolder root_;
};

TEST_F(SentrelctlOnABus, TellsEveryProcessOfANewFile) {
  bus::BusNotificationCenter center(connect(), bus::BusNotificationKind::darwin);
  int told = 0;
  const Observation observation = center.addObserver(std::string(notifications::settingsChanged),
                                                     [&told](const Notification&) { ++told; });
  EXPECT_EQ(
      runProgram("sentrelctl", {"--root", root_.path(), "--bus", bus_.address(), "create"}).code,
      0);
  EXPECT_TRUE(bus::runUntil(*loop_, [&told] { return told == 1; }));
}

}  // namespace
}  // namespace sentrel
