#include "sentrel/watch/WatchProtocol.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "programs/common/WatchAnswering.h"
#include "sentrel/platform/SharingDaemon.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;
using Message = std::shared_ptr<XpcMessage>;
using simulated::XpcHub;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
constexpr auto largest = std::numeric_limits<std::int64_t>::max();

Dictionary queryOf(PropertyList items) {
  return {{"SNWatchEventKey", true}, {"SNWatchQueryKey", std::move(items)}};
}

/// The home-screen process asks, and the sharing daemon answers unless a test has it do otherwise.
class WatchProtocol : public ::testing::Test {
 protected:
  WatchProtocol() { serve(programs::watchResponder(device)); }

  void serve(XpcHub::Handler handler) {
    device.xpc().serve("com.apple.sharingd.nsxpc", daemon->weakProcess(), std::move(handler));
  }

  WatchReply noting() {
    return [this](const PropertyList& answer) { answers.push_back(answer); };
  }

  /// What the daemon answers to `query`, and nothing else comes of it.
  PropertyList answerTo(const Dictionary& query) {
    sendSNWatchQueryWithReply(query, noting());
    device.time().runUntilIdle();
    const auto answered = std::exchange(answers, {});
    EXPECT_EQ(answered.size(), 1U);
    return answered.size() == 1 ? answered.front() : PropertyList("no single answer");
  }

  PropertyList answerToItems(Array items) { return answerTo(queryOf(std::move(items))); }

  Platform& daemonPlatform() { return daemon->process().platform(); }

  simulated::SimulatedDevice device;
  std::unique_ptr<simulated::SimulatedProcess> springBoard =
      device.launch(std::string(springBoardBundleIdentifier));
  std::unique_ptr<simulated::SimulatedProcess> daemon = device.launch("com.apple.sharingd");
  std::vector<PropertyList> answers;

 private:
  Process::Scope inside_{springBoard->process()};
};

// --- Asking --------------------------------------------------------------------------------------

TEST_F(WatchProtocol, SendsTheStatedItemsEachOnAConnectionOfItsOwn) {
  sendGeneralSNWatchQueryWithReply(/*preferSecondRSSI=*/true, noting());
  sendGeneralSNWatchQueryWithReply(/*preferSecondRSSI=*/false, noting());
  sendInvalidateRSSISNWatchQueryWithReply(noting());
  const Array expected[] = {{0, 1, 2, 3, 4, 7, 8}, {0, 1, 2, 3, 4, 6, 8}, {true}};
  const auto& sent = device.xpc().sent();
  ASSERT_EQ(sent.size(), std::size(expected));
  for (std::size_t i = 0; i < sent.size(); ++i) {
    EXPECT_EQ(sent[i].service, "com.apple.sharingd.nsxpc");
    EXPECT_EQ(sent[i].connection, i + 1);
    EXPECT_EQ(sent[i].content, queryOf(expected[i])) << describe(sent[i].content);
  }
}

TEST_F(WatchProtocol, RepliesInsideTheAskingProcessOnALaterTurn) {
  Process* repliedIn = nullptr;
  auto app = device.launch("com.example.app");
  app->run([&] {
    sendInvalidateRSSISNWatchQueryWithReply(
        [&](const PropertyList&) { repliedIn = &Process::current(); });
  });
  EXPECT_EQ(repliedIn, nullptr);
  device.time().runUntilIdle();
  EXPECT_EQ(repliedIn, &app->process());
  sendInvalidateRSSISNWatchQueryWithReply({});  // none is allowed
  device.time().runUntilIdle();
  EXPECT_EQ(device.watch().wakeUps().size(), 2U);
}

TEST_F(WatchProtocol, ReadsWhateverGoesWrongAsAnEmptyAnswer) {
  const std::pair<std::optional<Dictionary>, PropertyList> cases[] = {
      {Dictionary{{"result", Dictionary{{"rssi", 1}}}}, Dictionary{{"rssi", 1}}},
      {Dictionary{{"result", 1}}, 1},
      {Dictionary{{"rssi", 1}}, Dictionary()},
      {std::nullopt, Dictionary()}};
  for (const auto& c : cases) {
    serve([&c](const Message& message) {
      if (c.first) message->reply(*c.first);
    });
    EXPECT_EQ(answerTo(queryOf(Array{6})), c.second);
  }
  Message kept;
  serve([&kept](const Message& message) { kept = message; });
  sendInvalidateRSSISNWatchQueryWithReply(noting());
  device.time().advance(Seconds(1.9));
  EXPECT_THAT(answers, IsEmpty());
  device.time().advance(Seconds(0.2));
  EXPECT_THAT(std::exchange(answers, {}), ElementsAre(PropertyList(Dictionary())));
  serve([&](const Message& message) {
    kept = message;
    daemon.reset();
    kept.reset();
  });
  for (const char* when : {"ends meanwhile", "has ended"})
    EXPECT_EQ(answerTo(queryOf(Array{6})), PropertyList(Dictionary())) << when;
}

