#include <gmock/gmock.h>

#include <functional>

#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

constexpr const char* faceText = "Please authenticate yourself using Face ID.";
constexpr const char* fingerText = "Please authenticate yourself using finger print.";

class BiometricQueries : public BridgeTest {
 protected:
  simulated::SimulatedSensor& sensor() { return device.sensor(); }
  BiometricInterface& interface() { return *home().biometricResource->_biometricKitInterface(); }

  void useTouchID() {
    sensor().isTouchIDCapable = true;
    sensor().isPearlIDCapable = false;
  }
  void useNoSensor() { sensor().isTouchIDCapable = sensor().isPearlIDCapable = false; }
};

struct FirstLookCase {
  const char* name;
  const char* version;
  bool isEnrolled;
  std::optional<BiometryType> contextSays;
  bool hasResource;
  std::optional<bool> interfaceSaysTouch;
  std::optional<bool> interfaceSaysFace;
  const char* message;  // null: none
  bool faceIDFlag;
};

const FirstLookCase firstLookCases[] = {
    {"a face, new", "11.0", true, BiometryType::faceID, true, true, false, faceText, true},
    {"a finger, new", "14.2", true, BiometryType::touchID, true, {}, {}, fingerText, false},
    {"something else", "12", true, BiometryType::none, true, {}, {}, nullptr, false},
    {"a face, old", "10.3.3", true, BiometryType::faceID, false, {}, {}, fingerText, false},
    {"no resource", "14", false, {}, false, {}, {}, fingerText, false},
    {"neither question", "14", false, {}, true, {}, {}, fingerText, false},
    {"face only", "14", false, {}, true, false, true, faceText, true},
    {"face, no finger question", "14", false, {}, true, {}, true, faceText, true},
    {"both", "14", false, {}, true, true, true, fingerText, true},
    {"finger only", "14", false, {}, true, true, false, fingerText, false},
    {"finger, no face question", "14", false, {}, true, false, {}, fingerText, false},
};

TEST_F(BiometricQueries, TheFirstLookChoosesTheMessageAndTheFaceIDFlag) {
  for (const FirstLookCase& look : firstLookCases) {
    SCOPED_TRACE(look.name);
    device.system().version = look.version;
    sensor().isEnrolled = look.isEnrolled;
    sensor().reportedType = look.contextSays;
    const auto process = freshSpringBoard();
    auto interface = simulated::makeBiometricInterface(device.sharedSensor(), 14);
    interface->isTouchIDCapable = nullptr;
    interface->isPearlIDCapable = nullptr;
    if (const auto answer = look.interfaceSaysTouch)
      interface->isTouchIDCapable = [answer] { return *answer; };
    if (const auto answer = look.interfaceSaysFace)
      interface->isPearlIDCapable = [answer] { return *answer; };
    process->process().platform().biometricResource =
        look.hasResource ? std::make_shared<simulated::SimulatedBiometricResource>(
                               device.sharedSensor(), interface)
                         : nullptr;
    const auto message = process->run([] { return SNUtils::authenticationMessage(); });
    EXPECT_EQ(message, look.message ? std::optional<std::string>(look.message) : std::nullopt);
    process->process().platform().biometricResource = nullptr;
    EXPECT_EQ(process->run([] { return SNUtils::supportsFaceID(); }), look.faceIDFlag);
  }
}

TEST_F(BiometricQueries, TheMessageIsLocalisedOnce) {
  springBoard->mainBundle().translate(faceText, "Zeigen Sie sich.");
  EXPECT_EQ(SNUtils::authenticationMessage(), "Zeigen Sie sich.");
  springBoard->mainBundle().translate(faceText, "Montrez-vous.");
  EXPECT_EQ(SNUtils::authenticationMessage(), "Zeigen Sie sich.");
}

TEST_F(BiometricQueries, PasscodeOnlyHasItsOwnMessage) {
  useSettings({{"SentrelUsePasscodeOnly", true}});
  EXPECT_EQ(SNUtils::authenticationMessage(), faceText) << "without a passcode it does not count";
  useSettings({{"SentrelUsePasscodeOnly", true}, {"SentrelPasscode", "x"}});
  EXPECT_EQ(SNUtils::authenticationMessage(),
            "Please authenticate yourself using Sentrel's passcode.");
}

