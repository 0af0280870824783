#include <gtest/gtest.h>

#include "tests/programs/ProgramRun.h"
#include "tests/programs/RunningProgram.h"
#include "tests/storage/TemporaryFolder.h"

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
  EXPECT_EQ(answer({notes, "unlock"}), "OK\n0");
  EXPECT_EQ(answer({notes, "ask"}), "YES\n0") << "nobody keeps a session";
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
  const std::vector<std::string> calls[] = {
      {}, {""}, {notes, "dance"}, {notes, "ask", maps, maps}, {"--dance", notes, "ask"}};
  for (const auto& call : calls) {
    const ProgramResult result = run("sentrel-app", call);
    SCOPED_TRACE(result.errors);
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.errors, "");
  }
}

}  // namespace
}  // namespace sentrel
