#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "device/bus/BusNotificationCenter.h"
#include "device/storage/PlistFiles.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SettingsKeys.h"
#include "tests/programs/ProgramRun.h"
#include "tests/programs/RunningProgram.h"
#include "tests/storage/BinaryListBuilder.h"
#include "tests/support/BusTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel {
namespace {

/// One line and nothing else.
bool isOneLine(const std::string& text) {
  return std::ranges::count(text, '\n') == 1 && text.ends_with('\n');
}

/// The preferences tool on a device root without a home-screen process.
class Sentrelctl : public ::testing::Test {
 protected:
  ProgramResult run(std::vector<std::string> arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), {"--root", root.path()});
    return runProgram("sentrelctl", arguments, input);
  }

  /// Makes the settings file and sets each key to its value.
  void create(const std::vector<std::pair<std::string, std::string>>& settings = {}) {
    ASSERT_EQ(run({"create"}).code, 0);
    for (const auto& [key, value] : settings)
      ASSERT_EQ(run({"set", key, value}).code, 0);
  }

  std::string settingsFile() { return root.path() + std::string(settingsFilePath); }

  PropertyList::Dictionary stored() {
    return files.readDictionary(std::string(settingsFilePath))
        .dictionary.value_or(PropertyList::Dictionary());
  }

  void writeRaw(const std::string& content) {
    std::filesystem::create_directories(std::filesystem::path(settingsFile()).parent_path());
    root.put(std::string(settingsFilePath), content);
  }

  using Call = std::vector<std::string>;

  /// Each call is refused in one line that holds `reason`.
  void expectRefusals(const std::vector<Call>& calls, const std::string& reason) {
    for (const Call& call : calls) {
      SCOPED_TRACE(::testing::PrintToString(call));
      const ProgramResult result = run(call);
      EXPECT_EQ(result.code, 3);
      EXPECT_EQ(result.output, "");
      EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
      EXPECT_TRUE(isOneLine(result.errors)) << result.errors;
    }
  }

  TemporaryFolder root;
  storage::PlistFiles files{storage::DeviceRoot(root.path())};
};

TEST_F(Sentrelctl, StoresEachKindOfValueWithItsType) {
  create();
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
  EXPECT_EQ(run({"toggle", "SentrelEnabled"}).output, "NO\n");
  EXPECT_EQ(run({"networks", "trust", "\"a\x1B"}).code, 0);
  const std::pair<Call, std::string> prints[] = {
      {{"get", "SentrelApplications"}, "b\nc\n"},
      {{"--json", "get", "SentrelApplications"}, "[\"b\", \"c\"]\n"},
      {{"get", "SentrelEnabled"}, "NO\n"},
      {{"get", "--json", "SentrelEnabled"}, "false\n"},
      {{"networks", "trusted"}, "\"a \n"},
      {{"networks", "trusted", "--json"}, "[\"\\\"a\\u001b\"]\n"},
      {{"show"},
       "SentrelApplications =\n  b\n  c\nSentrelBlurEffectType = 2\n"
       "SentrelBlurEffectsText = Ours\nSentrelEnabled = NO\nSentrelRememberTime = 2.5\n"
       "SentrelTrustedNetworks =\n  \"a \n"},
      {{"show", "--json"},
       "{\"SentrelApplications\": [\"b\", \"c\"], \"SentrelBlurEffectType\": 2, "
       "\"SentrelBlurEffectsText\": \"Ours\", \"SentrelEnabled\": false, "
       "\"SentrelRememberTime\": 2.5, \"SentrelTrustedNetworks\": [\"\\\"a\\u001b\"]}\n"}};
  for (const auto& [call, output] : prints)
    EXPECT_EQ(run(call).output, output) << ::testing::PrintToString(call);
  EXPECT_EQ(run({"remove", "SentrelBlurEffectsText"}).code, 0);
  EXPECT_EQ(stored().count("SentrelBlurEffectsText"), 0U);
  EXPECT_EQ(run({"check"}).code, 0);
}