TEST_F(BiometricQueries, LowersTheMessageButWithFaceIDOnlyItsFirstLetter) {
  const struct {
    bool hasFaceID;
    const char* message;
    const char* lowered;
  } cases[] = {
      {false, "Use Touch ID, ÉMILE", "use touch id, émile"},
      {false, "A", "a"},
      {true, "Use Face ID", "use Face ID"},
      {true, "ÉCRAN", "éCRAN"},
      {true, "É", "É"},
      {true, "a", "A"},
      {true, "é", "É"},
      {true, "", ""},
      // One letter, but two units as the platform counts: the first alone has no lower case.
      {true, "\U00010400", "\U00010400"},
      {true, "A\u0301", "a\u0301"},
  };
  for (const auto& lowered : cases) {
    SCOPED_TRACE(lowered.message);
    sensor().isPearlIDCapable = lowered.hasFaceID;
    sensor().isTouchIDCapable = !lowered.hasFaceID;
    const auto process = freshSpringBoard();
    process->mainBundle().translate(lowered.hasFaceID ? faceText : fingerText, lowered.message);
    EXPECT_EQ(process->run([] { return SNUtils::loweredCaseAuthenticationMessage(); }),
              lowered.lowered);
  }
  sensor().reportedType = BiometryType::none;
  EXPECT_EQ(SNUtils::loweredCaseAuthenticationMessage(), std::nullopt) << "where there is none";
}

TEST_F(BiometricQueries, TouchIDIsTheInterfacesWordAndElseTheContexts) {
  EXPECT_FALSE(SNUtils::supportsTouchID()) << "the context could be asked, but a face is no finger";
  interface().isTouchIDCapable = [] { return true; };
  EXPECT_TRUE(SNUtils::supportsTouchID());
  interface().isTouchIDCapable = nullptr;
  EXPECT_TRUE(SNUtils::supportsTouchID());
  sensor().isEnrolled = false;
  EXPECT_FALSE(SNUtils::supportsTouchID());
  home().biometricResource = nullptr;
  EXPECT_FALSE(SNUtils::supportsTouchID());
  sensor().isEnrolled = true;
  EXPECT_TRUE(SNUtils::supportsTouchID());
}

TEST_F(BiometricQueries, FaceIDIsAskedAgainUntilItIsYes) {
  useTouchID();
  EXPECT_FALSE(SNUtils::supportsFaceID());
  sensor().isPearlIDCapable = true;
  EXPECT_TRUE(SNUtils::supportsFaceID());
  sensor().isPearlIDCapable = false;
  EXPECT_TRUE(SNUtils::supportsFaceID());
}

TEST_F(BiometricQueries, BiometricsAreSupportedByTheFirstWhoCanTell) {
  const auto supported = [] { return SNUtils::isBioMetricsSupported(); };
  useNoSensor();
  home().biometricKit->isTouchIDCapable = [] { return true; };
  EXPECT_FALSE(supported()) << "the interface answers both questions";
  sensor().isPearlIDCapable = true;
  EXPECT_TRUE(supported());
  useTouchID();
  EXPECT_TRUE(supported());

  useNoSensor();
  interface().isPearlIDCapable = nullptr;
  EXPECT_TRUE(supported()) << "the manager says so";
  home().biometricKit->isTouchIDCapable = [] { return false; };
  EXPECT_FALSE(supported());

  home().biometricKit->isTouchIDCapable = nullptr;
  sensor().reportedType = BiometryType::touchID;
  EXPECT_TRUE(supported()) << "there is sensor information";
  sensor().reportedType = BiometryType::none;
  EXPECT_FALSE(supported());

  home().biometricKit->getSensorInfo = nullptr;
  EXPECT_FALSE(supported());
  interface().isTouchIDCapable = [] { return true; };
  EXPECT_TRUE(supported()) << "Touch ID";
  interface().isTouchIDCapable = [] { return false; };
  interface().isPearlIDCapable = [] { return true; };
  EXPECT_TRUE(supported()) << "Face ID";
  EXPECT_THAT(takeRequests(), ElementsAre());
}

TEST_F(BiometricQueries, TheManagersNoGivesWayToTheFaceIDFlag) {
  home().biometricKit->isTouchIDCapable = [] { return false; };
  EXPECT_TRUE(SNUtils::supportsFaceID());
  home().biometricResource = nullptr;
  EXPECT_TRUE(SNUtils::isBioMetricsSupported());
}

