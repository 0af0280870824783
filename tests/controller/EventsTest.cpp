#include <limits>

#include "programs/common/WatchAnswering.h"
#include "tests/support/BridgeTest.h"
#include "tests/support/PromptTest.h"

namespace sentrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Dictionary = PropertyList::Dictionary;

/// What the sensor reports while a prompt is on screen.
class Events : public PromptTest {
 protected:
  struct System {
    const char* version;
    bool hasFaceID;
    bool hasDevicePasscode = true;
    bool isLegacy = false;
  };

  void startPrompt(const System& system, Dictionary settings = {}) {
    start(system.version, system.hasFaceID, system.isLegacy);
    device.lock().setPasscodeSet(system.hasDevicePasscode);
    useSettings(std::move(settings));
    prompt();
    watchGlyph();
  }

  /// Notes what the glyph is sent, as "state@seconds" since the last event, with a minus in front
  /// where it is not animated.
  void watchGlyph() {
    auto& setState = view().glyphView()->setState;
    setState = [this, original = setState](std::int64_t state, bool animated, auto completion) {
      append(glyph, formatText("%@%ld@%@", {animated ? "" : "-", state, since(eventTime)}));
      original(state, animated, std::move(completion));
    };
  }

  /// Senses `event` and lets `seconds` pass.
  void senseFor(BiometricEvent event, double seconds = 6) {
    glyph.clear();
    restarts.clear();
    device.journal().take();
    eventTime = device.time().now();
    sense(event);
    // Behind what falls due on the steps.
    advance(0.001);
    for (double passed = 0; passed < seconds; passed += 0.05) {
      noteRestarts();
      advance(0.05);
    }
  }

  /// A sensor that is held already is held once more to match again.
  void noteRestarts() {
    for (const std::string& line : device.journal().take())
      if (line.starts_with("hold the sensor")) append(restarts, since(eventTime));
  }

  static void append(std::string& line, const std::string& word) {
    if (!line.empty()) line.push_back(' ');
    line.append(word);
  }

  std::string glyph;
  std::string restarts;
  WallTime eventTime;
};

TEST_F(Events, MoveTheGlyphAndTheSensorByTheirNumbers) {
  struct Case {
    BiometricEvent event;
    const char* glyph;
    const char* restarts = "";
  };
  struct Group {
    System system;
    std::vector<Case> cases;
  };
  constexpr auto largest = std::numeric_limits<BiometricEvent>::max();
  // The restart after a failed try: two animations, the shake and half a second.
  const Group groups[] = {
      {{"14.0", true},
       {{2, "4@0 4@0.35 4@3.35", "1.6"},
        {4, "4@0 4@0.35 4@3.35", "1.6"},
        {10, "4@0 4@0.35 4@3.35", "1.6"},
        {1, "4@0 4@3"},
        {7, "7@0 4@3", "0.35"},
        {12, "4@0 4@3"},
        {13, "4@0 4@3"},
        {14, "4@0 4@3"},
        {28, "28@0"},
        {largest, "4@0 4@3"},
        {0, "0@0"},
        {5, "0@0"},
        {8, "0@0"},
        {9, "0@0"},
        {11, "0@0"},
        {-4, "0@0"}}},
      {{"13.5", true}, {{13, "5@0 5@3"}, {28, "28@0"}}},
      {{"13.4", true}, {{13, "13@0"}, {28, "5@0 5@3"}, {5, "5@0 5@0.35 5@3.35", "1.6"}}},
      {{"12.0", true, false}, {{11, "0@0"}, {10, "5@0 5@0.35 5@3.35", "1.6"}}},
      {{"11.4", true},
       {{2, "2@0 5@0.35 5@3.35", "1.6"},
        {10, "10@0 5@0.35 5@3.35", "1.6"},
        {4, "0@0"},
        {1, "5@0 5@3"},
        {12, "5@0 5@3"},
        {13, "13@0"},
        {14, "2@0 5@3", "0.35"}}},
      {{"14.0", false},
       {{2, "2@0 2@0.35 0@3.35", "1.6"},
        {4, "4@0 4@0.35 0@3.35", "1.6"},
        {1, "3@0"},
        {7, "7@0 0@3", "0.35"},
        {8, "0@0"},
        {9, "0@0", "0.35"},
        {10, "10@0"},
        {11, "0@0", "0.35"},
        {28, "28@0"}}},
      {{"14.0", false, false}, {{9, "0@0"}, {10, "10@0 10@0.35 0@3.35", "1.6"}, {11, "0@0"}}},
      {{"11.4", false}, {{12, "0@0", "0.35"}, {13, "13@0"}}},
      {{"10.3", false}, {{2, "2@0 2@0.35 0@3.35"}, {7, "7@0"}, {9, "0@0"}, {1, "3@0"}}},
      {{"9.3", false}, {{5, "5@0 5@0.35 0@3.35"}, {7, "7@0"}}},
      {{"14.0", true, true, true}, {{2, "4@0 4@0.1 4@3.1", "1.1"}, {7, "7@0 4@3", "0.1"}}},
  };
  for (const Group& group : groups)
    for (const Case& c : group.cases) {
      const System& system = group.system;
      SCOPED_TRACE(formatText(
          "%@ face %d passcode %d legacy %d event %ld",
          {system.version, system.hasFaceID, system.hasDevicePasscode, system.isLegacy, c.event}));
      startPrompt(system);
      senseFor(c.event);
      EXPECT_EQ(glyph, c.glyph);
      EXPECT_EQ(restarts, c.restarts);
      EXPECT_TRUE(isShowing());
      EXPECT_TRUE(sensorManager().isRunning());
      EXPECT_THAT(happened, IsEmpty());
    }
}

