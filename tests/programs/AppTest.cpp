#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <optional>

#include "device/bus/DeviceBus.h"
#include "host/SpringBoardResponder.h"
#include "programs/common/RealProcess.h"
#include "sentrel/bridge/MessageCoding.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "tests/programs/ProgramRun.h"
#include "tests/programs/RunningProgram.h"
#include "tests/storage/TemporaryFolder.h"
#include "tests/support/BusTesting.h"

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
  storage::TemporaryFolder root;
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
  EXPECT_EQ(answer({notes, "unlock"}), "OK\n0");
  EXPECT_EQ(answer({notes, "ask"}), "NO\n1") << "the home screen keeps the session";
  EXPECT_EQ(answer({notes, "session"}), "YES\n0");
  EXPECT_EQ(answer({notes, "listed"}), "YES\n0");
  EXPECT_EQ(run("sentrel-app", {notes, "ask"}).errors, "");
  EXPECT_EQ(home.ask("lock"), "locked");
  EXPECT_EQ(answer({notes, "ask"}), "YES\n0");
}

TEST_F(App, SaysThatAnUnlockIsNotKept) {
  RunningProgram home("sentrel-springboard", {"--root", root.path()});
  ASSERT_TRUE(home.hear().starts_with("ready "));
  EXPECT_EQ(answer({notes, "unlock", "\xff"}), "NO\n1") << "no text";
  EXPECT_EQ(run("sentrelctl", {"set", "SentrelRemember", "NO"}).code, 0);
  EXPECT_EQ(answer({notes, "unlock"}), "NO\n1") << "there are no sessions";
  EXPECT_EQ(run("sentrelctl", {"set", "SentrelRemember", "YES"}).code, 0);
  EXPECT_EQ(answer({notes, "session"}), "NO\n1");
  EXPECT_EQ(answer({notes, "unlock"}), "OK\n0");
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
  } cases[] = {
      {"nothing", "", "", ""},
      {"no newline at the end", "ask", "YES\n", ""},
      {"nor behind another line", "ask\nask " + maps, "YES\nNO\n", ""},
      {"as long as a line may be", indented(65536, "ask") + "\n", "YES\n", ""},
      {"one byte too long", indented(65537, "ask") + "\nask " + maps, "NO\n", ignored},
      {"a command behind the limit", indented(65539, "ask") + "\nask " + maps, "NO\n", ignored},
      {"long enough for three", indented(200'000, "ask") + "\nask " + maps, "NO\n", ignored},
      {"two of them", indented(70'000, "ask") + "\n" + indented(70'000, "ask") + "\nask " + maps,
       "NO\n", ignored + ignored},
      {"at the end", "ask\n" + indented(70'000, "ask"), "YES\n", ignored},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const ProgramResult result = run("sentrel-app", {notes}, c.input);
    EXPECT_EQ(result.code, 0);
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

  void startHome() {
    home.reset();
    home.emplace("sentrel-springboard", std::vector<std::string>{"--root", root.path()});
    ASSERT_TRUE(home->hear().starts_with("ready "));
  }

  /// Runs `body` in the process of another application, and returns what it says.
  std::string inAnotherApp(const std::function<std::string()>& body) {
    const std::string address = bus::findBus({root.path(), ""}).value_or("");
    return bus::ChildProcess([&](const bus::ChildProcess::Ready& ready) {
             programs::RealProcess self("test", "com.example.another", root.path(), address);
             const std::string text = body();
             self.connection().catchUp();
             ready(text);
           })
        .said();
  }

  void waitForPrompt() {
    ASSERT_EQ(inAnotherApp([] {
                const auto end = std::chrono::steady_clock::now() + bus::patience;
                while (std::chrono::steady_clock::now() < end)
                  if (SentrelController::sharedInstance().isAlertShowing()) return "showing";
                return "nothing";
              }),
              "showing");
  }

  const std::string chess = "com.example.chess";
  const std::string photos = "com.apple.mobileslideshow";
  const std::string diagnostics = "com.apple.diagnostics";
  const std::string unknown = "com.example.unknown";
  std::optional<RunningProgram> home;
};

TEST_F(AppOnThePhone, IsToldEverythingByTheHomeScreenAndNothingWithoutOne) {
  constexpr const char* bankFolder =
      "{SentrelAllIcons = {SentrelAllIcons = ({SentrelBundleIdentifier = \"com.example.bank\"; "
      "SentrelFolderDisplayName = \"Bank\"}); SentrelFolderDisplayName = \"Geld\"}; "
      "SentrelBundleIdentifier = \"com.example.bank\"; SentrelFolderDisplayName = \"Bank\"}\n0";
  constexpr const char* knownNetworks = "(\"Zuhause\", \"Café Größe 1\")\n0";
  const struct {
    std::vector<std::string> question;
    const char* on;     ///< where every flag of the hardware is set
    const char* off;    ///< where none is
    const char* alone;  ///< without a home screen
  } cases[] = {
      {{"name"}, "Notizen\n0", "Notizen\n0", "NONE\n1"},
      {{"name", unknown}, "NONE\n1", "NONE\n1", "NONE\n1"},
      {{"application"}, "YES\n0", "YES\n0", "NO\n1"},
      {{"application", unknown}, "NO\n1", "NO\n1", "NO\n1"},
      {{"system", diagnostics}, "YES\n0", "YES\n0", "NO\n1"},
      {{"system"}, "NO\n1", "NO\n1", "NO\n1"},
      {{"system", unknown}, "NO\n1", "NO\n1", "NO\n1"},
      {{"hidden", diagnostics}, "YES\n0", "YES\n0", "NO\n1"},
      {{"hidden"}, "NO\n1", "NO\n1", "NO\n1"},
      {{"hidden", unknown}, "NO\n1", "NO\n1", "NO\n1"},
      {{"foldered", chess}, "YES\n0", "YES\n0", "NO\n1"},
      {{"foldered"}, "NO\n1", "NO\n1", "NO\n1"},
      {{"foldered", unknown}, "YES\n0", "YES\n0", "NO\n1"},
      {{"folder", "com.example.bank"}, bankFolder, bankFolder, "NONE\n1"},
      {{"folder"}, "NONE\n1", "NONE\n1", "NONE\n1"},
      {{"folder", unknown}, "NONE\n1", "NONE\n1", "NONE\n1"},
      {{"networks"}, knownNetworks, knownNetworks, "NONE\n1"},
      {{"network"}, "{SSID = \"Zuhause\"}\n0", "NONE\n1", "NONE\n1"},
      {{"biometrics"}, "YES\n0", "NO\n1", "NO\n1"},
      {{"passcode"}, "YES\n0", "NO\n1", "NO\n1"},
      {{"locked"}, "YES\n0", "NO\n1", "NO\n1"},
      {{"dark"}, "YES\n0", "NO\n1", "NO\n1"},
      {{"finger"}, "YES\n0", "NO\n1", "NO\n1"},
      {{"suspend"}, "OK\n0", "OK\n0", "NO\n1"},
  };
  const auto ask = [&](const char* situation, auto expected) {
    for (const auto& c : cases) {
      std::vector<std::string> arguments = c.question;
      arguments.insert(arguments.begin(), notes);
      EXPECT_EQ(answer(arguments), c.*expected)
          << situation << ": " << ::testing::PrintToString(c.question);
    }
  };
  using Case = std::remove_cvref_t<decltype(cases[0])>;
  ask("alone", &Case::alone);
  describeHardware(
      "<key>FaceID</key><true/><key>PasscodeSet</key><true/><key>Locked</key><true/>"
      "<key>DarkMode</key><true/><key>FingerOn</key><true/>"
      "<key>JoinedNetwork</key><string>Zuhause</string>");
  startHome();
  ask("on", &Case::on);
  describeHardware("<key>FaceID</key><false/><key>PasscodeSet</key><false/>");
  startHome();
  ask("off", &Case::off);
}

TEST_F(AppOnThePhone, SendsTheApplicationAtTheFrontAway) {
  const bus::PrivateBus bus;
  describeHardware("<key>FrontApplication</key><string>com.example.notes</string>");
  // Called upon for a name, it tells what is at the front.
  const bus::ChildProcess teller([&](const bus::ChildProcess::Ready& ready) {
    programs::RealProcess self("test", std::string(springBoardBundleIdentifier), root.path(),
                               bus.address());
    const host::SpringBoardResponder responder({});
    self.connection().serve(
        bus::springBoardService, std::string(messageChannelName),
        [&](const std::string& message, const UserInfo& userInfo) {
          if (message != messages::AppName::name) return responder(message, userInfo);
          return encodeMessageData(self.device().applications().front().value_or("home screen"));
        });
    ready("ready");
    self.loop().run();
  });
  EXPECT_EQ(answer({"--bus", bus.address(), maps, "name"}), "com.example.notes\n0");
  EXPECT_EQ(answer({"--bus", bus.address(), maps, "suspend"}), "OK\n0");
  EXPECT_EQ(answer({"--bus", bus.address(), maps, "name"}), "home screen\n0");
}

TEST_F(AppOnThePhone, HasTheHomeScreenAskForPhotosOnOlderSystems) {
  const struct {
    const char* version;
    const char* alerts;
    const char* event;
    const char* answer;
    int code;
    const char* session;
  } cases[] = {
      {"10.3.1", "", "sensor 3", "OK", 0, "YES\n0"},
      {"10.3.1", "", "lock", "NO", 1, "NO\n1"},
      {"10.3.1", "<key>LegacyAlerts</key><true/>", "sensor 3", "OK", 0, "YES\n0"},
      {"10.3.1", "<key>LegacyAlerts</key><true/>", "lock", "NO", 1, "NO\n1"},
      {"9.3.5", "", "sensor 3", "OK", 0, "YES\n0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.version) + c.alerts + c.event);
    installSystem(c.version);
    describeHardware(std::string("<key>TouchID</key><true/><key>FaceID</key><false/>") + c.alerts);
    startHome();
    RunningProgram app("sentrel-app", {"--root", root.path(), photos, "photos"});
    ASSERT_NO_FATAL_FAILURE(waitForPrompt());
    home->say(c.event);
    EXPECT_EQ(app.hear(), c.answer);
    EXPECT_EQ(app.exitCode(), c.code);
    EXPECT_EQ(answer({photos, "session", "Fotos-Schutz"}), c.session);
  }
}

TEST_F(AppOnThePhone, WaitsForPhotosOnlyAsLongAsSomebodyAsks) {
  installSystem("10.3.1");
  EXPECT_EQ(answer({photos, "photos"}), "NO\n1");
  startHome();
  RunningProgram app("sentrel-app", {"--root", root.path(), photos, "photos"});
  ASSERT_NO_FATAL_FAILURE(waitForPrompt());
  kill(home->process(), SIGTERM);
  EXPECT_EQ(app.hear(), "NO");
  EXPECT_EQ(app.exitCode(), 1);
  for (const char* version : {"11.0", "14.2"}) {
    installSystem(version);
    EXPECT_EQ(answer({photos, "photos"}), "2") << version;
  }
}

TEST_F(AppOnThePhone, LosesItsSessionHoweverTheDeviceIsLocked) {
  const struct {
    const char* way;
    void (*lock)();
  } cases[] = {
      {"lock", [] { SNUtils::lockUI(); }},
      {"forced", [] { SNUtils::lockUI(/*force=*/true); }},
  };
  startHome();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    EXPECT_EQ(home->ask("unlock"), "unlocked");
    EXPECT_EQ(answer({notes, "unlock"}), "OK\n0");
    EXPECT_EQ(answer({notes, "session"}), "YES\n0");
    EXPECT_EQ(inAnotherApp([&c] {
                c.lock();
                return "done";
              }),
              "done");
    EXPECT_EQ(answer({notes, "locked"}), "YES\n0");
    EXPECT_EQ(answer({notes, "session"}), "NO\n1");
  }
}

TEST_F(AppOnThePhone, KnowsWhetherAFingerIsOnASensorForFingers) {
  const struct {
    const char* hardware;
    const char* touched;
  } cases[] = {
      {"<key>TouchID</key><true/><key>FaceID</key><false/>", "YES\n0"},
      {"<key>FaceID</key><true/>", "NO\n1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.hardware);
    describeHardware(c.hardware);
    startHome();
    EXPECT_EQ(answer({notes, "finger"}), "NO\n1");
    EXPECT_EQ(home->ask("sensor 1"), "sensed");
    EXPECT_EQ(answer({notes, "finger"}), c.touched);
    EXPECT_EQ(home->ask("sensor 0"), "sensed");
    EXPECT_EQ(answer({notes, "finger"}), "NO\n1");
  }
}

}  // namespace
}  // namespace sentrel
