#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <optional>

#include "device/bus/DeviceBus.h"
#include "device/bus/PrivateBus.h"
#include "programs/common/RealProcess.h"
#include "sentrel/controller/SentrelController.h"
#include "tests/programs/ProgramRun.h"
#include "tests/programs/RunningProgram.h"
#include "tests/support/BusTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel {
namespace {

/// An application's process on a device where notes is protected and sessions last until the lock.
class App : public ::testing::Test {
 protected:
  App() {
    const std::vector<std::string> commands[] = {{"create"},
                                                 {"set", "SentrelEnabled", "YES"},
                                                 {"set", "SentrelRemember", "YES"},
                                                 {"set", "SentrelRememberUntilDeviceLocked", "YES"},
                                                 {"set", "SentrelApplications", notes}};
    for (const auto& command : commands)
      EXPECT_EQ(run("sentrelctl", command).code, 0);
  }

  ProgramResult run(const char* program, std::vector<std::string> arguments,
                    const std::string& input = {}) {
    arguments.insert(arguments.begin(), {"--root", root.path()});
    return runProgram(program, arguments, input);
  }

  /// What the program answers in one call, and how it ends.
  std::string answer(std::vector<std::string> arguments) {
    const ProgramResult result = run("sentrel-app", std::move(arguments));
    return result.output + std::to_string(result.code);
  }

