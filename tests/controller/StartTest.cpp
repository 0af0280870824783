#include <gmock/gmock.h>

#include "sentrel/authui/SNWindow.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/controller/BulletinRequest.h"
#include "sentrel/controller/SentrelController.h"
#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* watchKit = "/System/Library/PrivateFrameworks/WatchKit.framework/WatchKit";
constexpr const char* showingQuestion = "com.quorvin.sentrel.app.lastUnlocked";

class Start : public BridgeTest {
 protected:
  void promptIn(simulated::SimulatedProcess& process) {
    process.run([] {
      SentrelController::sharedInstance().requiresAuthenticationForItem(
          "T", "M", SNWindow::sharedInstance()->rootViewController(), {});
    });
    device.time().advance(Seconds(1));
  }

  bool isShowingIn(simulated::SimulatedProcess& process) {
    return process.run([] { return SentrelController::sharedInstance().isAlertShowing(); });
  }
};

TEST_F(Start, LoadsTheWatchFrameworkAndLogsWhetherItCould) {
  for (const bool isThere : {true, false}) {
    isThere ? device.libraries().install(watchKit, {}) : device.libraries().remove(watchKit);
    app = device.launch(std::string(appIdentifier));
    enableLogging();
    device.journal().take();
    inApp([] {
      EXPECT_EQ(&SentrelController::sharedInstance(), &SentrelController::sharedInstance());
    });
    EXPECT_THAT(takeAppLog(),
                ElementsAre(isThere ? "Sentrel -> Loading WatchKit.framework is success."
                                    : "Sentrel -> Loading WatchKit.framework is failed."));
    EXPECT_EQ(device.journal().take(),
              isThere ? Lines{"open " + std::string(watchKit) + " now"} : Lines());
  }
}

TEST_F(Start, AnArmedMonitorClearsTheLastSuccessAtItsStartAndStop) {
  SentrelController& controller = SentrelController::sharedInstance();
  controller.setJustAuthenticated(true);
  controller.startSentrelEvents();
  EXPECT_FALSE(controller.isJustAuthenticated());
  controller.setJustAuthenticated(true);
  SNTouchIDManager::sharedManager()->stopManager();
  EXPECT_FALSE(controller.isJustAuthenticated());
}

TEST_F(Start, AnOrdinaryApplicationAsksTheHomeScreenWhetherAPromptShows) {
  device.applications().install({"com.example.system", "System", /*isSystem=*/true});
  struct Case {
    bool isSystemApplication;
    bool isPromptInApp;
    bool isPromptAtHome;
    bool answer;
  };
  for (const Case& c : {Case{false, false, false, false}, Case{false, true, false, false},
                        Case{false, false, true, true}, Case{true, true, false, true},
                        Case{true, false, true, false}}) {
    SCOPED_TRACE(
        formatText("%d %d %d", {c.isSystemApplication, c.isPromptInApp, c.isPromptAtHome}));
    const auto asker =
        device.launch(c.isSystemApplication ? "com.example.system" : "com.example.other");
    if (c.isPromptAtHome) promptIn(*springBoard);
    if (c.isPromptInApp) promptIn(*asker);
    takeRequests();
    EXPECT_EQ(isShowingIn(*asker), c.answer);
    int questions = 0;
    for (const auto& message : device.messages().sent())
      if (message.name == showingQuestion) {
        ++questions;
        EXPECT_EQ(message.userInfo, UserInfo());
      }
    EXPECT_EQ(questions, c.isSystemApplication ? 0 : 1);
    SentrelController::sharedInstance().dismissAuthenticationViewController(/*animated=*/false);
    device.time().advance(Seconds(1));
  }
  takeRequests();
  EXPECT_FALSE(isShowingIn(*springBoard));
  EXPECT_THAT(takeRequests(), IsEmpty());
}

TEST(BulletinRequest, CarriesItsTagsFromZeroAndNoOn) {
  BBBulletinRequest request;
  BBBulletinRequest other;
  EXPECT_EQ(sn__FeedIndex(other), 0u);
  EXPECT_FALSE(sn__Protected(other));
  setSn__FeedIndex(request, ~std::uint64_t{0});
  setSn__Protected(request, true);
  setSn__Protected(other, true);
  EXPECT_EQ(sn__FeedIndex(request), ~std::uint64_t{0});
  EXPECT_TRUE(sn__Protected(request));
  EXPECT_EQ(sn__FeedIndex(other), 0u);
}

}  // namespace
}  // namespace sentrel
