#include "device/bus/BusXpc.h"

#include <signal.h>
#include <unistd.h>

#include <thread>

#include "device/bus/BusProtocol.h"
#include "tests/support/BusTesting.h"

namespace sentrel::bus {
namespace {

using Dictionary = PropertyList::Dictionary;
using Reply = std::optional<PropertyList>;
using ::testing::ElementsAre;

constexpr const char* service = "com.example.daemon.nsxpc";
const std::string busName = std::string(protocol::machServicePrefix) + service;

/// Answers with what it got, unless the text under "do" says otherwise.
void behave(const std::shared_ptr<XpcMessage>& message) {
  const auto* what = find<std::string>(message->content(), "do");
  if (!what) return message->reply(message->content());
  static std::shared_ptr<XpcMessage> kept;
  if (*what == "hang") kept = message;
  if (*what == "die") _exit(0);
  if (*what == "stop") kill(getpid(), SIGSTOP);
}

class BusXpcTest : public BusTest {
 protected:
  /// A process that serves the mach service.
  Server startDaemon() {
    return {bus_.address(), [](BusConnection& it) { serveMachService(it, service, behave); }};
  }

  void send(BusXpc& xpc, const Dictionary& message) {
    const auto connection = xpc.createMachServiceConnection(service);
    ASSERT_TRUE(connection);
    connection->resume();
    connection->sendMessageWithReply(message, [this](const Reply& reply) {
      replies_.push_back(reply);
      repliedOn_.push_back(std::this_thread::get_id());
    });
  }

  /// The one reply to `message`.
  Reply ask(BusXpc& xpc, const Dictionary& message) {
    replies_.clear();
    send(xpc, message);
    EXPECT_TRUE(replies_.empty()) << "on a later turn";
    EXPECT_TRUE(runUntil(*loop_, [this] { return !replies_.empty(); }));
    EXPECT_EQ(replies_.size(), 1U);
    return replies_.empty() ? Reply("no reply") : replies_.front();
  }

  std::vector<Reply> replies_;
  std::vector<std::thread::id> repliedOn_;
};

TEST_F(BusXpcTest, RepliesNoneForADaemonThatDies) {
  const Server daemon = startDaemon();
  BusXpc xpc(connect());
  EXPECT_EQ(ask(xpc, {{"do", "die"}}), std::nullopt);
  EXPECT_EQ(ask(xpc, {}), std::nullopt) << "has died";
}

TEST_F(BusXpcTest, RepliesNoneForWhatIsNoDictionary) {
  const RawResponder::React reactions[] = {
      replyWith([](sd_bus_message*) {}),
      replyWith([](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}", 0); }),
      replyWith([](sd_bus_message* m) { sd_bus_message_append(m, "aa{sv}", 1, 1, "k", "u", 1u); }),
      [](sd_bus_message* m) { sd_bus_reply_method_errorf(m, "org.example.Error", "planned"); },
  };
  BusXpc xpc(connect());
  for (const auto& react : reactions) {
    const RawResponder daemon(bus_.address(), react, busName);
    ASSERT_EQ(daemon.said(), "ready");
    EXPECT_EQ(ask(xpc, {}), std::nullopt);
  }
}

TEST_F(BusXpcTest, RepliesOnTheLoopsThreadToEveryThread) {
  const Server daemon = startDaemon();
  BusXpc xpc(connect());
  std::jthread([&] { send(xpc, {{"asked", "elsewhere"}}); }).join();
  ASSERT_TRUE(runUntil(*loop_, [this] { return !replies_.empty(); }));
  EXPECT_THAT(replies_, ElementsAre(Reply(Dictionary{{"asked", "elsewhere"}})));
  EXPECT_THAT(repliedOn_, ElementsAre(std::this_thread::get_id()));
}

TEST_F(BusXpcTest, AsksAServiceOfItsOwnProcess) {
  const std::shared_ptr<BusConnection> connection = connect(shortTimeout);
  serveMachService(*connection, service, behave);
  BusXpc xpc(connection);
  EXPECT_EQ(ask(xpc, {{"k", 1}}), Reply(Dictionary{{"k", 1}}));
  EXPECT_EQ(ask(xpc, {{"do", "nothing"}}), std::nullopt);
  EXPECT_EQ(ask(xpc, {{"do", "hang"}}), std::nullopt);
}

TEST_F(BusXpcTest, RepliesNoneWhenTheBusEndsAndThenConnectsNoMore) {
  const Server daemon = startDaemon();
  const std::shared_ptr<BusConnection> connection = connect();
  BusXpc xpc(connection);
  send(xpc, {{"do", "stop"}});
  kill(bus_.daemon(), SIGKILL);
  EXPECT_EQ(connection->request(busName, service, "waits for the end", {}), std::nullopt);
  connection->post(BusNotificationKind::darwin, {"finds no bus", std::nullopt});
  EXPECT_FALSE(connection->isConnected());
  ASSERT_TRUE(runUntil(*loop_, [this] { return !replies_.empty() && !losses_.empty(); }));
  EXPECT_THAT(replies_, ElementsAre(std::nullopt));
  EXPECT_EQ(xpc.createMachServiceConnection(service), nullptr);
  EXPECT_EQ(xpc.connectToAudioControl(service, privilegedConnection), nullptr);
}

TEST_F(BusXpcTest, HearsNoTapInWhatMakesNoSense) {
  const std::shared_ptr<BusConnection> served = connect();
  serveAudioControl(*served, service, [&](double intensity) { ADD_FAILURE() << intensity; });
  const std::shared_ptr<BusConnection> asker = connect();
  int refused = 0;
  const auto send = [&](const char* message, const UserInfo& userInfo) {
    asker->requestAsync(busName, service, message, userInfo, [&](const UserInfo&) { ++refused; });
  };
  send(protocol::hapticIntensityMessage, std::nullopt);
  send(protocol::hapticIntensityMessage, Dictionary());
  send(protocol::hapticIntensityMessage, Dictionary{{"intensity", 1}});
  send(protocol::hapticIntensityMessage, Dictionary{{"intensity", "1"}});
  send("other", Dictionary{{"intensity", 0.3}});
  EXPECT_TRUE(runUntil(*loop_, [&] { return refused == 5; }));
}

}  // namespace
}  // namespace sentrel::bus
