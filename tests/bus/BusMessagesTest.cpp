#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

#include "device/bus/BusProtocol.h"
#include "device/common/UserInfoLimits.h"
#include "tests/support/BusTesting.h"

namespace sentrel::bus {
namespace {

using Dictionary = PropertyList::Dictionary;

/// Answers with what it was asked, and "count" with the number of questions so far.
UserInfo echo(BusConnection&, const std::string& message, const UserInfo& userInfo) {
  static int count = 0;
  if (message == "count") return Dictionary{{"count", count}};
  ++count;
  return userInfo;
}

class BusMessages : public BusTest {
 protected:
  UserInfo ask(BusConnection& connection, const std::string& message,
               const UserInfo& userInfo = std::nullopt) {
    return connection.request(springBoardService, testChannel, message, userInfo);
  }
};

TEST_F(BusMessages, AskThisVeryProcessOnTheThreadOfItsLoop) {
  const auto connection = connect();
  std::vector<std::thread::id> answeredOn;
  connection->serve(springBoardService, testChannel,
                    [&answeredOn](const std::string& message, const UserInfo&) {
                      answeredOn.push_back(std::this_thread::get_id());
                      return UserInfo(Dictionary{{"asked", message}});
                    });
  EXPECT_EQ(ask(*connection, "here"), UserInfo(Dictionary{{"asked", "here"}}));
  UserInfo answer;
  std::jthread other([&] {
    answer = ask(*connection, "there");
    loop_->stop();
  });
  loop_->run();
  other.join();
  EXPECT_EQ(answer, UserInfo(Dictionary{{"asked", "there"}}));
  EXPECT_EQ(answeredOn, std::vector(2, std::this_thread::get_id()));
}

TEST_F(BusMessages, CrossFromEveryThread) {
  const Responder responder(bus_.address(), echo);
  const auto connection = connect();
  std::atomic<int> wrong = 0;
  std::atomic<int> done = 0;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread)
    threads.emplace_back([&, thread] {
      for (int i = 0; i < 50; ++i) {
        const Dictionary question{{"thread", thread}, {"number", i}};
        wrong += ask(*connection, "echo", question) != question;
      }
      ++done;
    });
  EXPECT_TRUE(runUntil(*loop_, [&] {
    const Dictionary question{{"thread", "main"}};
    wrong += ask(*connection, "echo", question) != question;
    loop_->async([] {});
    return done == 4;
  }));
  EXPECT_EQ(wrong, 0);
}

// --- Responders that misbehave -------------------------------------------------------------------

/// A user info whose only entry is a text of that length.
void appendLongText(sd_bus_message* message, std::size_t length) {
  const std::string text(length, 'x');
  sd_bus_message_append(message, "aa{sv}", 1, 1, "text", "s", text.c_str());
}

/// A user info that holds arrays inside each other.
void appendDeep(sd_bus_message* message, int levels) {
  sd_bus_message_open_container(message, 'a', "a{sv}");
  sd_bus_message_open_container(message, 'a', "{sv}");
  sd_bus_message_open_container(message, 'e', "sv");
  sd_bus_message_append(message, "s", "deep");
  for (int i = 0; i < levels; ++i) {
    sd_bus_message_open_container(message, 'v', "av");
    sd_bus_message_open_container(message, 'a', "v");
  }
  for (int i = 0; i < 2 * levels + 3; ++i)
    sd_bus_message_close_container(message);
}

using Fill = std::function<void(sd_bus_message*)>;

/// What is no user info where one is expected.
const std::pair<const char*, Fill> nonsense[] = {
    {"nothing", [](sd_bus_message*) {}},
    {"a number", [](sd_bus_message* m) { sd_bus_message_append(m, "i", 1); }},
    {"a bare dictionary",
     [](sd_bus_message* m) { sd_bus_message_append(m, "a{sv}", 1, "k", "b", 1); }},
    {"two dictionaries", [](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}", 2, 0, 0); }},
    {"something more", [](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}i", 1, 0, 1); }},
    {"an unknown type",
     [](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}", 1, 1, "k", "u", 1u); }},
    {"an array of plain texts",
     [](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}", 1, 1, "k", "as", 1, "text"); }},
    {"an empty variant",
     [](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}", 1, 1, "k", "v", "v", "i", 1); }},
    {"too much", [](sd_bus_message* m) { appendLongText(m, maximumUserInfoSize); }},
    {"more than the bus carries",
     [](sd_bus_message* m) { appendLongText(m, 4 * maximumUserInfoSize); }},
    {"too deep", [](sd_bus_message* m) { appendDeep(m, 20); }},
    {"deeper than the bus carries", [](sd_bus_message* m) { appendDeep(m, 60); }}};

TEST_F(BusMessages, ReadAsNoneWhateverAResponderDoes) {
  const auto connection = connect(shortTimeout);
  std::vector<std::pair<const char*, RawResponder::React>> misbehaviours = {
      {"never answers", [](sd_bus_message*) {}},
      {"dies", [](sd_bus_message*) { _exit(0); }},
      {"is stopped", [](sd_bus_message*) { kill(getpid(), SIGSTOP); }},
      {"answers an error", [](sd_bus_message* question) {
         sd_bus_reply_method_errorf(question, "org.example.Error", "planned");
       }}};
  for (const auto& [name, fill] : nonsense)
    misbehaviours.emplace_back(name, replyWith(fill));
  for (const auto& [name, react] : misbehaviours) {
    SCOPED_TRACE(name);
    const RawResponder responder(bus_.address(), react);
    ASSERT_EQ(responder.said(), "ready");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ask(*connection, "hello", Dictionary()), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, patience);
    EXPECT_TRUE(connection->isConnected());
  }
  EXPECT_EQ(connection->request("no service name", testChannel, "hello", {}), std::nullopt);
  const Responder sane(bus_.address(), echo);
  EXPECT_EQ(ask(*connect(), "echo", Dictionary()), Dictionary());
}

TEST_F(BusMessages, AcceptWhatAnotherImplementationAnswers) {
  const RawResponder responder(bus_.address(), replyWith([](sd_bus_message* m) {
                                 sd_bus_message_append(m, "aa{sv}", 1, 2, "yes", "b", 1, "date",
                                                       "(d)", 2.5);
                               }));
  EXPECT_EQ(ask(*connect(), "hello"),
            UserInfo(Dictionary{{"yes", true}, {"date", WallTime(Seconds(2.5))}}));
}

TEST_F(BusMessages, DoNotTakeALateReplyForTheNextOne) {
  const RawResponder responder(bus_.address(), [](sd_bus_message* question) {
    static sd_bus_message* first = nullptr;
    if (!first) {
      first = sd_bus_message_ref(question);
      return;
    }
    sd_bus_reply_method_return(first, "aa{sv}", 1, 1, "number", "x", std::int64_t{1});
    sd_bus_reply_method_return(question, "aa{sv}", 1, 1, "number", "x", std::int64_t{2});
  });
  auto connection = connect(shortTimeout);
  EXPECT_EQ(ask(*connection, "first"), std::nullopt);
  UserInfo second;
  for (int i = 0; i < 100 && !second; ++i)  // a slow machine may be late once more
    second = ask(*connection, "second");
  EXPECT_EQ(second, UserInfo(Dictionary{{"number", 2}}));
}

// --- Questions that make no sense ----------------------------------------------------------------

int askRaw(sd_bus* bus, const char* path, const char* interface, const char* method,
           const Fill& fill) {
  sd_bus_message* question = nullptr;
  sd_bus_message_new_method_call(bus, &question, springBoardService, path, interface, method);
  fill(question);
  const int result = sd_bus_call(bus, question, 0, nullptr, nullptr);
  sd_bus_message_unref(question);
  return result;
}

TEST_F(BusMessages, RefuseQuestionsThatMakeNoSense) {
  const Responder responder(bus_.address(), echo);
  const auto send = [this](const Fill& fill) {
    return askRaw(RawBus(bus_.address()).get(), protocol::objectPath, protocol::messagesInterface,
                  protocol::askMethod, fill);
  };
  for (const auto& question : nonsense) {
    EXPECT_LT(send(question.second), 0) << question.first;
    EXPECT_LT(send([&question](sd_bus_message* m) {
                sd_bus_message_append(m, "ss", testChannel, "echo");
                question.second(m);
              }),
              0)
        << "with a name: " << question.first;
  }
  const auto sane = [](sd_bus_message* m) {
    sd_bus_message_append(m, "ssaa{sv}", testChannel, "echo", 0);
  };
  const RawBus bus(bus_.address());
  EXPECT_LT(askRaw(bus.get(), "/other", protocol::messagesInterface, protocol::askMethod, sane), 0);
  EXPECT_LT(askRaw(bus.get(), protocol::objectPath, "org.example", protocol::askMethod, sane), 0);
  EXPECT_LT(askRaw(bus.get(), protocol::objectPath, protocol::messagesInterface, "Other", sane), 0);
  EXPECT_EQ(ask(*connect(), "count"), UserInfo(Dictionary{{"count", 0}}));
  EXPECT_GE(send(sane), 0);
}

}  // namespace
}  // namespace sentrel::bus