TEST_F(Sentrelctl, EndsWithTheCodeThatSaysHowItWent) {
  create();
  const struct {
    std::vector<std::string> arguments;
    int code;
  } calls[] = {
      {{"create"}, 3},
      {{"get", "SentrelEnabled"}, 1},
      {{"get", "SentrelUnknown"}, 2},
      {{"remove", "SentrelUnknown"}, 2},
      {{"remove", "SentrelEnabled"}, 1},
      {{"drop", "SentrelNCApps", "a"}, 1},
      {{"toggle", "SentrelEnabled"}, 3},
      {{"set", "SentrelEnabled", "maybe"}, 2},
      {{"set", "SentrelEnabled"}, 2},
      {{"set", "SentrelRememberTime", "5x"}, 2},
      {{"set", "SentrelRememberTime", "-1"}, 2},
      {{"set", "SentrelRememberTime", "inf"}, 2},
      {{"set", "SentrelPasscode", "246810"}, 2},
      {{"set", "SentrelNCApps", "a", ""}, 2},
      {{"add", "SentrelNCApps", ""}, 2},
      {{"networks", "trust", ""}, 2},
      {{"set", "SentrelEnabled", "YES", "--json"}, 2},
      {{"show", "--frob"}, 2},
      {{"set", "SentrelBlurEffectType", "1.5"}, 2},
      {{"set", "SentrelUnknown", "1"}, 2},
      {{"set", "SentrelFolders", "a"}, 2},
      {{"set", "SentrelBlurEffectsText", "not \xff UTF-8"}, 3},
      {{"add", "SentrelEnabled", "a"}, 2},
      {{"get"}, 2},
      {{"passcode", "show"}, 2},
      {{"networks", "distrust", "Other"}, 1},
      {{"networks", "known"}, 3},
      {{"networks", "current"}, 3},
      {{"folders", "protect", "com.example.chess"}, 3},
      {{"explain", "feature", "nothing"}, 2},
      {{"explain", "nothing", "x"}, 2},
      {{"explain", "feature"}, 2},
      {{"frobnicate"}, 2},
      {{}, 2},
  };
  for (const auto& call : calls) {
    const ProgramResult result = run(call.arguments);
    SCOPED_TRACE(call.arguments.empty() ? "no command" : call.arguments.back());
    EXPECT_EQ(result.code, call.code);
    EXPECT_TRUE(result.output.empty()) << result.output;
    const bool isAnswer = call.code == 1;
    EXPECT_EQ(result.errors.empty(), isAnswer) << result.errors;
  }
  EXPECT_TRUE(stored().empty());
}

TEST_F(Sentrelctl, SaysSoWhenTheFileIsMissingDamagedOrWouldLoseSomethingAndLeavesItAsItIs) {
  const std::vector<Call> calls = {{"show"},
                                   {"get", "SentrelEnabled"},
                                   {"set", "SentrelEnabled", "NO"},
                                   {"folders", "list"},
                                   {"networks", "trusted"},
                                   {"explain", "com.example.notes"}};
  const std::string damaged = "<plist><dict><key>SentrelEnabled</key><true/>";
  expectRefusals(calls, settingsFile());
  writeRaw(damaged);
  expectRefusals(calls, settingsFile());
  EXPECT_EQ(run({"create"}).code, 3);
  EXPECT_EQ(run({"check"}).code, 1);
  EXPECT_EQ(root.content(std::string(settingsFilePath)), damaged);
  const std::string noLists = R"(<plist><dict>
    <key>SentrelApplications</key><string>com.example.notes</string>
    <key>SentrelTrustedNetworks</key><string>home</string>
    <key>SentrelFolders</key><string>Work</string>
  </dict></plist>)";
  writeRaw(noLists);
  expectRefusals({{"add", "SentrelApplications", "com.example.maps"},
                  {"drop", "SentrelApplications", "com.example.notes"},
                  {"networks", "trust", "other"},
                  {"networks", "distrust", "home"},
                  {"folders", "protect", "com.example.chess"},
                  {"folders", "unprotect", "com.example.chess"}},
                 "is no list");
  EXPECT_EQ(root.content(std::string(settingsFilePath)), noLists);
}

