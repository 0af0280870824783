#include "sentrel/authui/SNWindow.h"
#include "tests/support/BridgeTest.h"
#include "tests/support/PromptTest.h"

namespace sentrel {
namespace {

using Controller = SentrelController;
using Completion = Controller::Completion;
using Presenter = Controller::Presenter;
using Text = Controller::Text;
using testing::ElementsAre;
using testing::IsEmpty;

class Pane final : public PSSpecifier {
 public:
  std::optional<std::string> name() const override { return "Wi-Fi"; }
  std::optional<std::string> identifier() const override { return "WIFI"; }
};

/// How the session of a success is called in the tables.
std::string nameOf(const SessionItem& item) {
  if (const auto* text = item.text()) return std::string(*text);
  return item.wireForm() ? describe(*item.wireForm()) : "an object";
}

class Requests : public PromptTest {
 protected:
  using Ask = std::function<void(Controller&, const Presenter&, Completion)>;

  struct Kind {
    const char* name;
    Ask ask;
    Text title;
    /// Of the session; empty for none.
    std::string key;
    bool asksWhetherProtected = false;
    Text message = "Please authenticate yourself using Face ID.";
    bool isInOverlay = false;
  };

  /// The request that `method` makes of `arguments`.
  template <class Method, class... Arguments>
  static Ask by(Method method, Arguments... arguments) {
    return [=](Controller& it, const Presenter& presenter, Completion then) {
      (it.*method)(arguments..., presenter, std::move(then));
    };
  }

  std::vector<Kind> kinds() {
    using It = Controller;
    const auto app = [](It& it, auto& by, auto then) {
      it.requiresAuthentication("com.a", by, then);
    };
    const auto rowOf = [this](It& it, auto& by, auto then) {
      it.requiresAuthenticationForSpecifier(pane, by, then);
    };
    const auto titledRow = [this](It& it, auto& by, auto then) {
      it.requiresAuthenticationForSpecifier(pane, "Title", by, then);
    };
    const auto noRow = [](It& it, auto& by, auto then) {
      it.requiresAuthenticationForSpecifier(nullptr, by, then);
    };
    const auto texts = [](It& it, auto& by, auto then) {
      it.requiresAuthentication("T", "M", by, then);
    };
    const auto overlay = [](It& it, auto&, auto then) {
      it.requiresAuthentication("T", "M", then);
    };
    const char* record =
        "{SentrelAllIcons = ({SentrelBundleIdentifier = \"com.a\"; SentrelFolderDisplayName = "
        "\"Letters\"}); SentrelFolderDisplayName = \"Private\"}";
    const auto flipSwitch = &It::requiresAuthenticationForFlipSwitch;
    const auto item = &It::requiresAuthenticationForItem;
    return {
        {"app", app, "Letters", "com.a", true},
        {"service", by(&It::requiresAuthenticationForSystemService, "com.a.share"), "Sharing",
         "com.a.share", true},
        {"folder", by(&It::requiresAuthenticationForFolder, folder), "Private", record, true},
        {"item", by(item, "T", "M"), "T", "", false, "M"},
        {"item without texts", by(item, std::nullopt, std::nullopt), "", "", false, ""},
        {"reboot", by(&It::requiresAuthenticationForReboot), "Neustart", "Neustart"},
        {"respring", by(&It::requiresAuthenticationForRespring), "Respring Protection",
         "Respring Protection"},
        {"arrangement", by(&It::requiresAuthenticationForAppArrangement),
         "App Arrangement Protection", "App Arrangement Protection"},
        {"deletion", by(&It::requiresAuthenticationForAppDeletion), "App Delete Protection",
         "App Delete Protection"},
        {"switcher", by(&It::requiresAuthenticationForAppSwitcher), "App Switcher Protection",
         "App Switcher Protection"},
        {"flip switch", by(flipSwitch, "com.a.wifi"), "Wireless", "com.a.wifi"},
        {"unknown flip switch", by(flipSwitch, "com.b"), "", "com.b"},
        {"specifier", rowOf, "Wi-Fi", "WIFI"},
        {"specifier with a title", titledRow, "Title", "an object"},
        {"no specifier", noRow, "", ""},
        {"photos", by(&It::requiresAuthenticationForPhotos), "Photos Protection",
         "Photos Protection"},
        {"notifications", by(&It::requiresAuthenticationForLockscreenNotifications),
         "Notifications Protection", "Notifications Protection"},
        {"texts", texts, "T", "T", false, "M"},
        {"texts over everything", overlay, "T", "T", false, "M", true},
    };
  }

