#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "device/storage/PlistFiles.h"
#include "sentrel/settings/SettingsKeys.h"
#include "tests/programs/ProgramRun.h"

namespace sentrel {
namespace {

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

}  // namespace
}  // namespace sentrel