TEST_F(Sentrelctl, TellsAFileThatCannotBeWrittenFromAValueThatCannotBeToggled) {
  create({{"SentrelBlurEffectsText", std::string(5000, 'x')}, {"SentrelEnabled", "NO"}});
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit limit{2000, before.rlim_max};
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &limit);
  const ProgramResult full = run({"toggle", "SentrelEnabled"});
  const ProgramResult help = run({"--help"});
  setrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, handler);
  EXPECT_EQ(full.code, 3);
  EXPECT_EQ(help.code, 3) << "it is longer than what may be written";
  EXPECT_EQ(full.output, "");
  EXPECT_NE(full.errors.find("could not be written"), std::string::npos) << full.errors;
  EXPECT_EQ(run({"get", "SentrelEnabled"}).output, "NO\n");
  const ProgramResult absent = run({"toggle", "SentrelRemember"});
  EXPECT_NE(absent.errors.find("no YES or NO"), std::string::npos) << absent.errors;
}

TEST_F(Sentrelctl, CheckNamesEveryFault) {
  writeRaw(R"(<plist><dict>
    <key>SentrelEnabled</key><string>YES</string>
    <key>SentrelRemember</key><integer>2</integer>
    <key>SentrelRememberTime</key><real>-1</real>
    <key>SentrelBlurEffectType</key><array/>
    <key>SentrelTrustedNetworks</key><array><string></string></array>
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
       {"SentrelEnabled: holds YES", "SentrelRemember: holds 2", "SentrelRememberTime: holds -1",
        "SentrelBlurEffectType: holds", "SentrelTrustedNetworks: holds an empty name",
        "SentrelApplications: holds \"a\" more than once", "SentrelApplications: holds 1",
        "SentrelNCApps: holds a", "SentrelFolders: record 1",
        "SentrelUsePasscodeOnly: has no effect", "SentrelEnabld: is no setting"})
    EXPECT_NE(result.output.find(fault), std::string::npos) << fault << "\n" << result.output;
}