  void startWithItems(bool areProtected) {
    start("14.0");
    process->mainBundle().translate("Reboot Protection", "Neustart");
    device.applications().install({"com.a.share", "Sharing"});
    device.switchPanel().setTitle("com.a.wifi", "Wireless");
    PropertyList::Dictionary file{{"SentrelEnabled", true},
                                  {"SentrelRemember", true},
                                  {"SentrelRememberUntilDeviceLocked", true}};
    if (areProtected) {
      file.emplace("SentrelApplications", PropertyList::Array{"com.a"});
      file.emplace("SentrelAllFoldersProtected", true);
    }
    useSettings(std::move(file));
    SNWindow::sharedInstance()->closeWindow();
  }

  Lines keys() {
    Lines names;
    for (const SessionKey& key : controller().rememberTillDeviceLockCache())
      names.push_back(nameOf(key.item()));
    return names;
  }

  std::shared_ptr<simulated::SimulatedFolder> folder = [this] {
    device.applications().install({"com.a", "Letters"});
    return device.homeScreen().addFolder("Private", {"com.a"});
  }();
  std::shared_ptr<PSSpecifier> pane = std::make_shared<Pane>();
};

TEST_F(Requests, PromptInTheirNameAndRecordTheirKeyOnSuccessAlone) {
  for (const Kind& kind : kinds()) {
    SCOPED_TRACE(kind.name);
    startWithItems(/*areProtected=*/true);
    kind.ask(controller(), presenter(), noting("cancelled"));
    advance(1);
    EXPECT_TRUE(tapButton("Cancel"));
    advance(1);
    EXPECT_THAT(takeHappened(), ElementsAre("cancelled NO NO"));
    kind.ask(controller(), presenter(), noting());
    EXPECT_THAT(happened, IsEmpty());
    advance(1);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->title(), "Sentrel");
    EXPECT_EQ(view().titleLabel()->text(), kind.title);
    EXPECT_EQ(view().messageLabel()->text(), kind.message);
    const auto overlay = SNWindow::sharedInstance();
    EXPECT_EQ(alert()->presentingViewController(),
              kind.isInOverlay ? overlay->rootViewController() : presenter());
    EXPECT_EQ(overlay->isHidden(), !kind.isInOverlay);
    EXPECT_THAT(keys(), IsEmpty());
    sense(match);
    advance(1);
    EXPECT_THAT(takeHappened(), ElementsAre("ended YES YES"));
    EXPECT_EQ(keys(), kind.key.empty() ? Lines() : Lines{kind.key});
    EXPECT_TRUE(overlay->isHidden());
  }
}

TEST_F(Requests, OfTheFirstThreeKindsAreAllowedAtOnceWhereNothingIsProtected) {
  for (const Kind& kind : kinds()) {
    SCOPED_TRACE(kind.name);
    startWithItems(/*areProtected=*/false);
    kind.ask(controller(), presenter(), noting());
    EXPECT_EQ(takeHappened(), kind.asksWhetherProtected ? Lines{"ended NO YES"} : Lines());
    advance(1);
    EXPECT_EQ(isShowing(), !kind.asksWhetherProtected);
    EXPECT_THAT(keys(), IsEmpty());
  }
}

TEST_F(Requests, NeedNoCompletionAndNoPresenter) {
  for (const Kind& kind : kinds()) {
    SCOPED_TRACE(kind.name);
    startWithItems(/*areProtected=*/false);
    kind.ask(controller(), nullptr, {});
    startWithItems(/*areProtected=*/true);
    kind.ask(controller(), nullptr, {});
    advance(1);
    EXPECT_EQ(isShowing(), kind.isInOverlay);
    sense(match);
    advance(1);
    EXPECT_EQ(keys(), kind.key.empty() ? Lines() : Lines{kind.key});
    EXPECT_FALSE(sensorManager().isRunning());
  }
}

TEST_F(Requests, OfAFolderRecordANewKeyOnEverySuccess) {
  startWithItems(/*areProtected=*/true);
  for (int success = 1; success <= 2; ++success) {
    controller().requiresAuthenticationForFolder(folder, presenter(), noting());
    advance(1);
    folder->setDisplayName(std::nullopt);
    sense(match);
    advance(1);
    EXPECT_EQ(keys().size(), static_cast<std::size_t>(success)) << "never inside a session";
  }
  EXPECT_THAT(keys(), testing::Each(testing::HasSubstr("; SentrelFolderDisplayName = \"\"}")))
      << "as the folder is at the success";
  controller().requiresAuthenticationForFolder(nullptr, presenter(), noting("no folder"));
  EXPECT_THAT(takeHappened(), testing::Contains("no folder NO YES"));
}

// --- Photos, relayed -----------------------------------------------------------------------------

class PhotosRelay : public BridgeTest {
 protected:
  void startApp(const std::string& version) {
    device.system().version = version;
    app = device.launch(std::string(appIdentifier));
    enableLogging();
    inApp([] {
      SentrelController::sharedInstance();
      SNUtils::authenticationMessage();
    });
    takeAppLog();
    takeRequests();
  }

