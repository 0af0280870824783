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
                                            {"explain", "com.example.notes"}};
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
    <key>SentrelPasscode</key><string></string>
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

TEST_F(Sentrelctl, CheckTellsAPasscodeThatNobodyCanType) {
  const std::pair<const char*, bool> passcodes[] = {
      {"garbage", false},
      {"AAAA", false},
      {"AAAAAAAAAAAAAAAAAAAAAA==", false},
      {"", true},
  };
  for (const auto& [passcode, isFine] : passcodes) {
    writeRaw("<plist><dict><key>SentrelPasscode</key><string>" + std::string(passcode) +
             "</string></dict></plist>");
    EXPECT_EQ(run({"check"}).code, isFine ? 0 : 1) << passcode;
  }
  ASSERT_EQ(run({"passcode", "set"}, "2468\n").code, 0);
  EXPECT_EQ(run({"check"}).code, 0);
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

/// The program on a terminal of its own, which a person types on.
class OnATerminal {
 public:
  explicit OnATerminal(std::vector<std::string> arguments) {
    if (openpty(&master_, &terminal_, nullptr, nullptr, nullptr) != 0) std::abort();
    child_ = fork();
    if (child_ != 0) return;
    login_tty(terminal_);
    const std::string program = std::string(SENTREL_PROGRAMS) + "/sentrelctl";
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (std::string& argument : arguments)
      words.push_back(argument.data());
    words.push_back(nullptr);
    execv(program.c_str(), words.data());
    _exit(127);
  }
  ~OnATerminal() {
    close(terminal_);
    close(master_);
  }
  OnATerminal(const OnATerminal&) = delete;
  OnATerminal& operator=(const OnATerminal&) = delete;

  /// What the terminal shows from the last time on until it ends in `prompt`.
  std::string readTo(const std::string& prompt) {
    std::string shown;
    pollfd waiting{master_, POLLIN, 0};
    while (!shown.ends_with(prompt) && poll(&waiting, 1, 30'000) > 0) {
      char c = 0;
      if (read(master_, &c, 1) != 1) break;
      shown += c;
    }
    return shown;
  }

  void type(const std::string& keys) {
    EXPECT_EQ(write(master_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  bool echoes() const {
    termios mode{};
    tcgetattr(terminal_, &mode);
    return (mode.c_lflag & ECHO) != 0;
  }

  /// How the program ended, as for waitpid().
  int wait() const {
    int status = 0;
    waitpid(child_, &status, 0);
    return status;
  }

 private:
  int master_ = -1;
  int terminal_ = -1;
  pid_t child_ = -1;
};

TEST_F(Sentrelctl, TerminalShowsWhatIsTypedAgainAfterAnInterruptedPasscode) {
  ASSERT_EQ(run({"create"}).code, 0);
  OnATerminal terminal({"--root", root.string(), "passcode", "set"});
  EXPECT_EQ(terminal.readTo("passcode: "), "passcode: ");
  EXPECT_FALSE(terminal.echoes());
  terminal.type("24\x03");
  const int status = terminal.wait();
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
  EXPECT_TRUE(terminal.echoes());
}

TEST_F(Sentrelctl, TerminalHasANewPasscodeTypedTwice) {
  ASSERT_EQ(run({"create"}).code, 0);
  for (const bool isSame : {false, true}) {
    OnATerminal terminal({"--root", root.string(), "passcode", "set"});
    EXPECT_EQ(terminal.readTo("passcode: "), "passcode: ");
    terminal.type("2468\n");
    EXPECT_EQ(terminal.readTo("again: "), "\r\nagain: ");
    terminal.type(isSame ? "2468\n" : "2469\n");
    EXPECT_EQ(WEXITSTATUS(terminal.wait()), isSame ? 0 : 3);
    EXPECT_EQ(run({"passcode", "check"}, "2468\n").code, isSame ? 0 : 1);
  }
}

TEST_F(Sentrelctl, PasscodesOfEveryShapeAreAnswered) {
  ASSERT_EQ(run({"create"}).code, 0);
  EXPECT_EQ(run({"passcode", "set"}, "2468\r\n").code, 0);
  EXPECT_EQ(run({"passcode", "check"}, "2468\n").output, "YES\n");
  std::string endless(10'000, '2');
  endless.back() = '\n';
  EXPECT_EQ(run({"passcode", "check"}, endless).output, "NO\n");
  EXPECT_EQ(run({"passcode", "set"}, endless).code, 2);
  const ProgramResult result = run({"passcode", "set"}, "24\xff\n");
  EXPECT_EQ(result.code, 3);
  EXPECT_NE(result.errors.find("UTF-8"), std::string::npos) << result.errors;
  EXPECT_EQ(run({"passcode", "check"}, "2468\n").code, 0) << "the old one is as it was";
}

TEST_F(Sentrelctl, SetsKeepWhatAlwaysHoldsForThem) {
  ASSERT_EQ(run({"create"}).code, 0);
  const std::string own = "com.quorvin.sentrel.flipswitch";
  EXPECT_EQ(run({"set", "SentrelFlipSwitches", own, "com.example.switch"}).code, 0);
  EXPECT_EQ(run({"add", "SentrelFlipSwitches", own}).errors,
            "sentrelctl: " + own + " is never protected and was left out\n");
  EXPECT_EQ(run({"get", "SentrelFlipSwitches"}).output, "com.example.switch\n");
  EXPECT_EQ(run({"set", "SentrelSettingsBundles", "WLAN", "WLAN"}).code, 0);
  EXPECT_EQ(run({"drop", "SentrelSettingsBundles", "Sentrel"}).errors,
            "sentrelctl: Sentrel is always protected and was put in\n");
  EXPECT_EQ(run({"get", "SentrelSettingsBundles"}).output, "WLAN, Sentrel\n");
}

TEST_F(Sentrelctl, ReplacesNothingThatItWouldLose) {
  const std::string content = R"(<plist><dict>
    <key>SentrelApplications</key><string>com.example.notes</string>
    <key>SentrelTrustedNetworks</key><string>home</string>
    <key>SentrelFolders</key><string>Work</string>
  </dict></plist>)";
  writeRaw(content);
  const std::vector<std::string> calls[] = {{"add", "SentrelApplications", "com.example.maps"},
                                            {"drop", "SentrelApplications", "com.example.notes"},
                                            {"networks", "trust", "other"},
                                            {"networks", "distrust", "home"},
                                            {"folders", "protect", "com.example.chess"},
                                            {"folders", "unprotect", "com.example.chess"}};
  for (const auto& call : calls) {
    const ProgramResult result = run(call);
    EXPECT_EQ(result.code, 3) << call[0] << " " << call[1];
    EXPECT_NE(result.errors.find("is no list"), std::string::npos) << result.errors;
  }
  EXPECT_EQ(std::string(std::istreambuf_iterator(std::ifstream(settingsFile()).rdbuf()), {}),
            content);
}

TEST_F(Sentrelctl, ExplainSaysWhatNobodyCanTellWithoutAHomeScreen) {
  ASSERT_EQ(run({"create"}).code, 0);
  ASSERT_EQ(run({"set", "SentrelEnabled", "YES"}).code, 0);
  const std::string output = run({"explain", "folder-of", "com.example.chess"}).output;
  for (const char* question : {"trusted network?", "open session?", "in a folder?"})
    EXPECT_NE(output.find(question), std::string::npos) << output;
  EXPECT_EQ(std::ranges::count(output, ':'), 3) << "each is unknown: " << output;
  EXPECT_EQ(run({"explain", "folder", "com.example.chess"}).code, 3);
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
  EXPECT_EQ(run({"explain", "feature"}).code, 2);
  EXPECT_EQ(run({"explain", "--help"}).code, 0);
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
                               "open session?          unknown: the home screen does not answer\n"
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
  EXPECT_EQ(run({"networks", "current"}).code, 3);
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

TEST_F(SentrelctlOnAPhone, AFolderThatHasChangedSinceIsExplainedAndLetGo) {
  ASSERT_EQ(run({"folders", "protect", "com.example.chess"}).code, 0);
  ASSERT_EQ(run({"explain", "folder", "com.example.chess"}).code, 0);
  PropertyList::Array records = *stored().at("SentrelFolders").as<PropertyList::Array>();
  auto& record = *records[0].as<PropertyList::Dictionary>();
  record.at("SentrelAllIcons")
      .as<PropertyList::Array>()
      ->emplace_back(PropertyList::Dictionary{{"SentrelFolderDisplayName", "Gone"},
                                              {"SentrelBundleIdentifier", "com.example.gone"}});
  PropertyList::Dictionary file = stored();
  file.at("SentrelFolders") = records;
  storage::PlistFiles files(storage::DeviceRoot(root.string()));
  ASSERT_TRUE(files.writeDictionary(std::string(settingsFilePath), file));
  EXPECT_NE(explainChess().find("Spiele is stored with other applications"), std::string::npos)
      << explainChess();
  EXPECT_EQ(run({"explain", "folder", "com.example.chess"}).code, 1);
  record.at("SentrelFolderDisplayName") = "Games";
  file.at("SentrelFolders") = records;
  ASSERT_TRUE(files.writeDictionary(std::string(settingsFilePath), file));
  EXPECT_NE(explainChess().find("by another name, Games"), std::string::npos) << explainChess();
  EXPECT_EQ(run({"folders", "unprotect", "com.example.chess"}).code, 1);
  EXPECT_EQ(run({"folders", "forget", "Spiele"}).code, 1);
  EXPECT_EQ(run({"folders", "list"}).output,
            "Games: com.example.chess com.example.cards com.example.gone\n");
  EXPECT_EQ(run({"folders", "forget", "Games"}).code, 0);
  EXPECT_EQ(run({"folders", "list"}).output, "");
}

TEST_F(SentrelctlOnAPhone, AFolderIsExplainedWithTheSessionThatCoversIt) {
  for (const char* key : {"SentrelAllFoldersProtected", "SentrelRemember",
                          "SentrelRememberUntilDeviceLocked", "SentrelApplyUnlockSession"})
    ASSERT_EQ(run({"set", key, "YES"}).code, 0);
  EXPECT_EQ(run({"explain", "folder", "com.example.chess"}).code, 0);
  ASSERT_EQ(
      runProgram("sentrel-app", {"--root", root.string(), "com.example.notes", "unlock"}).code, 0);
  const ProgramResult covered = run({"explain", "folder", "com.example.chess"});
  EXPECT_EQ(covered.code, 1);
  EXPECT_NE(covered.output.find("open session?          yes"), std::string::npos) << covered.output;
}

TEST_F(SentrelctlOnAPhone, AFolderOfThousandsOfIconsIsProtectedLikeAnyOther) {
  home.reset();
  PropertyList::Array icons;
  for (int i = 0; i < 5'000; ++i) {
    const std::string name = "com.example.application" + std::to_string(i);
    icons.emplace_back(name);
    const auto bundle = root / "Applications" / (name + ".app");
    std::filesystem::create_directory(bundle);
    std::ofstream(bundle / "Info.plist")
        << "<plist><dict><key>CFBundleIdentifier</key><string>" << name
        << "</string><key>CFBundleDisplayName</key><string>" << name << "</string></dict></plist>";
  }
  const PropertyList::Dictionary folder{{"displayName", "Full"},
                                        {"iconLists", PropertyList::Array{std::move(icons)}}};
  ASSERT_TRUE(storage::PlistFiles(storage::DeviceRoot(root.string()))
                  .writeDictionary("/var/mobile/Library/SpringBoard/IconState.plist",
                                   {{"buttonBar", PropertyList::Array{folder}}}));
  home.emplace("sentrel-springboard", std::vector<std::string>{"--root", root.string()});
  ASSERT_TRUE(home->hear().starts_with("ready "));
  const std::string one = "com.example.application7";
  EXPECT_EQ(run({"explain", "folder-of", one}).code, 1);
  EXPECT_EQ(run({"folders", "protect", one}).code, 0);
  EXPECT_EQ(run({"explain", "folder-of", one}).code, 0);
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
