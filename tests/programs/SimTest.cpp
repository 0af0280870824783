#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "sentrel/settings/SettingsKeys.h"
#include "tests/programs/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::filesystem::path source = SENTREL_SOURCE;

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file).rdbuf();
  return content.str();
}

ProgramResult runSim(std::vector<std::string> arguments, const std::string& input = {}) {
  arguments.insert(arguments.begin(), {"--root", (source / "examples/root").string()});
  return runProgram("sentrel-sim", arguments, input);
}

// --- The scenarios -------------------------------------------------------------------------------

std::vector<std::filesystem::path> scenarios() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(source / "examples/scripts"))
    if (entry.path().extension() == ".sim") files.push_back(entry.path());
  std::ranges::sort(files);
  return files;
}

class Scenario : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Scenario, MeetsEveryExpectation) {
  const TemporaryFolder pictures;
  const ProgramResult result = runSim({GetParam().string(), pictures.path()});
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_EQ(result.errors, "");
}

INSTANTIATE_TEST_SUITE_P(Examples, Scenario, testing::ValuesIn(scenarios()), [](const auto& file) {
  std::string name = file.param.stem().string();
  std::ranges::replace(name, '-', '_');
  return name;
});

TEST(Screens, SpeakTheLanguageOfTheRoot) {
  const TemporaryFolder folder;
  std::filesystem::copy(source / "examples/root", folder.path("en"),
                        std::filesystem::copy_options::recursive);
  folder.put(
      "en/var/mobile/Library/Preferences/.GlobalPreferences.plist",
      "<plist><dict><key>AppleLanguages</key><array><string>en</string></array></dict></plist>");
  folder.put("day.sim", "screenshot home.png\nlock\nscreenshot lock.png\n");
  for (const std::string& root : {(source / "examples/root").string(), folder.path("en")}) {
    const std::string pictures = folder.path(root.substr(root.size() - 2));
    std::filesystem::create_directories(pictures);
    EXPECT_EQ(runProgram("sentrel-sim", {"--root", root, folder.path("day.sim"), pictures}).code,
              0);
  }
  for (const char* picture : {"/home.png", "/lock.png"})
    EXPECT_NE(folder.content(std::string("ot") + picture),
              folder.content(std::string("en") + picture));
}

// --- The language --------------------------------------------------------------------------------

class ScriptLanguage : public testing::Test {
 protected:
  ProgramResult run(const std::string& script) {
    std::ofstream(file) << script;
    return runSim({file});
  }

  TemporaryFolder folder;
  std::string file = folder.path("day.sim");
};

TEST_F(ScriptLanguage, AWrongLineIsNamedBeforeAnythingRuns) {
  const struct {
    const char* line;
    const char* complaint;
  } cases[] = {
      {"dance", "unknown command \"dance\""},
      {"launch", "expected: launch BUNDLE-ID"},
      {"launch a b", "expected: launch BUNDLE-ID"},
      {"launch com.example.missing", "no application com.example.missing is installed"},
      {"inside com.example.notes dance", "\"dance\" is no request"},
      {"open-folder Nirgends", "no folder is called \"Nirgends\""},
      {"open-pane WLAN", "\"WLAN\" is not NAME/IDENTIFIER"},
      {"finger sideways", "\"sideways\" is none of: match, no-match, too-wet, lift"},
      {"event many", "\"many\" is no whole number"},
      {"wait nan", "\"nan\" is no number of seconds"},
      {"system fourteen", "\"fourteen\" is no version"},
      {"watch dance", "unknown command \"dance\""},
      {"set SentrelEnabled maybe", "\"maybe\" is neither YES nor NO"},
      {"protect dream x", "\"dream\" is none of: app"},
      {"set SentrelRememberTime -1", "\"-1\" is not a number of minutes"},
      {"set SentrelPasscode 246810", "use passcode set"},
      {"protect app \"\"", "an empty name"},
      {"passcode set", "expected: passcode set DIGITS, or remove"},
      {"passcode set 2468", "a passcode is exactly 6 digits"},
      {"tap \"Cancel", "the quotes do not end"},
      {"expect", "expected: expect [no] WHAT..."},
      {"expect luck", "nobody can expect \"luck\""},
      {"expect mode sleep", "\"sleep\" is none of: glyph, passcode"},
      {"expect outcome won", "\"won\" is none of: allowed"},
      {"expect outcome denied of 0", "requests are counted from 1"},
      {"expect outcome denied 2", "expected: outcome OUTCOME [of NUMBER]"},
      {"expect posted X many", "\"many\" is no count"},
  };
  for (const auto& [line, complaint] : cases) {
    const ProgramResult result = run("# a day\r\nlock\r\n" + std::string(line) + "\r\nrun\r\n");
    EXPECT_EQ(result.code, 2) << line;
    EXPECT_THAT(result.errors, StartsWith(file + ":3: ")) << line;
    EXPECT_THAT(result.errors, HasSubstr(complaint)) << line;
    EXPECT_THAT(result.errors, EndsWith("\n" + file + ":4: unknown command \"run\"\n")) << line;
    EXPECT_EQ(result.output, "") << line;
  }
}

