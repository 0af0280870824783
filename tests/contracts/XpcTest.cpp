#include "sentrel/platform/Xpc.h"

#include <cmath>
#include <stdexcept>

#include "device/bus/BusXpc.h"
#include "device/simulated/SimulatedDevice.h"
#include "tests/support/BusTesting.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;
using Reply = std::optional<PropertyList>;
using Message = std::shared_ptr<XpcMessage>;
using Handler = std::function<void(const Message&)>;
using ::testing::ElementsAre;

constexpr const char* service = "com.example.daemon.nsxpc";

// Each implementation has a daemon, which serves, and an asker. An impatient asker waits for its
// replies no longer than shortTimeout.

class Simulated {
 public:
  void serve(Handler handler) { device_.xpc().serve(service, daemon_->weakProcess(), handler); }
  Xpc& asker() { return *asker_->process().platform().xpc; }
  Xpc& impatientAsker() {
    device_.xpc().setReplyTimeout(bus::shortTimeout);
    return asker();
  }
  MainQueue& daemonQueue() { return *daemon_->process().platform().mainQueue; }
  void serveAudioControl() {}
  const std::vector<double>& taps() { return device_.watch().taps(); }
  void runUntil(const std::function<bool()>&) { device_.time().runUntilIdle(); }

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> daemon_ = device_.launch("com.example.daemon");
  std::unique_ptr<simulated::SimulatedProcess> asker_ = device_.launch("com.example.app");
};

class Real : bus::PrivateBusAndLoop {
 public:
  void serve(Handler handler) { serveMachService(*daemon_, service, std::move(handler)); }
  Xpc& asker() { return asker_; }
  Xpc& impatientAsker() { return impatientAsker_; }
  MainQueue& daemonQueue() { return *loop_; }
  void serveAudioControl() {
    bus::serveAudioControl(*daemon_, std::string(nanoAudioControlServiceName),
                           [this](double intensity) { taps_.push_back(intensity); });
  }
  const std::vector<double>& taps() { return taps_; }
  void runUntil(const std::function<bool()>& condition) { bus::runUntil(*loop_, condition); }

 private:
  std::unique_ptr<bus::BusConnection> daemon_ = connect();
  bus::BusXpc asker_{connect()};
  bus::BusXpc impatientAsker_{connect(bus::shortTimeout)};
  std::vector<double> taps_;
};

template <class Implementation>
class XpcPorts : public ::testing::Test {
 protected:
  void send(Xpc& xpc, const Dictionary& message) {
    const auto connection = xpc.createMachServiceConnection(service);
    ASSERT_TRUE(connection);
    connection->resume();
    connection->sendMessageWithReply(message,
                                     [this](const Reply& reply) { replies_.push_back(reply); });
  }

  /// The one reply to `message`.
  Reply ask(Xpc& xpc, const Dictionary& message) {
    replies_.clear();
    send(xpc, message);
    EXPECT_TRUE(replies_.empty()) << "on a later turn";
    device_.runUntil([this] { return !replies_.empty(); });
    EXPECT_EQ(replies_.size(), 1U);
    return replies_.empty() ? Reply("no reply") : replies_.front();
  }
  Reply ask(const Dictionary& message) { return ask(device_.asker(), message); }

  /// Has the daemon do that on its next turn but one.
  void later(std::function<void()> action) {
    auto& queue = device_.daemonQueue();
    queue.async([&queue, action = std::move(action)] { queue.async(action); });
  }

  Implementation device_;
  std::vector<Reply> replies_;
};

using Implementations = ::testing::Types<Simulated, Real>;
TYPED_TEST_SUITE(XpcPorts, Implementations);

void echo(const Message& message) {
  message->reply(message->content());
}

TYPED_TEST(XpcPorts, CarryMessagesAndRepliesAsTheyAre) {
  this->device_.serve(echo);
  const Dictionary cases[] = {
      {}, {{"yes", true}, {"one", 1}, {"text", "1"}, {"array", Array{true, 1, "1", Dictionary()}}}};
  for (const Dictionary& message : cases)
    EXPECT_EQ(this->ask(message), Reply(message));
}