/// Its texts are shared, and take up more than a file may once each stands for itself.
TEST_F(Sentrelctl, CheckTellsOfAFileThatCannotBeWrittenAgain) {
  storage::BinaryListBuilder list;
  const auto text = list.add("\x5F\x10\x64" + std::string(100, 'x'));
  const auto key = list.add(
      "\x5D"
      "SentrelNCApps");
  const auto texts = list.addArray(std::vector<std::uint32_t>(78'000, text));
  writeRaw(list.finish(list.addDictionary({key, texts})));
  EXPECT_NE(run({"check"}).output.find("no setting can be changed"), std::string::npos);
  EXPECT_EQ(run({"set", "SentrelEnabled", "YES"}).code, 3);
}

TEST_F(Sentrelctl, KeepsWhatItDoesNotKnow) {
  writeRaw(
      "\xEF\xBB\xBF<plist><dict><key>Beyond</key><integer>18446744073709551615</integer>"
      "<key>Identifier</key><dict><key>CF$UID</key><integer>7</integer></dict></dict></plist>");
  const PropertyList::Dictionary before = stored();
  ASSERT_EQ(before.size(), 2U);
  for (const char* network : {"\x1B", "plain"}) {
    EXPECT_EQ(run({"networks", "trust", network}).code, 0);
    PropertyList::Dictionary after = stored();
    after.erase("SentrelTrustedNetworks");
    EXPECT_EQ(PropertyList(after), PropertyList(before));
  }
  EXPECT_EQ(run({"get", "Beyond"}).output, "18446744073709551615\n");
  EXPECT_EQ(run({"remove", "Beyond"}).code, 0);
}

TEST_F(Sentrelctl, PasscodeComesFromStandardInputAndIsStoredEnciphered) {
  create();
  EXPECT_EQ(run({"passcode", "check"}, "246810\n").code, 1);
  EXPECT_EQ(run({"passcode", "set"}, "246810\r\n").code, 0);
  EXPECT_EQ(run({"get", "SentrelPasscode"}).output.size(), 25U);
  EXPECT_EQ(run({"check"}).code, 0);
  const std::string endless = std::string(10'000, '2') + "\n";
  for (const std::string& wrong :
       {std::string(), endless, std::string("2468\n"), std::string("2468101\n"),
        std::string("24681a\n"), std::string("24681 \n"), std::string("24681\xff\n")}) {
    const ProgramResult result = run({"passcode", "set"}, wrong);
    EXPECT_EQ(result.code, 2) << wrong;
    EXPECT_NE(result.errors.find("exactly 6 digits"), std::string::npos) << result.errors;
    EXPECT_TRUE(isOneLine(result.errors)) << result.errors;
  }
  EXPECT_EQ(run({"passcode", "check"}, "246810\n").output, "YES\n") << "it is as it was";
  EXPECT_EQ(run({"passcode", "check"}, "2468100\n").output, "NO\n");
  EXPECT_EQ(run({"passcode", "check"}, endless).output, "NO\n");
  EXPECT_EQ(run({"passcode", "remove"}).code, 0);
  EXPECT_EQ(run({"get", "SentrelPasscode"}).code, 1);
  // What cannot be deciphered, and what deciphers to two digits.
  for (const char* unusable : {"garbage", "wWi8cPzEYyMJ6bO6f9GJhQ=="}) {
    writeRaw("<plist><dict><key>SentrelPasscode</key><string>" + std::string(unusable) +
             "</string></dict></plist>");
    EXPECT_EQ(run({"check"}).code, 1) << unusable;
  }
}

TEST_F(Sentrelctl, PasscodeThatCannotBeEncipheredIsNotSaidToBeStored) {
  create();
  // Leaves the cryptographic library without any cipher.
  const std::string configuration = root.path("openssl.cnf");
  root.put("openssl.cnf",
           "openssl_conf = start\n[start]\nproviders = list\n"
           "[list]\nnull = none\n[none]\nactivate = 1\n");
  const bus::Environment environment("OPENSSL_CONF", configuration);
  const ProgramResult result = run({"passcode", "set"}, "135790\n");
  EXPECT_EQ(result.code, 3);
  EXPECT_NE(result.errors.find("is as it was"), std::string::npos) << result.errors;
  EXPECT_EQ(run({"get", "SentrelPasscode"}).code, 1);
}

/// The program on a terminal of its own, which a person types on.
class OnATerminal {
 public:
  explicit OnATerminal(std::vector<std::string> arguments)
      : child_(forkpty(&terminal_, nullptr, nullptr, nullptr)) {
    if (child_ != 0) return;
    const std::string program = std::string(SENTREL_PROGRAMS) + "/sentrelctl";
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (std::string& argument : arguments)
      words.push_back(argument.data());
    words.push_back(nullptr);
    execv(program.c_str(), words.data());
    _exit(127);
  }
  ~OnATerminal() { close(terminal_); }
  OnATerminal(const OnATerminal&) = delete;
  OnATerminal& operator=(const OnATerminal&) = delete;

  /// What the terminal shows from the last time on until it ends in `prompt`.
  std::string readTo(const std::string& prompt) {
    std::string shown;
    pollfd waiting{terminal_, POLLIN, 0};
    while (!shown.ends_with(prompt) && poll(&waiting, 1, 30'000) > 0) {
      char c = 0;
      if (read(terminal_, &c, 1) != 1) break;
      shown += c;
    }
    return shown;
  }

  void type(const std::string& keys) {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
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
  int terminal_ = -1;
  pid_t child_;
};

TEST_F(Sentrelctl, TerminalShowsWhatIsTypedAgainAfterAnInterruptedPasscode) {
  create();
  OnATerminal terminal({"--root", root.path(), "passcode", "set"});
  EXPECT_EQ(terminal.readTo("passcode: "), "passcode: ");
  EXPECT_FALSE(terminal.echoes());
  terminal.type("24\x03");
  const int status = terminal.wait();
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
  EXPECT_TRUE(terminal.echoes());
}

TEST_F(Sentrelctl, TerminalHasANewPasscodeTypedTwice) {
  create();
  for (const bool isSame : {false, true}) {
    OnATerminal terminal({"--root", root.path(), "passcode", "set"});
    EXPECT_EQ(terminal.readTo("passcode: "), "passcode: ");
    terminal.type("246810\n");
    EXPECT_EQ(terminal.readTo("again: "), "\r\nagain: ");
    terminal.type(isSame ? "246810\n" : "246811\n");
    EXPECT_EQ(WEXITSTATUS(terminal.wait()), isSame ? 0 : 3);
    EXPECT_EQ(run({"passcode", "check"}, "246810\n").code, isSame ? 0 : 1);
  }
}

TEST_F(Sentrelctl, SaysWhatASetKeepsOutOrIn) {
  create({{"SentrelSettingsBundles", "WLAN"}});
  const std::string own = "com.quorvin.sentrel.flipswitch";
  EXPECT_EQ(run({"add", "SentrelFlipSwitches", own}).errors,
            "sentrelctl: " + own + " is never protected and was left out\n");
  EXPECT_EQ(run({"get", "SentrelFlipSwitches"}).output, "");
  EXPECT_EQ(run({"drop", "SentrelSettingsBundles", "Sentrel"}).errors,
            "sentrelctl: Sentrel is always protected and was put in\n");
  EXPECT_EQ(run({"get", "SentrelSettingsBundles"}).output, "WLAN\nSentrel\n");
}

TEST_F(Sentrelctl, ExplainsEachStepInItsOrder) {
  create({{"SentrelApplications", "com.apple.mobileslideshow"},
          {"SentrelCallerIDRemoveFromLockScreen", "YES"}});
  const std::string unknown = "unknown: the home screen does not answer\n";
  const std::string on =
      "enabled?               yes\n"
      "trusted network?       " +
      unknown;
  const std::string session = "open session?          " + unknown;
  const struct {
    std::vector<std::string> item;
    int code;
    std::string steps;
  } cases[] = {
      {{"com.apple.mobileslideshow"},
       0,
       session + "in the set?            yes: the protected applications\n"},
      {{"com.example.notes"}, 1, "in the set?            no: the protected applications\n"},
      {{"service", "COM.APPLE.mobileslideshow.share"}, 0, "in the set?            yes"},
      {{"switch", "com.example.switch"}, 1, "extension installed?   no\n" + session},
      {{"feature", "photos"},
       0,
       "switched on?           no: SentrelPhotosProtected\n"
       "in the set?            yes: the protected applications\n" +
           session},
      {{"feature", "caller-id-lock-screen"},
       1,
       "open session?          does not count here\n"
       "caller ID hidden?      no: SentrelCallerIDOn\n"
       "switched on?           yes: SentrelCallerIDRemoveFromLockScreen\n"},
      {{"folder-of", "com.example.chess"}, 1, session + "in a folder?           " + unknown},
  };
  const ProgramResult off = run({"explain", "com.apple.mobileslideshow"});
  EXPECT_EQ(off.code, 1);
  EXPECT_EQ(off.output.find("enabled?               no\n"), 0U) << off.output;
  EXPECT_EQ(run({"explain", "pane", "Sentrel"}).code, 0) << "whatever else";
  ASSERT_EQ(run({"set", "SentrelEnabled", "YES"}).code, 0);
  for (const auto& c : cases) {
    std::vector<std::string> arguments = c.item;
    arguments.insert(arguments.begin(), "explain");
    const ProgramResult result = run(arguments);
    EXPECT_EQ(result.code, c.code) << result.output;
    EXPECT_EQ(result.output.find(on), 0U) << result.output;
    EXPECT_NE(result.output.find(c.steps), std::string::npos) << result.output;
    const std::string end = c.code == 0 ? "so it is               protected\n"
                                        : "so it is               not protected\n";
    EXPECT_TRUE(result.output.ends_with(end)) << result.output;
  }
}

TEST_F(Sentrelctl, NetworksAndFoldersAreListedAndChanged) {
  create();
  EXPECT_EQ(run({"networks", "trust", "Café"}).code, 0);
  EXPECT_EQ(run({"networks", "trusted"}).output, "Café\n");
  EXPECT_EQ(run({"networks", "distrust", "Café"}).code, 0);
  EXPECT_EQ(run({"networks", "trusted"}).output, "");
  EXPECT_EQ(run({"folders", "reset"}).code, 0);
  EXPECT_EQ(run({"folders", "list"}).output, "");
}

TEST_F(Sentrelctl, NeedsADeviceRoot) {
  unsetenv("SENTREL_ROOT");
  create();
  const std::pair<Call, int> calls[] = {{{"show"}, 2},
                                        {{"--root"}, 2},
                                        {{"show", "--root", root.path()}, 0},
                                        {{"show", "--root=" + root.path()}, 0},
                                        {{"check"}, 2},
                                        {{"check", settingsFile()}, 0},
                                        {{"--version"}, 0},
                                        {{"explain", "-h"}, 0},
                                        {{"--", "-h"}, 2}};
  for (const auto& [call, code] : calls)
    EXPECT_EQ(runProgram("sentrelctl", call).code, code) << ::testing::PrintToString(call);
}

TEST_F(Sentrelctl, HelpListsWhatThereIsToName) {
  const std::string help = run({"--help"}).output;
  for (const SettingsKey& key : allSettingsKeys())
    EXPECT_NE(help.find("\n  " + std::string(key.name) + " "), std::string::npos) << key.name;
  for (const char* name : {"\n  folder-of ", "\n  control ", " caller-id-attention"})
    EXPECT_NE(help.find(name), std::string::npos) << name;
}

/// The same beside the home-screen process of the example phone, where chess lies in a folder.
class SentrelctlOnAPhone : public Sentrelctl {
 protected:
  SentrelctlOnAPhone() {
    std::filesystem::copy(std::filesystem::path(SENTREL_SOURCE) / "examples/root", root.path(),
                          std::filesystem::copy_options::recursive);
    create({{"SentrelEnabled", "YES"}});
    home.emplace("sentrel-springboard", std::vector<std::string>{"--root", root.path()});
    EXPECT_TRUE(home->hear().starts_with("ready "));
  }

  void expectFolderOfChess(const std::string& steps) {
    const std::string output = run({"explain", "folder-of", "com.example.chess"}).output;
    EXPECT_NE(output.find(steps), std::string::npos) << output;
  }

  std::optional<RunningProgram> home;
};

TEST_F(SentrelctlOnAPhone, ExplainTellsAStoredFolderFromAllFolders) {
  expectFolderOfChess(
      "in a folder?           yes\n"
      "in the set?            no: the protected folders\n"
      "all folders?           no: SentrelAllFoldersProtected\n"
      "so it is               not protected\n");
  const ProgramResult no = run({"folders", "unprotect", "com.example.chess"});
  EXPECT_EQ(no.code, 1);
  EXPECT_EQ(no.errors, "sentrelctl: the folder of com.example.chess is not protected\n");
  ASSERT_EQ(run({"set", "SentrelAllFoldersProtected", "YES"}).code, 0);
  expectFolderOfChess(
      "in the set?            no: the protected folders\n"
      "all folders?           yes: SentrelAllFoldersProtected\n"
      "so it is               protected\n");
  ASSERT_EQ(run({"folders", "protect", "com.example.chess"}).code, 0);
  expectFolderOfChess(
      "in the set?            yes: the protected folders\n"
      "so it is               protected\n");
  EXPECT_EQ(run({"folders", "unprotect", "com.example.chess"}).code, 0);
  EXPECT_EQ(run({"folders", "list"}).output, "");
}

TEST_F(SentrelctlOnAPhone, AFolderThatHasChangedSinceIsExplainedAndLetGo) {
  ASSERT_EQ(run({"folders", "protect", "com.example.chess"}).code, 0);
  ASSERT_EQ(run({"explain", "folder", "com.example.chess"}).code, 0);
  PropertyList::Dictionary file = stored();
  auto& record =
      *file.at("SentrelFolders").as<PropertyList::Array>()->front().as<PropertyList::Dictionary>();
  record.at("SentrelAllIcons")
      .as<PropertyList::Array>()
      ->emplace_back(PropertyList::Dictionary{{"SentrelFolderDisplayName", "Gone"},
                                              {"SentrelBundleIdentifier", "com.example.gone"}});
  ASSERT_TRUE(files.writeDictionary(std::string(settingsFilePath), file));
  expectFolderOfChess("Spiele is stored with other applications");
  EXPECT_EQ(run({"explain", "folder", "com.example.chess"}).code, 1);
  record.at("SentrelFolderDisplayName") = "Games";
  ASSERT_TRUE(files.writeDictionary(std::string(settingsFilePath), file));
  expectFolderOfChess("by another name, Games");
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
  ASSERT_EQ(runProgram("sentrel-app", {"--root", root.path(), "com.example.notes", "unlock"}).code,
            0);
  const ProgramResult covered = run({"explain", "folder", "com.example.chess"});
  EXPECT_EQ(covered.code, 1);
  EXPECT_NE(covered.output.find("open session?          yes"), std::string::npos) << covered.output;
}

/// The preferences tool on a bus where this process listens.
class SentrelctlOnABus : public bus::BusTest {};

TEST_F(SentrelctlOnABus, TellsEveryProcessOfANewFile) {
  const TemporaryFolder root;
  bus::BusNotificationCenter center(connect(), bus::BusNotificationKind::darwin);
  int told = 0;
  const Observation observation = center.addObserver(std::string(notifications::settingsChanged),
                                                     [&told](const Notification&) { ++told; });
  EXPECT_EQ(
      runProgram("sentrelctl", {"--root", root.path(), "--bus", bus_.address(), "create"}).code, 0);
  EXPECT_TRUE(bus::runUntil(*loop_, [&told] { return told == 1; }));
}

TEST_F(Sentrelctl, SaysThatItCouldNotTellTheOthers) {
  create();
  const Call silent{"--bus", "unix:path=" + root.path("nobody")};
  const auto at = [&](Call call) {
    call.insert(call.begin(), silent.begin(), silent.end());
    return run(call);
  };
  const auto added = at({"add", "SentrelApplications", "com.example.notes"});
  EXPECT_EQ(added.code, 3);
  EXPECT_THAT(added.errors, testing::HasSubstr("the change is made"));
  EXPECT_EQ(stored().at("SentrelApplications"),
            PropertyList(PropertyList::Array{"com.example.notes"}));
  EXPECT_EQ(at({"get", "SentrelApplications"}).code, 0) << "nothing to tell";
}

TEST_F(Sentrelctl, ChangesNothingWhileAnotherWriterDoesNotLetGo) {
  create();
  const auto held = files.lock(std::string(settingsFilePath));
  const auto refused = run({"set", "SentrelEnabled", "YES"});
  EXPECT_EQ(refused.code, 3);
  EXPECT_TRUE(isOneLine(refused.errors)) << refused.errors;
  EXPECT_EQ(stored(), PropertyList::Dictionary());
}

}  // namespace
}  // namespace sentrel