TEST_F(BiometricQueries, UnlockByTheSensorIsReadFromTheConfiguration) {
  const auto enabled = [] { return SNUtils::isBioMetricEnabledForUnlock(); };
  const auto configure = [this](std::optional<PropertyList::Dictionary> configuration) {
    home().biometricKit->getProtectedConfiguration = [configuration] { return configuration; };
  };
  EXPECT_TRUE(enabled());
  sensor().isUnlockEnabled = false;
  EXPECT_FALSE(enabled());

  configure(PropertyList::Dictionary{{"BKUserCfgTouchIDLoginEnabled", true}});
  EXPECT_FALSE(enabled()) << "the effective values count where they can be read";
  home().protectedConfiguration = nullptr;
  EXPECT_TRUE(enabled());
  configure(PropertyList::Dictionary{{"BKUserCfgTouchIDLoginEnabled", 0}});
  EXPECT_FALSE(enabled());
  configure(std::nullopt);
  EXPECT_FALSE(enabled());

  home().biometricKit->getProtectedConfiguration = nullptr;
  EXPECT_TRUE(enabled());
  home().biometricKit = nullptr;
  EXPECT_TRUE(enabled());
}

/// What a request for authentication ended with.
struct Outcome {
  int calls = 0;
  bool success = false;
  std::optional<PlatformError> error;

  SNUtils::AuthenticationCompletion completion() {
    return [this](bool succeeded, const std::optional<PlatformError>& why) {
      ++calls;
      success = succeeded;
      error = why;
    };
  }
};

TEST_F(BiometricQueries, ADeviceWithoutTouchIDPassesWithoutAsking) {
  Outcome outcome;
  SNUtils::requestForAuthentication("Prove it", outcome.completion());
  EXPECT_EQ(outcome.calls, 1);
  EXPECT_TRUE(outcome.success);
  EXPECT_FALSE(outcome.error);
  EXPECT_THAT(device.journal().lines(), ElementsAre());
}

TEST_F(BiometricQueries, AsksTheOwnerWithoutAFallbackAndPassesTheOutcomeOn) {
  useTouchID();
  const PlatformError cancelled{"com.apple.LocalAuthentication", -2, "Canceled"};
  for (const auto& error : {std::optional<PlatformError>(), std::optional(cancelled)}) {
    Outcome outcome;
    sensor().evaluationError = error;
    SNUtils::requestForAuthentication("Prove it", outcome.completion());
    EXPECT_EQ(outcome.calls, 0);
    device.time().runDue();
    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(outcome.success, !error);
    EXPECT_EQ(outcome.error, error);
    EXPECT_THAT(device.journal().take(), ElementsAre("ask the owner: Prove it, fallback \"\""));
  }
}

/// Counts the contexts that it hands out.
class CountingAuthentication final : public LocalAuthentication {
 public:
  explicit CountingAuthentication(std::shared_ptr<LocalAuthentication> inner)
      : inner_(std::move(inner)) {}

  std::shared_ptr<LAContext> makeContext() override { return ++count, inner_->makeContext(); }

  int count = 0;

 private:
  std::shared_ptr<LocalAuthentication> inner_;
};

TEST_F(BiometricQueries, EachRequestMakesAContextOfItsOwn) {
  useTouchID();
  ASSERT_TRUE(SNUtils::supportsTouchID());
  const auto authentication = std::make_shared<CountingAuthentication>(home().localAuthentication);
  home().localAuthentication = authentication;
  for (int request = 0; request < 2; ++request)
    SNUtils::requestForAuthentication("Prove it", nullptr);
  device.time().runDue();
  EXPECT_EQ(authentication->count, 2);
  EXPECT_EQ(device.journal().take().size(), 2U);
}

TEST_F(BiometricQueries, ASensorThatCannotBeAskedIsAnError) {
  useTouchID();
  sensor().isEnrolled = false;
  springBoard->mainBundle().translate("Your device cannot authenticate using TouchID.",
                                      "Geht nicht.");
  Outcome outcome;
  SNUtils::requestForAuthentication("Prove it", outcome.completion());
  EXPECT_FALSE(outcome.success);
  EXPECT_EQ(outcome.error, (PlatformError{"com.quorvin.sentrel", -1, "Geht nicht."}));
  SNUtils::requestForAuthentication("Prove it", nullptr);
}

}  // namespace
}  // namespace sentrel
