#include <signal.h>
#include <unistd.h>

#include <vector>

#include "device/bus/BusProtocol.h"
#include "tests/support/BusTesting.h"

namespace sentrel::bus {
namespace {

using Dictionary = PropertyList::Dictionary;
using Kind = BusNotificationKind;

Notification numbered(const std::string& name, int number) {
  return {name, Dictionary{{"number", number}}};
}

int numberOf(const Notification& notification) {
  const auto* number =
      notification.userInfo ? find<std::int64_t>(*notification.userInfo, "number") : nullptr;
  return number ? static_cast<int>(*number) : -1;
}

class BusNotifications : public BusTest {
 protected:
  NotificationCenter::Observer noting() {
    return [this](const Notification& notification) { seen_.push_back(notification); };
  }

  /// Checks that the numbers 0 to count - 1 have come, each once and in this order.
  void expectNumbers(int count) {
    ASSERT_EQ(seen_.size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
      ASSERT_EQ(numberOf(seen_[static_cast<std::size_t>(i)]), i);
  }

  std::vector<Notification> seen_;
};

TEST_F(BusNotifications, ArriveInPostingOrderHoweverMany) {
  constexpr int count = 5000;
  const auto connection = connect();
  const auto observation = connection->addObserver(Kind::distributed, "flood", noting());
  const ChildProcess poster([this](const ChildProcess::Ready&) {
    const auto other = connect();
    for (int i = 0; i < count; ++i)
      other->post(Kind::distributed, numbered("flood", i));
  });
  EXPECT_TRUE(runUntil(*loop_, [this] { return seen_.size() >= count; }));
  expectNumbers(count);
}

TEST_F(BusNotifications, AreNeitherLostNorReorderedByRequests) {
  constexpr int requests = 200;
  const auto connection = connect();
  const auto observation = connection->addObserver(Kind::distributed, "n", noting());
  const Responder responder(bus_.address(),
                            [](BusConnection& bus, const std::string&, const UserInfo& userInfo) {
                              static int number = 0;
                              for (int i = 0; i < 3; ++i)
                                bus.post(Kind::distributed, numbered("n", number++));
                              return userInfo;
                            });
  int answered = 0;
  const std::function<void()> askAgain = [&] {
    answered +=
        connection->request(springBoardService, testChannel, "post", Dictionary()) == Dictionary();
    if (answered < requests) loop_->async(askAgain);
  };
  loop_->async(askAgain);
  EXPECT_TRUE(runUntil(*loop_, [this] { return seen_.size() >= 3 * requests; }));
  EXPECT_EQ(answered, requests);
  expectNumbers(3 * requests);
}

TEST_F(BusNotifications, AreHeardBeforeARequestThatWasSentAfterThem) {
  const Responder responder(
      bus_.address(),
      [](BusConnection& bus, const std::string& message, const UserInfo&) -> UserInfo {
        static Observation observation;
        static int heard = -1;
        if (message == "observe")
          observation = bus.addObserver(Kind::distributed, "set",
                                        [](const Notification& n) { heard = numberOf(n); });
        return Dictionary{{"heard", heard}};
      });
  const auto connection = connect();
  connection->request(springBoardService, testChannel, "observe", std::nullopt);
  for (int i = 0; i < 200; ++i) {
    connection->post(Kind::distributed, numbered("set", i));
    ASSERT_EQ(connection->request(springBoardService, testChannel, "get", std::nullopt),
              UserInfo(Dictionary{{"heard", i}}));
  }
}

TEST_F(BusNotifications, ThatMakeNoSenseAreNotHeard) {
  const auto connection = connect();
  [[maybe_unused]] const auto observations = {
      connection->addObserver(Kind::distributed, "a", noting()),
      connection->addObserver(Kind::darwin, "a", noting())};
  const RawBus raw(bus_.address());
  const auto emit = [&raw](const char* member, const char* types, auto... arguments) {
    sd_bus_emit_signal(raw.get(), protocol::objectPath, protocol::notificationsInterface, member,
                       types, arguments...);
  };
  emit(protocol::distributedSignal, "");
  emit(protocol::distributedSignal, "i", 1);
  emit(protocol::distributedSignal, "s", "a");
  emit(protocol::distributedSignal, "saa{sv}", "a", 2, 0, 0);
  emit(protocol::distributedSignal, "saa{sv}", "a", 1, 1, "k", "u", 1u);
  emit("Other", "saa{sv}", "a", 0);
  emit(protocol::distributedSignal, "saa{sv}", "a", 1, 1, "last", "b", 1);
  sd_bus_flush(raw.get());
  ASSERT_TRUE(runUntil(*loop_, [this] { return !seen_.empty(); }));
  EXPECT_EQ(seen_.front().userInfo, UserInfo(Dictionary{{"last", true}}));
  EXPECT_TRUE(losses_.empty());
}

class BusLosses : public BusNotifications {
 protected:
  void expectDead(BusConnection& connection) {
    EXPECT_TRUE(runUntil(*loop_, [this] { return !losses_.empty(); }));
    EXPECT_FALSE(connection.isConnected());
    EXPECT_EQ(connection.request(springBoardService, testChannel, "hello", std::nullopt),
              std::nullopt);
    connection.post(Kind::darwin, {"a", std::nullopt});
    const auto observation = connection.addObserver(Kind::darwin, "a", noting());
    const auto silent = [](const std::string&, const UserInfo&) { return UserInfo(); };
    EXPECT_THROW(connection.serve(springBoardService, testChannel, silent), BusError);
    loop_->async([this] { loop_->stop(); });
    loop_->run();
    ASSERT_EQ(losses_.size(), 1u);
    EXPECT_NE(losses_.front(), "");
    EXPECT_TRUE(seen_.empty());
  }
};

TEST_F(BusLosses, AreReportedOnceWhenTheyHappenInSilence) {
  const auto connection = connect();
  const auto observation = connection->addObserver(Kind::darwin, "a", noting());
  kill(bus_.daemon(), SIGKILL);
  expectDead(*connection);
}

TEST_F(BusLosses, EndARequestUnderWay) {
  const pid_t daemon = bus_.daemon();
  const Responder responder(
      bus_.address(), [daemon](BusConnection&, const std::string&, const UserInfo&) -> UserInfo {
        kill(daemon, SIGKILL);
        return Dictionary();
      });
  const auto connection = connect();
  EXPECT_EQ(connection->request(springBoardService, testChannel, "kill", std::nullopt),
            std::nullopt);
  expectDead(*connection);
}

TEST_F(BusLosses, DropTheAnswerThatWasBeingMade) {
  const auto connection = connect();
  connection->serve(springBoardService, testChannel,
                    [this](const std::string&, const UserInfo&) -> UserInfo {
                      kill(bus_.daemon(), SIGKILL);
                      return Dictionary();
                    });
  const ChildProcess asker([this](const ChildProcess::Ready& ready) {
    const auto other = connect(shortTimeout);
    ready("asking");
    other->request(springBoardService, testChannel, "kill", std::nullopt);
  });
  expectDead(*connection);
}

TEST_F(BusLosses, IncludeABusThatWasNeverThere) {
  for (const char* address : {"unix:path=/nonexistent/bus", "no address at all", ""}) {
    SCOPED_TRACE(address);
    losses_.clear();
    BusConnection::Options options;
    if (*address) options.address = address;
    options.onLost = [this](const std::string& reason) { losses_.push_back(reason); };
    BusConnection connection(loop_, std::move(options));
    EXPECT_FALSE(connection.isConnected());
    expectDead(connection);
  }
}

}  // namespace
}  // namespace sentrel::bus