TEST_F(ScriptLanguage, WhatCannotBeDoneEndsTheScript) {
  const struct {
    const char* line;
    const char* complaint;
  } cases[] = {
      {"tap Abbrechen", "no prompt is on the screen"},
      {"inside com.example.notes photos", "com.example.notes does not run"},
      {"open-pane WLAN/wifi", "com.apple.Preferences does not run"},
      {"item A B\nwait 1\ntap Nirgends", "no button \"Nirgends\" can be tapped; there are: \"Abb"},
      {"item A B\nwait 1\ntype 1", "not every character was taken"},
      {"sensor face\nfinger match", "this phone has no sensor for fingers"},
      {"sensor touch\nface match", "this phone has no sensor for faces"},
  };
  for (const auto& [line, complaint] : cases) {
    const ProgramResult result = run(std::string(line) + "\nlock\n");
    EXPECT_EQ(result.code, 1) << line;
    EXPECT_THAT(result.errors, HasSubstr(complaint)) << line;
    EXPECT_THAT(result.output, Not(HasSubstr("> lock"))) << line;
  }
}

TEST_F(ScriptLanguage, AFailedExpectationTellsLineExpectedAndSeen) {
  const ProgramResult result =
      run("set SentrelEnabled YES\n"
          "protect app com.example.notes\n"
          "launch com.example.notes\n"
          "wait 1\n"
          "expect  prompt \"Anderes \\\"Ding\\\"\"  # not so\n"
          "expect no sensor held\n"
          "lock\n");
  EXPECT_EQ(result.code, 1);
  EXPECT_EQ(result.errors,
            file + ":5: expected prompt \"Anderes \"Ding\"\", seen the prompt \"Notizen\"\n" +
                file + ":6: expected no sensor held, seen held\n");
  EXPECT_THAT(result.output, HasSubstr("1.000  request 1 is denied"));
}

/// In a state in which none of them holds, each fails, and the opposite of each is met.
TEST_F(ScriptLanguage, EveryExpectationCanFail) {
  const std::string state =
      "set SentrelEnabled YES\nprotect app com.example.notes\npasscode set 246810\n"
      "launch com.example.notes\nwait 1\n";
  const std::vector<std::string> wrong = {"prompt Post",
                                          "prompts 2",
                                          "message Nichts",
                                          "mode passcode",
                                          "button Nirgends",
                                          "glyph 3",
                                          "typed 1",
                                          "outcome allowed",
                                          "outcome denied",
                                          "outcome authenticated of 1",
                                          "outcome pending of 2",
                                          "posted AuthenticationSuccess",
                                          "posted SettingsChanged 4",
                                          "logged eventCode",
                                          "did reboot",
                                          "vibrated",
                                          "watch-taps 1",
                                          "locked",
                                          "front com.example.notes",
                                          "session com.example.notes open",
                                          "sensor free"};
  std::string fails = state;
  std::string passes = state;
  for (const std::string& line : wrong) {
    fails += "expect " + line + "\n";
    passes += "expect no " + line + "\n";
  }
  const ProgramResult failed = run(fails + "lock\nexpect unlocked\n");
  EXPECT_EQ(failed.code, 1);
  EXPECT_EQ(std::ranges::count(failed.errors, '\n'), std::ssize(wrong) + 1) << failed.errors;
  const ProgramResult passed = run(passes);
  EXPECT_EQ(passed.code, 0) << passed.errors;
}

TEST_F(ScriptLanguage, StandardInputIsObeyedLineByLine) {
  const ProgramResult result = runSim({}, "dance\nlock\nexpect unlocked\n");
  EXPECT_EQ(result.code, 2);
  EXPECT_EQ(result.errors,
            "input:1: unknown command \"dance\"\ninput:3: expected unlocked, seen locked\n");
  EXPECT_THAT(result.output, HasSubstr("0.000  locked"));
}

TEST_F(ScriptLanguage, TheDeviceRootIsOnlyRead) {
  EXPECT_EQ(run("set SentrelEnabled YES\nprotect app com.example.notes\n").code, 0);
  EXPECT_FALSE(std::filesystem::exists(source / "examples/root" /
                                       std::filesystem::path(settingsFilePath).relative_path()));
}

TEST_F(ScriptLanguage, AScreenshotIsAPicture) {
  std::ofstream(file) << "screenshot home.png\n";
  const std::string pictures = folder.path("new/pictures");
  EXPECT_EQ(runSim({file, pictures}).code, 0);
  EXPECT_EQ(contentOf(pictures + "/home.png").substr(1, 3), "PNG");
  EXPECT_EQ(runSim({file}).code, 0);
  EXPECT_FALSE(std::filesystem::exists("home.png")) << "left behind where nobody named a folder";
}

TEST_F(ScriptLanguage, IsDocumentedAsItIs) {
  const std::string help = runSim({"--help"}).output;
  const auto begin = help.find("requests:\n");
  const auto end = help.find("\noptions:\n");
  ASSERT_LT(begin, end);
  ASSERT_NE(end, std::string::npos);
  EXPECT_THAT(contentOf(source / "docs/scripts.md"), HasSubstr(help.substr(begin, end - begin)));
}

}  // namespace
}  // namespace sentrel