  const std::string notes = "com.example.notes";
  const std::string maps = "com.example.maps";
  TemporaryFolder root;
};

TEST_F(App, AsksWithoutAHomeScreenAndSaysThatThereIsNone) {
  EXPECT_EQ(answer({notes, "ask"}), "YES\n0");
  EXPECT_EQ(answer({notes, "ask", maps}), "NO\n1");
  EXPECT_EQ(answer({maps, "ask"}), "NO\n1");
  EXPECT_EQ(answer({notes, "unlock"}), "NO\n1") << "nobody keeps a session";
  EXPECT_EQ(answer({notes, "ask"}), "YES\n0");
  const std::string errors = run("sentrel-app", {notes, "ask"}).errors;
  EXPECT_NE(errors.find("no home-screen process"), std::string::npos) << errors;
}

TEST_F(App, AsksTheHomeScreenAndPrintsNothingButTheAnswer) {
  RunningProgram home("sentrel-springboard", {"--root", root.path()});
  ASSERT_TRUE(home.hear().starts_with("ready "));
  EXPECT_EQ(answer({notes, "ask"}), "YES\n0");
  EXPECT_EQ(answer({maps, "ask", notes}), "YES\n0");
  EXPECT_EQ(answer({notes, "session"}), "NO\n1");
  EXPECT_EQ(answer({notes, "unlock", "\xff"}), "NO\n1") << "no text";
  EXPECT_EQ(answer({notes, "unlock"}), "OK\n0");
  EXPECT_EQ(answer({notes, "ask"}), "NO\n1") << "the home screen keeps the session";
  EXPECT_EQ(answer({notes, "session"}), "YES\n0");
  EXPECT_EQ(answer({notes, "listed"}), "YES\n0");
  EXPECT_EQ(run("sentrel-app", {notes, "ask"}).errors, "");
  EXPECT_EQ(home.ask("lock"), "locked");
  EXPECT_EQ(answer({notes, "ask"}), "YES\n0");
}

TEST_F(App, ObeysEveryWholeLineToTheEndOfTheInput) {
  const std::string ignored = "input: a line of more than 65536 bytes is ignored\n";
  const auto indented = [](std::size_t size, const std::string& command) {
    return std::string(size - command.size(), ' ') + command;
  };
  const struct {
    const char* what;
    std::string input;
    std::string output;
    std::string complaints;
    int code = 0;
  } cases[] = {
      {"nothing", "", "", ""},
      {"no newline at the end", "ask", "YES\n", ""},
      {"carriage returns", "ask\r\n\r\nlisted \r", "YES\nYES\n", ""},
      {"nonsense", "dance\nask", "?\nYES\n", "sentrel-app: unknown command dance\n", 2},
      {"as long as a line may be", indented(65536, "ask") + "\n", "YES\n", ""},
      {"one byte too long", indented(65537, "ask") + "\nask " + maps, "NO\n", ignored},
      {"two of them", indented(70'000, "ask") + "\n" + indented(70'000, "ask") + "\nask " + maps,
       "NO\n", ignored + ignored},
      {"at the end", "ask\n" + indented(70'000, "ask"), "YES\n", ignored}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const ProgramResult result = run("sentrel-app", {notes}, c.input);
    EXPECT_EQ(result.code, c.code);
    EXPECT_EQ(result.output, c.output);
    // Behind the line that says that there is no home screen.
    EXPECT_EQ(result.errors.substr(result.errors.find('\n') + 1), c.complaints);
  }
}

TEST_F(App, EndsWithTwoAndNoAnswerWhenTheCallIsWrong) {
  const std::vector<std::string> calls[] = {{},
                                            {""},
                                            {notes, "dance"},
                                            {notes, "ask", maps, maps},
                                            {"--dance", notes, "ask"},
                                            {notes, "dark", maps},
                                            {notes, "photos", maps}};
  for (const auto& call : calls) {
    const ProgramResult result = run("sentrel-app", call);
    SCOPED_TRACE(result.errors);
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.errors, "");
  }
}

/// The same on the example phone.
class AppOnThePhone : public App {
 protected:
  AppOnThePhone() {
    std::filesystem::copy(std::filesystem::path(SENTREL_SOURCE) / "examples" / "root", root.path(),
                          std::filesystem::copy_options::recursive);
  }

  void describeHardware(const std::string& entries) {
    root.put("var/run/sentrel/device.plist", "<plist><dict>" + entries + "</dict></plist>");
  }

  void installSystem(const std::string& version) {
    root.put(
        "System/Library/CoreServices/SystemVersion.plist",
        "<plist><dict><key>ProductVersion</key><string>" + version + "</string></dict></plist>");
  }

  /// On the bus that is named, else on its own.
  void startHome(const std::string& address = {}) {
    home.reset();
    home.emplace("sentrel-springboard",
                 std::vector<std::string>{"--root", root.path(), "--bus", address});
    ASSERT_TRUE(home->hear().starts_with("ready "));
  }

  /// As another application sees it.
  void waitForPrompt(const std::string& bus = {}) {
    const std::string address = bus::findBus({root.path(), bus}).value_or("");
    const bus::ChildProcess asker([&](const bus::ChildProcess::Ready& ready) {
      const programs::RealProcess self("test", "com.example.another", root.path(), address);
      const auto end = std::chrono::steady_clock::now() + bus::patience;
      while (std::chrono::steady_clock::now() < end)
        if (SentrelController::sharedInstance().isAlertShowing()) return ready("showing");
    });
    ASSERT_EQ(asker.said(), "showing");
  }

  const std::string photos = "com.apple.mobileslideshow";
  const std::string diagnostics = "com.apple.diagnostics";
  const std::string unknown = "com.example.unknown";
  std::optional<RunningProgram> home;
};

TEST_F(AppOnThePhone, IsToldEverythingByTheHomeScreenAndNothingWithoutOne) {
  const struct {
    std::vector<std::string> question;
    std::string answer;
  } cases[] = {
      {{"name"}, "Notizen\n0"},
      {{"name", unknown}, "NONE\n1"},
      {{"application"}, "YES\n0"},
      {{"application", unknown}, "NO\n1"},
      {{"system", diagnostics}, "YES\n0"},
      {{"system"}, "NO\n1"},
      {{"hidden", diagnostics}, "YES\n0"},
      {{"hidden", photos}, "NO\n1"},
      {{"foldered", "com.example.chess"}, "YES\n0"},
      {{"foldered"}, "NO\n1"},
      {{"folder", "com.example.bank"},
       "{SentrelAllIcons = {SentrelAllIcons = ({SentrelBundleIdentifier = \"com.example.bank\"; "
       "SentrelFolderDisplayName = \"Bank\"}); SentrelFolderDisplayName = \"Geld\"}; "
       "SentrelBundleIdentifier = \"com.example.bank\"; SentrelFolderDisplayName = \"Bank\"}\n0"},
      {{"folder"}, "NONE\n1"},
      {{"networks"}, "(\"Zuhause\", \"Café Größe 1\")\n0"},
      {{"network"}, "{SSID = \"Zuhause\"}\n0"},
      {{"biometrics"}, "YES\n0"},
      {{"passcode"}, "NO\n1"},
      {{"locked"}, "YES\n0"},
      {{"dark"}, "NO\n1"},
      {{"finger"}, "YES\n0"},
      {{"suspend"}, "OK\n0"}};
  const auto answerAlone = [](const std::string& answer) {
    const bool isText =
        !answer.starts_with("YES") && !answer.starts_with("NO\n") && !answer.starts_with("OK");
    return isText ? "NONE\n1" : "NO\n1";
  };
  describeHardware(
      "<key>FaceID</key><true/><key>PasscodeSet</key><false/><key>Locked</key><true/>"
      "<key>DarkMode</key><false/><key>FingerOn</key><true/>"
      "<key>JoinedNetwork</key><string>Zuhause</string>");
  for (const bool isAlone : {true, false}) {
    if (!isAlone) startHome();
    for (const auto& c : cases) {
      std::vector<std::string> arguments = c.question;
      arguments.insert(arguments.begin(), notes);
      EXPECT_EQ(answer(arguments), isAlone ? answerAlone(c.answer) : c.answer)
          << ::testing::PrintToString(c.question) << (isAlone ? " alone" : "");
    }
  }
}

/// The ways in which the home screen's prompt for Photos, of the older systems, ends.
TEST_F(AppOnThePhone, WaitsForPhotosOnlyAsLongAsSomebodyAsks) {
  const bus::PrivateBus given;
  const struct {
    const char* what;
    void (*end)(RunningProgram& springBoard);
    const char* answer;
    int code;
    const char* session;
  } cases[] = {{"matched", [](auto& it) { it.say("sensor 3"); }, "OK", 0, "YES\n0"},
               {"locked", [](auto& it) { it.say("lock"); }, "NO", 1, "NO\n1"},
               {"killed", [](auto& it) { kill(it.process(), SIGTERM); }, "NO", 1, "NO\n1"}};
  installSystem("10.3.1");
  EXPECT_EQ(answer({photos, "photos"}), "NO\n1");
  for (const auto& c : cases) {
    for (const std::string& bus : {std::string(), given.address()}) {
      SCOPED_TRACE(c.what + (" on " + bus));
      startHome(bus);
      RunningProgram app("sentrel-app", {"--root", root.path(), "--bus", bus, photos, "photos"});
      ASSERT_NO_FATAL_FAILURE(waitForPrompt(bus));
      c.end(*home);
      EXPECT_EQ(app.hear(), c.answer);
      EXPECT_EQ(app.exitCode(), c.code);
      EXPECT_EQ(answer({"--bus", bus, photos, "session", "Fotos-Schutz"}), c.session);
    }
  }
  installSystem("11.0");
  EXPECT_EQ(answer({photos, "photos"}), "2");
}

TEST_F(AppOnThePhone, AnswersEveryLineThatWaitsBeforeItEnds) {
  const bus::PrivateBus given;
  installSystem("10.3.1");
  for (const std::string& bus : {std::string(), given.address()}) {
    startHome(bus);
    RunningProgram app("sentrel-app", {"--root", root.path(), "--bus", bus, photos});
    app.say("photos");
    EXPECT_EQ(app.ask("photos"), "NO") << "a later one took its place";
    EXPECT_EQ(app.ask("system"), "YES");
    app.endInput();
    kill(home->process(), SIGTERM);
    EXPECT_EQ(app.hear(), "NO");
    EXPECT_EQ(app.exitCode(), 0);
  }
}

TEST_F(AppOnThePhone, KnowsWhetherAFingerIsOnItsSensor) {
  describeHardware("<key>TouchID</key><true/><key>FaceID</key><false/>");
  startHome();
  for (const auto& [command, answered] : {std::pair("sensor 1", "YES\n0"), {"sensor 0", "NO\n1"}}) {
    EXPECT_EQ(home->ask(command), "sensed");
    EXPECT_EQ(answer({notes, "finger"}), answered);
  }
}

}  // namespace
}  // namespace sentrel