TYPED_TEST(XpcPorts, GiveTheFirstReplyHoweverLateAndNoneForAMessageThatWasLetGo) {
  Message kept;
  const struct {
    const char* name;
    Handler handle;
    Reply reply;
  } cases[] = {
      {"lets go", [](const Message&) {}, std::nullopt},
      {"throws", [](const Message&) { throw std::runtime_error("planned"); }, std::nullopt},
      {"replies what cannot be sent",
       [](const Message& m) {
         m->reply({{"text", "\xFF"}});
       },
       std::nullopt},
      {"replies twice",
       [](const Message& m) {
         m->reply({{"reply", 1}});
         m->reply({{"reply", 2}});
       },
       Dictionary{{"reply", 1}}},
      {"replies and then throws",
       [](const Message& m) {
         m->reply({{"reply", 1}});
         throw std::runtime_error("planned");
       },
       Dictionary{{"reply", 1}}},
      {"replies later",
       [&](const Message& m) { this->later([m] {
                                 m->reply({{"reply", "late"}});
                               }); },
       Dictionary{{"reply", "late"}}},
      {"lets go later",
       [&](const Message& m) {
         kept = m;
         this->later([&kept] { kept.reset(); });
       },
       std::nullopt},
  };
  EXPECT_EQ(this->ask({}), std::nullopt) << "nobody serves";
  for (const auto& c : cases) {
    this->device_.serve(c.handle);
    EXPECT_EQ(this->ask({}), c.reply) << c.name;
  }
  EXPECT_EQ(this->ask({{"text", "\xFF"}}), std::nullopt) << "cannot be sent";
}

TYPED_TEST(XpcPorts, GiveEachAskerItsOwnReplyWhateverTheirOrder) {
  std::vector<Message> kept;
  this->device_.serve([&kept](const Message& message) {
    kept.push_back(message);
    if (kept.size() < 2) return;
    echo(kept[1]);
    echo(kept[0]);
  });
  for (const int asker : {1, 2})
    this->send(this->device_.asker(), {{"asker", asker}});
  this->device_.runUntil([this] { return this->replies_.size() == 2; });
  EXPECT_THAT(this->replies_,
              ElementsAre(Reply(Dictionary{{"asker", 2}}), Reply(Dictionary{{"asker", 1}})));
}

TYPED_TEST(XpcPorts, WaitForAHangingServiceNoLongerThanTheTimeout) {
  std::vector<Message> kept;
  this->device_.serve([&kept](const Message& message) { kept.push_back(message); });
  EXPECT_EQ(this->ask(this->device_.impatientAsker(), {}), std::nullopt);
  this->device_.runUntil([&kept] { return !kept.empty(); });  // a slow one may come to it later
  ASSERT_EQ(kept.size(), 1U);
  kept.front()->reply({{"too", "late"}});
  this->device_.serve(echo);
  this->send(this->device_.asker(), {{"next", 1}});
  this->device_.runUntil([this] { return this->replies_.size() == 2; });
  EXPECT_THAT(this->replies_, ElementsAre(std::nullopt, Reply(Dictionary{{"next", 1}})));
}

TYPED_TEST(XpcPorts, SendNothingOnAConnectionThatIsNotResumed) {
  this->device_.serve(echo);
  const auto connection = this->device_.asker().createMachServiceConnection(service);
  connection->sendMessageWithReply({}, [](const Reply&) { ADD_FAILURE() << "heard"; });
  EXPECT_EQ(this->ask({{"later", true}}), Reply(Dictionary{{"later", true}}));
}

TYPED_TEST(XpcPorts, TapOnAnOpenConnectionWithAnIntensityThatMakesSense) {
  this->device_.serveAudioControl();
  const auto connect = [this] {
    return this->device_.asker().connectToAudioControl(std::string(nanoAudioControlServiceName),
                                                       privilegedConnection);
  };
  const auto control = connect();
  control->setHapticIntensity(0.1);
  control->resume();
  for (const double intensity : {1.0, -1.0, 2.0, std::nan(""), 0.0})
    control->setHapticIntensity(intensity);
  control->invalidate();
  control->resume();
  control->setHapticIntensity(0.2);
  const auto next = connect();
  next->resume();
  next->setHapticIntensity(0.5);
  this->device_.runUntil([this] { return this->device_.taps().size() >= 3; });
  EXPECT_THAT(this->device_.taps(), ElementsAre(1.0, 0.0, 0.5));
}

}  // namespace
}  // namespace sentrel
