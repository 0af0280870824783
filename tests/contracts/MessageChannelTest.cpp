#include "sentrel/platform/MessageChannel.h"

#include <limits>
#include <optional>
#include <stdexcept>

#include "device/bus/BusMessageChannel.h"
#include "device/common/UserInfoLimits.h"
#include "device/simulated/SimulatedDevice.h"
#include "tests/support/BusTesting.h"

namespace sentrel {
namespace {

using namespace std::string_literals;
using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

constexpr const char* channelName = "com.quorvin.test";

/// Answers with what it was asked, and "count" with the number of questions so far.
class Echo {
 public:
  UserInfo operator()(const std::string& message, const UserInfo& userInfo) {
    if (message == "count") return Dictionary{{"count", count_}};
    ++count_;
    if (message == "throw") throw std::runtime_error("planned");
    if (message == "unsendable") return Dictionary{{"text", "\xFF"}};
    return userInfo;
  }

 private:
  int count_ = 0;
};

class Simulated {
 public:
  void serve() { device_.messages().setResponder(channelName, home_->weakProcess(), Echo()); }
  void endServer() { home_.reset(); }
  MessageChannel& channel() { return *app_->process().platform().messageChannel; }

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> home_ = device_.launch("com.apple.springboard");
  std::unique_ptr<simulated::SimulatedProcess> app_ = device_.launch("com.example.app");
};

class Real : bus::PrivateBusAndLoop {
 public:
  void serve() {
    responder_.emplace(bus_.address(), [echo = Echo()](bus::BusConnection&, const auto& message,
                                                       const UserInfo& userInfo) mutable {
      return echo(message, userInfo);
    });
  }
  void endServer() { responder_.reset(); }
  MessageChannel& channel() { return channel_; }

 private:
  std::optional<bus::Responder> responder_;
  bus::BusMessageChannel channel_{connect()};
};

template <class Implementation>
class MessageChannels : public ::testing::Test {
 protected:
  UserInfo ask(const std::string& message, const UserInfo& userInfo = std::nullopt) {
    return device_.channel().sendMessageAndReceiveReply(channelName, message, userInfo);
  }

  Implementation device_;
};

using Implementations = ::testing::Types<Simulated, Real>;
TYPED_TEST_SUITE(MessageChannels, Implementations);

/// Containers inside each other.
PropertyList nested(int levels) {
  PropertyList value = "bottom";
  for (int i = 0; i < levels; ++i)
    value = i % 2 ? PropertyList(Dictionary{{"k", std::move(value)}})
                  : PropertyList(Array{std::move(value)});
  return value;
}

Dictionary withText(std::size_t length) {
  return {{"text", std::string(length, 'x')}};
}

TYPED_TEST(MessageChannels, CarryEveryValueAsItIs) {
  this->device_.serve();
  using Limits = std::numeric_limits<std::int64_t>;
  const UserInfo cases[] = {
      std::nullopt,
      Dictionary(),
      Dictionary{{"", ""}},
      Dictionary{{"yes", true}, {"no", false}, {"one", 1}, {"real", 1.0}},
      Dictionary{{"largest", Limits::max()}, {"smallest", Limits::min()}, {"tenth", 0.1}},
      Dictionary{{"infinite", std::numeric_limits<double>::infinity()}},
      Dictionary{{"text", "\xC3\xA9\n\t\xF0\x9F\x94\x92"}, {"data", PropertyList::Data{0, 255, 7}}},
      Dictionary{{"no data", PropertyList::Data()},
                 {"date", WallTime(Seconds(-1.25))},
                 {"beyond", ~std::uint64_t{0}}},
      Dictionary{{"array", Array{1, "a", Array(), Dictionary()}},
                 {"dictionary", Dictionary{{"a", Array{true, 2.5}}}}},
      Dictionary{{"deep", nested(maximumUserInfoDepth - 1)}},
      withText(maximumUserInfoSize - 100),
  };
  for (const UserInfo& userInfo : cases)
    EXPECT_EQ(this->ask("echo", userInfo), userInfo);
}

TYPED_TEST(MessageChannels, SendNothingThatCannotArriveAsItIs) {
  this->device_.serve();
  const Dictionary cases[] = {
      {{"text", "cut\0off"s}},
      {{"cut\0off"s, "text"}},
      {{"text", "\xC3("}},
      {{"text", "\xED\xA0\x80"}},
      {{"array", Array{Dictionary{{"a", "\xFF"}}}}},
      {{"deep", nested(maximumUserInfoDepth)}},
      {{"very deep", nested(100)}},
      withText(maximumUserInfoSize),
      withText(4 * maximumUserInfoSize),
      {{"many", Array(maximumUserInfoSize / 16, true)}},
  };
  for (const Dictionary& userInfo : cases)
    EXPECT_EQ(this->ask("echo", userInfo), std::nullopt) << userInfo.begin()->first;
  EXPECT_EQ(this->ask("cut\0off"s), std::nullopt);
  EXPECT_EQ(this->ask("\xFF"), std::nullopt);
  EXPECT_EQ(this->ask("count"), UserInfo(Dictionary{{"count", 0}}));
}

TYPED_TEST(MessageChannels, ReadAsNoneWhereNobodyAnswers) {
  EXPECT_EQ(this->ask("echo", Dictionary()), std::nullopt);
  this->device_.serve();
  EXPECT_EQ(this->device_.channel().sendMessageAndReceiveReply("other channel", "echo", {}),
            std::nullopt);
  EXPECT_EQ(this->ask("throw", Dictionary()), std::nullopt);
  EXPECT_EQ(this->ask("unsendable", Dictionary()), std::nullopt);
  EXPECT_EQ(this->ask("echo", Dictionary()), Dictionary());
  this->device_.endServer();
  EXPECT_EQ(this->ask("echo", Dictionary()), std::nullopt);
}

}  // namespace
}  // namespace sentrel