TEST_F(Events, OfAMatchEndTheRequestWhenTheGlyphHasShownIt) {
  struct Case {
    System system;
    const char* glyph;
  };
  for (const Case& c :
       {Case{{"14.0", true}, "12@0 -0@0.75"}, Case{{"11.4", true}, "12@0 -2@0.75"},
        Case{{"11.4", false}, "12@0 -0@0.75"}, Case{{"10.3", false}, "6@0 -0@0.75"},
        Case{{"9.3", false}, "6@0 -0@0.75"}, Case{{"14.0", true, true, true}, "12@0 -0@0.1"}}) {
    SCOPED_TRACE(formatText("%@ face %d", {c.system.version, c.system.hasFaceID}));
    startPrompt(c.system);
    sense(match);
    EXPECT_THAT(happened, IsEmpty());
    EXPECT_TRUE(controller().isJustAuthenticated());
    startPrompt(c.system);
    senseFor(match);
    EXPECT_EQ(glyph, c.glyph);
    EXPECT_EQ(restarts, "");
    EXPECT_FALSE(isShowing());
    EXPECT_FALSE(sensorManager().isRunning());
    EXPECT_THAT(takeHappened(), ElementsAre("ended YES YES"));
  }
}

TEST_F(Events, ThatFollowAMatchAreNoFailedTries) {
  startPrompt({"14.0", true});
  senseFor(match);
  prompt("again");
  senseFor(2);
  EXPECT_EQ(glyph, "0@0");
  senseFor(7);
  senseFor(2);
  EXPECT_EQ(glyph, "4@0 4@0.35 4@3.35") << "a result that was no match lies between";
}

TEST_F(Events, OfASecondMatchOnlyStopTheSensor) {
  startPrompt({"14.0", true});
  sense(match);
  sense(match);
  EXPECT_FALSE(sensorManager().isRunning());
  advance(2);
  EXPECT_THAT(takeHappened(), ElementsAre("ended YES YES"));
  senseFor(match);
  EXPECT_EQ(glyph, "");
  EXPECT_THAT(happened, IsEmpty());
}

TEST_F(Events, AreIgnoredWhileAPasscodeIsTyped) {
  for (const BiometricEvent event : {0, 2, 3, 6, 7, 28}) {
    SCOPED_TRACE(event);
    startPrompt({"14.0", false});
    EXPECT_TRUE(tapButton("Enter Passcode"));
    advance(1);
    senseFor(event);
    EXPECT_EQ(glyph, "");
    EXPECT_TRUE(isShowing());
    EXPECT_TRUE(sensorManager().isRunning());
    EXPECT_THAT(happened, IsEmpty());
  }
}

TEST_F(Events, OfExhaustedAttemptsEndTheRequestAndLockTheDevice) {
  startPrompt({"14.0", true}, {{"SentrelVibrateOnError", true}});
  sense(6);
  EXPECT_THAT(happened, IsEmpty());
  advance(0.35);
  EXPECT_EQ(view().glyphView()->state(), 1);
  EXPECT_THAT(takeHappened(), ElementsAre("ended NO NO"));
  EXPECT_FALSE(sensorManager().isRunning());
  EXPECT_EQ(device.audioServices().played().size(), 1u);
  EXPECT_TRUE(device.lock().isLocked());
  advance(3);
  EXPECT_FALSE(isShowing());
  EXPECT_FALSE(sensorManager().isRunning()) << "the last shake is followed by no restart";
}