TEST_F(WatchProtocol, AsksAndTapsNobodyWithoutAConnection) {
  device.xpc().setRefusesConnections(true);
  sendGeneralSNWatchQueryWithReply(/*preferSecondRSSI=*/true, noting());
  vibrateAppleWatch(2);
  device.time().runUntilIdle();
  EXPECT_THAT(answers, IsEmpty());
  EXPECT_THAT(device.xpc().sent(), IsEmpty());
  EXPECT_THAT(device.watch().taps(), IsEmpty());
}

// --- Answering -----------------------------------------------------------------------------------

TEST_F(WatchProtocol, AnswersEachItemFromItsSource) {
  auto& watch = device.watch();
  watch.wristState = largest;
  watch.lockState = -2;
  watch.name = "Anna\xE2\x80\x99s watch";
  watch.firstRSSI = -41;
  watch.secondRSSI = -42;
  watch.isNearby = true;
  const std::pair<Array, Dictionary> cases[] = {
      {{0}, {{"pairedWatchWristState", largest}}},
      {{1}, {{"pairedWatchLockState", -2}}},
      {{6}, {{"rssi", -41}}},
      {{7}, {{"rssi", -41}}},
      {{8, 2, 2}, {{"name", "Anna\xE2\x80\x99s watch"}, {"nearby", true}}}};
  for (const auto& [items, answer] : cases)
    EXPECT_EQ(answerToItems(items), PropertyList(answer)) << describe(items);
  for (const int set : {2, 3, 4}) {
    watch.isNearby = set == 2;
    watch.isActive = set == 3;
    watch.isConnected = set == 4;
    EXPECT_EQ(answerToItems({2}), PropertyList(Dictionary{{"nearby", set == 2}}));
    EXPECT_EQ(answerToItems({3}), PropertyList(Dictionary{{"active", set == 3}}));
    EXPECT_EQ(answerToItems({4}), PropertyList(Dictionary{{"connected", set == 4}}));
  }
}

TEST_F(WatchProtocol, SkipsItemsThatAskForNothing) {
  const Array nothings{5,
                       9,
                       -1,
                       smallest,
                       largest,
                       true,
                       false,
                       2.0,
                       "2",
                       Array{2},
                       std::int64_t{1} << 32,
                       Dictionary{{"2", 2}}};
  for (const PropertyList& item : nothings)
    EXPECT_EQ(answerToItems({item}), PropertyList(Dictionary())) << describe(item);
  EXPECT_EQ(answerToItems({}), PropertyList(Dictionary()));
  EXPECT_EQ(device.watch().wakeUps().size(), nothings.size() + 1);
  EXPECT_EQ(answerToItems({true, "x", 3, 9, Array{}, 6}),
            PropertyList(Dictionary{{"active", false}, {"rssi", 0}}));
}

TEST_F(WatchProtocol, AnswersNothingToWhatIsNoList) {
  const PropertyList others[] = {true, 2, "2", Dictionary{{"2", 2}}, PropertyList::Data{2}};
  for (const PropertyList& other : others)
    EXPECT_EQ(answerTo(queryOf(other)), PropertyList(Dictionary())) << describe(other);
  EXPECT_EQ(answerTo({{"SNWatchEventKey", true}}), PropertyList(Dictionary()));
  EXPECT_THAT(device.watch().wakeUps(), IsEmpty());
}

TEST_F(WatchProtocol, TakesTheSecondSignalOnlyWhereItAloneIsAStrength) {
  const struct {
    std::int64_t first;
    std::int64_t second;
    std::int64_t preferred;
  } cases[] = {{5, -60, -60},
               {-70, -60, -70},
               {5, 3, 5},
               {1, -1, -1},
               {0, -60, 0},
               {1, 0, 1},
               {-1, 5, -1},
               {largest, smallest, smallest},
               {smallest, 0, smallest}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.first);
    device.watch().firstRSSI = c.first;
    device.watch().secondRSSI = c.second;
    EXPECT_EQ(answerToItems({7}), PropertyList(Dictionary{{"rssi", c.preferred}}));
    EXPECT_EQ(answerToItems({6, 7}), PropertyList(Dictionary{{"rssi", c.preferred}}));
    EXPECT_EQ(answerToItems({7, 6}), PropertyList(Dictionary{{"rssi", c.first}}));
  }
}

