#include "sentrel/platform/PlatformCheck.h"

#include <gmock/gmock.h>

#include "device/simulated/SimulatedDevice.h"

namespace sentrel {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A port of that platform, and what the check says when it is taken away: nothing, where a service
/// that is never there stands in.
struct Port {
  std::string name;
  void (*take)(Platform& platform);
  bool isNeeded;
};

template <auto port>
void take(Platform& platform) {
  (platform.*port).reset();
}

class PlatformCheck : public testing::Test {
 protected:
  Platform platformOf(std::string_view bundleIdentifier) {
    process_ = device_.launch(std::string(bundleIdentifier));
    return process_->process().platform();
  }

  static std::string complaintAbout(const Platform& platform) {
    try {
      checkedPlatform(platform);
    } catch (const std::invalid_argument& incomplete) {
      return incomplete.what();
    }
    return "";
  }

  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_;
};

TEST_F(PlatformCheck, NamesWhatIsMissingAndStandsInForWhatCanDoNothing) {
  const std::vector<Port> ports = {
      {"mainBundle", take<&Platform::mainBundle>, true},
      {"clock", take<&Platform::clock>, true},
      {"mainQueue", take<&Platform::mainQueue>, true},
      {"files", take<&Platform::files>, true},
      {"propertyListFiles", take<&Platform::propertyListFiles>, true},
      {"cryptography", take<&Platform::cryptography>, true},
      {"caseMapping", take<&Platform::caseMapping>, true},
      {"darwinCenter", take<&Platform::darwinCenter>, true},
      {"distributedCenter", take<&Platform::distributedCenter>, true},
      {"localCenter", take<&Platform::localCenter>, true},
      {"messageChannel", take<&Platform::messageChannel>, true},
      {"system", take<&Platform::system>, true},
      {"textMeasuring", take<&Platform::textMeasuring>, true},
      {"wifi", take<&Platform::wifi>, false},
      {"systemLog", take<&Platform::systemLog>, false},
      {"libraries", take<&Platform::libraries>, false},
      {"spawner", take<&Platform::spawner>, false},
      {"operationQueues", take<&Platform::operationQueues>, false},
      {"localAuthentication", take<&Platform::localAuthentication>, false},
      {"xpc", take<&Platform::xpc>, false},
      {"audioServices", take<&Platform::audioServices>, false},
      {"screen", take<&Platform::screen>, false},
      {"qvUtils", take<&Platform::qvUtils>, false},
  };
  const Platform whole = platformOf("com.example.notes");
  ASSERT_EQ(complaintAbout(whole), "");
  for (const Port& port : ports) {
    Platform platform = whole;
    port.take(platform);
    const std::string complaint = complaintAbout(platform);
    const bool isNamed = complaint.find("lacks " + port.name + " (") != complaint.npos;
    EXPECT_EQ(isNamed, port.isNeeded) << port.name << ": " << complaint;
    EXPECT_EQ(complaint.empty(), !port.isNeeded) << port.name << ": " << complaint;
  }
  const std::string complaint = complaintAbout(Platform());
  for (const Port& port : ports)
    EXPECT_THAT(complaint, port.isNeeded && port.name != "textMeasuring"
                               ? testing::Matcher<std::string>(HasSubstr(port.name + " ("))
                               : Not(HasSubstr(port.name + " (")));
  EXPECT_THROW(Process process{Platform()}, IncompletePlatform);
}

TEST_F(PlatformCheck, OpensNothingAndKeepsNobodyWaitingWhereAServiceIsNotThere) {
  Platform bare = platformOf(springBoardBundleIdentifier);
  bare.wifi.reset();
  bare.systemLog.reset();
  bare.libraries.reset();
  bare.spawner.reset();
  bare.audioServices.reset();
  bare.messageChannel.reset();
  bare.xpc.reset();
  bare.localAuthentication.reset();
  bare.operationQueues.reset();
  const Platform platform = checkedPlatform(bare);
  EXPECT_FALSE(platform.libraries->open("/usr/lib/any", DynamicLibraries::Binding::now));
  EXPECT_FALSE(platform.libraries->loadBundle("/usr/lib/any"));
  EXPECT_FALSE(platform.spawner->spawn("/bin/true", {"true"}));
  EXPECT_FALSE(platform.messageChannel->sendMessageAndReceiveReply("channel", "message", {}));
  EXPECT_FALSE(platform.xpc->connectToAudioControl("service", privilegedConnection));
  platform.systemLog->write("lost");
  platform.audioServices->playSystemSoundWithVibration(1, {});

  std::vector<std::string> heard;
  const auto context = platform.localAuthentication->makeContext();
  EXPECT_TRUE(context->canEvaluateBiometricPolicy()) << "without a sensor everybody would pass";
  context->evaluateBiometricPolicy("Prove it", [&](bool success, const auto& error) {
    heard.push_back(success || !error ? "recognised" : "refused");
  });
  const auto connection = platform.xpc->createMachServiceConnection("service");
  connection->sendMessageWithReply({}, [&](const auto&) { heard.push_back("too early"); });
  connection->resume();
  connection->sendMessageWithReply(
      {}, [&](const auto& reply) { heard.push_back(reply ? "answered" : "unanswered"); });
  platform.operationQueues->makeQueue("work")->addOperation([&] { heard.push_back("worked"); });
  EXPECT_EQ(heard, std::vector<std::string>());
  device_.time().runUntilIdle();
  EXPECT_EQ(heard, (std::vector<std::string>{"refused", "unanswered", "worked"}));
}

TEST_F(PlatformCheck, OfAProcessWithoutARadioOnlyTheHomeScreenAsksNobodyForTheNetwork) {
  for (const std::string_view identifier :
       {springBoardBundleIdentifier, std::string_view("com.example.notes")}) {
    Platform platform = platformOf(identifier);
    platform.wifi.reset();
    const auto wifi = checkedPlatform(platform).wifi;
    const bool isSpringBoard = identifier == springBoardBundleIdentifier;
    EXPECT_EQ(wifi->hasManager(), isSpringBoard);
    EXPECT_EQ(wifi->hasClient(), isSpringBoard);
    EXPECT_EQ(wifi->seesNoNetwork(), isSpringBoard);
    EXPECT_FALSE(wifi->currentNetwork());
    EXPECT_FALSE(wifi->knownNetworks());
  }
}

}  // namespace
}  // namespace sentrel