TEST_F(Events, OfAFingerThatIsLiftedAreToldAndStopASensorNobodyNeeds) {
  constexpr const char* fingerUp = "com.quorvin.sentrelTouchIDFingerUpNotification";
  startPrompt({"14.0", false});
  int local = 0;
  const auto observation =
      platform().localCenter->addObserver(fingerUp, [&](const Notification&) { ++local; });
  const auto count = device.darwin().posted().size();
  senseFor(0, 0.1);
  EXPECT_EQ(local, 1);
  ASSERT_EQ(device.darwin().posted().size(), count + 1);
  EXPECT_EQ(device.darwin().posted().back().name, fingerUp);
  EXPECT_TRUE(sensorManager().isRunning());
  sense(match);
  senseFor(0, 0.1);
  EXPECT_EQ(glyph, "");
  EXPECT_FALSE(sensorManager().isRunning()) << "a success was just taken";
  start("14.0", /*hasFaceID=*/false);
  controller().startSentrelEvents();
  sense(4);
  EXPECT_TRUE(sensorManager().isRunning());
  sense(0);
  EXPECT_FALSE(sensorManager().isRunning()) << "no prompt is showing";
}

TEST_F(Events, RestartNoSensorOnTheTurnOnWhichTheRequestEnds) {
  startPrompt({"14.0", true});
  // As far away as the restart after the shake, and before it.
  platform().mainQueue->after(Seconds(0.4), [this] {
    platform().mainQueue->after(Seconds(0.5), [this] { controller().deviceScreenDimmed(); });
  });
  controller().handleAuthenticationFailed(/*isFinal=*/false);
  advance(2);
  EXPECT_THAT(takeHappened(), ElementsAre("ended NO NO"));
  EXPECT_FALSE(sensorManager().isRunning());
}

// --- The log -------------------------------------------------------------------------------------

class EventLog : public BridgeTest {
 protected:
  void startApp(bool hasFaceID) {
    restartApp("14.0", hasFaceID);
    enableLogging();
    inApp([] { SNAuthenticationViewController::sharedInstance()->authenticationView(); });
    inApp([] { SentrelController::sharedInstance(); });
    takeAppLog();
  }

  Lines logOf(BiometricEvent event) {
    inApp([event] {
      SentrelController::sharedInstance().biometricKitInterfaceHandleEvent(nullptr, event);
    });
    return takeAppLog();
  }
};

TEST_F(EventLog, NamesEachResultWithItsTwoModifiedCodes) {
  startApp(/*hasFaceID=*/false);
  Lines lines = logOf(12);
  std::erase_if(lines,
                [](const std::string& line) { return line.find("response") != std::string::npos; });
  const std::string rule(39, '*');
  EXPECT_THAT(lines, ElementsAre(rule, "delegate: (null)", "eventCode: 12", rule,
                                 "1. eventCode: 12 & modifiedEventCode: 3",
                                 "2. eventCode: 12 & modifiedEventCode: 0"));
}

TEST_F(EventLog, TellsOfASecondMatchAndOfWhatIsOnlyObserved) {
  startApp(/*hasFaceID=*/true);
  constexpr const char* dropped =
      "Sentrel was authenticated just a moments ago, hence not doing anything...";
  EXPECT_THAT(logOf(3), testing::Not(Contains(dropped)));
  EXPECT_THAT(logOf(3), Contains(dropped));
  inApp([] { SentrelController::sharedInstance().biometricKitInterfaceObserveEvent(nullptr, 4); });
  EXPECT_THAT(takeAppLog(), ElementsAre("delegate: (null)", "eventCode: 4"));
}

// --- The paired watch ----------------------------------------------------------------------------

class WatchUnlock : public Events {
 protected:
  static constexpr BiometricEvent endOfAttempts = 28;

  WatchUnlock() {
    device.watch().isConnected = device.watch().isActive = device.watch().isNearby = true;
    device.watch().wristState = 3;
    device.watch().lockState = 0;
    device.watch().firstRSSI = 5;
    device.watch().secondRSSI = -40;
    serve(programs::watchResponder(device));
  }

  void serve(simulated::XpcHub::Handler handler) {
    device.xpc().serve("com.apple.sharingd.nsxpc", daemon->weakProcess(), std::move(handler));
  }

  void startWatchPrompt(bool isLegacy = false) {
    startPrompt({"14.0", true, true, isLegacy},
                {{"SentrelEnabled", true}, {"SentrelUnlockWithWatch", true}});
  }

  /// Whether a prompt is passed where the daemon answers so.
  bool isUnlockedBy(const PropertyList& answer) {
    serve([&answer](const std::shared_ptr<XpcMessage>& message) {
      message->reply({{"result", answer}});
    });
    startWatchPrompt();
    senseFor(endOfAttempts, 1);
    return takeHappened() == Lines{"ended YES YES"};
  }