TEST_F(WatchProtocol, AnswersForThePhoneAloneWithoutAPairedWatch) {
  device.watch().isPaired = false;
  const Dictionary withoutDevice{
      {"pairedWatchWristState", 0}, {"pairedWatchLockState", 1}, {"rssi", 0}};
  EXPECT_EQ(answerToItems({0, 1, 2, 3, 4, 6, 8}), PropertyList(withoutDevice));
  device.watch().isPaired = true;
  device.watch().name.reset();
  EXPECT_EQ(answerToItems({3, 8}), PropertyList(Dictionary{{"active", false}}));
}

TEST_F(WatchProtocol, LeavesOutWhatADaemonWithoutTheClassesCannotKnow) {
  daemonPlatform().statusMonitor = nullptr;
  const Array all{0, 1, 2, 3, 4, 6, 8};
  EXPECT_EQ(answerToItems(all), PropertyList(Dictionary{{"active", false},
                                                        {"connected", false},
                                                        {"name", "Watch"},
                                                        {"nearby", false},
                                                        {"rssi", 0}}));
  daemonPlatform().pairedDeviceAgent = nullptr;
  EXPECT_EQ(answerToItems(all), PropertyList(Dictionary{{"rssi", 0}}));
  EXPECT_EQ(device.watch().wakeUps().size(), 1U);
  daemonPlatform().statusMonitor = makeStatusMonitor(
      std::make_shared<simulated::SimulatedWatch>(std::make_shared<simulated::Journal>()));
  EXPECT_EQ(answerToItems({0, 2}), PropertyList(Dictionary{{"pairedWatchWristState", 0}}));
}

TEST_F(WatchProtocol, WakesTheWatchOnTheAgentsQueueAsTheSystemVersionHasIt) {
  const struct {
    const char* version;
    std::optional<bool> waking;
  } cases[] = {{"9.3.5", std::nullopt}, {"13.7", std::nullopt}, {"14.0", true}, {"15.1", true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.version);
    device.system().version = c.version;
    const std::size_t before = device.watch().wakeUps().size();
    EXPECT_EQ(answerToItems({true}), PropertyList(Dictionary()));
    ASSERT_EQ(device.watch().wakeUps().size(), before + 1);
    const auto& wakeUp = device.watch().wakeUps().back();
    EXPECT_EQ(wakeUp.state, (Dictionary{{"met", 1}, {"rin", 1}}));
    EXPECT_EQ(wakeUp.waking, c.waking);
    EXPECT_TRUE(wakeUp.isOnAgentQueue);
  }
}

TEST_F(WatchProtocol, LeavesMessagesOfOthersToTheDaemon) {
  for (const PropertyList& mark : {PropertyList(false), PropertyList(1), PropertyList("YES")})
    EXPECT_EQ(answerTo({{"SNWatchEventKey", mark}, {"SNWatchQueryKey", Array{6}}}),
              PropertyList(Dictionary()));
  EXPECT_EQ(answerTo({{"SNWatchQueryKey", Array{6}}}), PropertyList(Dictionary()));
  EXPECT_THAT(device.watch().wakeUps(), IsEmpty());
  handleSNWatchEvent(nullptr, 0, 0);
}

// --- Tapping -------------------------------------------------------------------------------------

TEST_F(WatchProtocol, TapsAsOftenAsTheModeSaysAndLetsGo) {
  const struct {
    std::int64_t mode;
    std::size_t atOnce;
    std::size_t inTheEnd;
  } cases[] = {{1, 2, 2}, {2, 2, 3}, {0, 1, 1}, {3, 1, 1}, {-1, 1, 1}, {largest, 1, 1}};
  std::size_t before = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.mode);
    vibrateAppleWatch(c.mode);
    EXPECT_EQ(device.watch().taps().size() - before, c.atOnce);
    EXPECT_EQ(device.watch().openAudioConnections, c.atOnce == c.inTheEnd ? 0 : 1);
    device.time().advance(Seconds(0.49));
    EXPECT_EQ(device.watch().taps().size() - before, c.atOnce);
    device.time().advance(Seconds(0.02));
    EXPECT_EQ(device.watch().taps().size() - before, c.inTheEnd);
    EXPECT_EQ(device.watch().openAudioConnections, 0);
    before = device.watch().taps().size();
  }
  EXPECT_THAT(device.watch().taps(), ::testing::Each(1.0));
}

TEST(WatchFunctions, AreFoundByTheirNames) {
  for (const char* name :
       {"sendSNWatchQueryWithReply", "sendGeneralSNWatchQueryWithReply",
        "sendInvalidateRSSISNWatchQueryWithReply", "handleSNWatchEvent", "vibrateAppleWatch"})
    EXPECT_NE(dlsym(RTLD_DEFAULT, name), nullptr) << name;
}

}  // namespace
}  // namespace sentrel