  void askInApp() {
    inApp([this] {
      SentrelController::sharedInstance().requiresAuthenticationForPhotos(
          nullptr, [this](bool authenticated, bool allowed) {
            outcomes.emplace_back(authenticated, allowed);
          });
    });
    device.time().advance(Seconds(1));
  }

  Lines takeOwnLog() {
    Lines lines = takeAppLog();
    std::erase_if(lines, [](const std::string& line) {
      return line.find("completionHandler") == std::string::npos;
    });
    return lines;
  }

  std::vector<std::pair<bool, bool>> outcomes;
};

TEST_F(PhotosRelay, IsPromptedByTheHomeScreenOnOlderSystemsAndAnsweredByNotification) {
  startApp("10.3");
  askInApp();
  ASSERT_THAT(device.messages().sent(), testing::Not(IsEmpty()));
  EXPECT_EQ(device.messages().sent()[0].name, "com.quorvin.sentrel.app.handle.authentication");
  EXPECT_EQ(device.messages().sent()[0].userInfo,
            (PropertyList::Dictionary{
                {"TITLE_KEY", "Photos Protection"},
                {"MESSAGE_KEY", "Please authenticate yourself using finger print."}}));
  EXPECT_TRUE(SentrelController::sharedInstance().isAlertShowing());
  EXPECT_EQ(
      SNAuthenticationViewController::sharedInstance()->authenticationView()->titleLabel()->text(),
      "Photos Protection");
  EXPECT_FALSE(SNWindow::sharedInstance()->isHidden());
  EXPECT_THAT(outcomes, IsEmpty());
  takeAppLog();
  device.sensor().emit(3);
  device.time().advance(Seconds(1));
  EXPECT_THAT(outcomes, ElementsAre(std::pair(true, true)));
  EXPECT_THAT(takeOwnLog(), ElementsAre("going to call completionHandler(), success: 1"));

  askInApp();
  EXPECT_TRUE(tapButton("Cancel"));
  device.time().advance(Seconds(1));
  EXPECT_THAT(outcomes, ElementsAre(std::pair(true, true), std::pair(false, false)));
  EXPECT_THAT(takeOwnLog(), ElementsAre("going to call completionHandler(), success: 0"));
  device.darwin().post({"com.quorvin.sentrelAuthenticationSuccess", std::nullopt});
  device.time().advance(Seconds(1));
  EXPECT_EQ(outcomes.size(), 2u) << "nobody waits for it any more";
}

TEST_F(PhotosRelay, IsPromptedWhereItIsAskedOnNewerSystemsAndInTheHomeScreen) {
  startApp("11.0");
  askInApp();
  EXPECT_THAT(takeRequests(),
              testing::Not(testing::Contains("com.quorvin.sentrel.app.handle.authentication")));
  EXPECT_FALSE(SentrelController::sharedInstance().isAlertShowing());
  inApp([] { EXPECT_NE(SentrelController::sharedInstance().alertController(), nullptr); });
  startApp("10.3");
  SentrelController::sharedInstance().requiresAuthenticationForPhotos(
      SNWindow::sharedInstance()->rootViewController(), {});
  device.time().advance(Seconds(1));
  EXPECT_TRUE(SentrelController::sharedInstance().isAlertShowing());
}

}  // namespace
}  // namespace sentrel