  /// Has the daemon keep queries until they are answered by `answerKept`.
  void keepQueries() {
    serve([this](const std::shared_ptr<XpcMessage>& message) { kept.push_back(message); });
  }
  void answerKept() {
    for (const auto& message : std::exchange(kept, {}))
      daemon->run([&] { programs::watchResponder(device)(message); });
    advance(1);
  }

  std::unique_ptr<simulated::SimulatedProcess> daemon = device.launch("com.apple.sharingd");
  std::vector<std::shared_ptr<XpcMessage>> kept;
};

TEST_F(WatchUnlock, StandsInForTheOwnerAfterTheLastTry) {
  for (const bool isLegacy : {false, true}) {
    SCOPED_TRACE(isLegacy);
    startWatchPrompt(isLegacy);
    const auto taps = device.watch().taps().size();
    senseFor(endOfAttempts, 1);
    EXPECT_THAT(takeHappened(), ElementsAre("ended YES YES"));
    EXPECT_EQ(device.watch().taps().size(), taps + 2);
    EXPECT_FALSE(isShowing());
    EXPECT_FALSE(sensorManager().isRunning());
    EXPECT_EQ(device.darwin().posted().back().name, "com.quorvin.sentrelAuthenticationSuccess");
  }
}

TEST_F(WatchUnlock, IsAskedOnlyAfterThatEventAndWithTheSetting) {
  startWatchPrompt();
  for (const BiometricEvent event : {7, 13, 2})
    senseFor(event);
  EXPECT_THAT(device.xpc().sent(), IsEmpty());
  startPrompt({"14.0", true});
  senseFor(endOfAttempts);
  EXPECT_THAT(device.xpc().sent(), IsEmpty());
  EXPECT_TRUE(sensorManager().isRunning());
}

TEST_F(WatchUnlock, LeavesThePromptWhereTheWatchSaysNo) {
  device.watch().secondRSSI = 0;
  startWatchPrompt();
  senseFor(endOfAttempts);
  EXPECT_EQ(device.xpc().sent().size(), 1u);
  EXPECT_THAT(happened, IsEmpty());
  EXPECT_TRUE(isShowing());
  EXPECT_THAT(device.watch().taps(), IsEmpty());
  EXPECT_FALSE(sensorManager().isRunning());
}

TEST_F(WatchUnlock, NeedsEveryEntryOfTheRightTypeAndAStrongSignal) {
  const Dictionary good{
      {"connected", true},         {"active", true}, {"nearby", true}, {"pairedWatchWristState", 3},
      {"pairedWatchLockState", 0}, {"rssi", -40},    {"name", "Watch"}};
  EXPECT_TRUE(isUnlockedBy(good));
  struct Case {
    const char* key;
    PropertyList value;
    bool allows = false;
  };
  const Case cases[] = {
      {"connected", false},
      {"connected", 1},
      {"active", false},
      {"active", "YES"},
      {"nearby", false},
      {"nearby", 1.0},
      {"pairedWatchWristState", 2},
      {"pairedWatchWristState", 3.0},
      {"pairedWatchLockState", 1},
      {"pairedWatchLockState", false},
      {"rssi", -61},
      {"rssi", 0},
      {"rssi", 5},
      {"rssi", -40.0},
      {"rssi", -60, true},
      {"rssi", -1, true},
      {"rssi", std::numeric_limits<std::int64_t>::min()},
      {"name", 5, true},
      {"more", "entries", true},
  };
  for (const Case& c : cases) {
    Dictionary answer = good;
    answer.insert_or_assign(c.key, c.value);
    EXPECT_EQ(isUnlockedBy(answer), c.allows) << describe(answer);
  }
  for (const auto& entry : good) {
    Dictionary answer = good;
    answer.erase(entry.first);
    EXPECT_EQ(isUnlockedBy(answer), entry.first == "name") << "without " << entry.first;
  }
  EXPECT_FALSE(isUnlockedBy(Dictionary()));
  EXPECT_FALSE(isUnlockedBy("connected"));
}

TEST_F(WatchUnlock, TooLateDoesNothing) {
  for (const bool hasNext : {false, true}) {
    SCOPED_TRACE(hasNext);
    keepQueries();
    startWatchPrompt();
    senseFor(endOfAttempts, 1);
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_TRUE(tapButton("Cancel"));
    advance(0.5);
    if (hasNext) prompt("next");
    answerKept();
    EXPECT_THAT(takeHappened(), ElementsAre("ended NO NO"));
    EXPECT_EQ(isShowing(), hasNext);
    EXPECT_THAT(device.watch().taps(), IsEmpty());
  }
}

}  // namespace
}  // namespace sentrel
