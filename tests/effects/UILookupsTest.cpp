#include "sentrel/effects/UILookups.h"

#include <gmock/gmock.h>

#include "sentrel/effects/UIAlerts.h"
#include "sentrel/uikit/UIAlertController.h"
#include "sentrel/uikit/UINavigationController.h"
#include "sentrel/uikit/UITabBarController.h"
#include "tests/support/HomeScreenTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

const UIClass keyboardWindow("UIRemoteKeyboardWindow", &UIWindow::staticClass());
const UIClass inputContainer("UIInputSetContainerView", &UIView::staticClass());
const UIClass inputView("_UIKBCompatInputView", &UIView::staticClass());

class UILookups : public HomeScreenTest {
 protected:
  static std::shared_ptr<UIViewController> controller() {
    return std::make_shared<UIViewController>();
  }
};

TEST_F(UILookups, TopIsWhatTheUserSeesAboveAllContainers) {
  const auto page = controller();
  const auto modal = controller();
  const auto onModal = controller();
  const auto navigation = UINavigationController::initWithRootViewController(page);
  const auto tabs = std::make_shared<UITabBarController>();
  tabs->setViewControllers({controller(), navigation});
  EXPECT_NE(sn__topViewController(tabs), page) << "the first tab is selected";
  tabs->setSelectedViewController(navigation);
  EXPECT_EQ(sn__topViewController(tabs), page);
  navigation->presentViewController(modal, false, {});
  modal->presentViewController(onModal, false, {});
  EXPECT_EQ(sn__topViewController(tabs), onModal);
  EXPECT_EQ(sn__topViewController(page), page);
}

TEST_F(UILookups, ContainersThatShowNothingHaveNoTop) {
  const auto empty = UINavigationController::initWithRootViewController(nullptr);
  const auto tabs = std::make_shared<UITabBarController>();
  tabs->setViewControllers({empty});
  EXPECT_EQ(sn__topViewController(tabs), nullptr);
  EXPECT_EQ(sn__topViewController(std::make_shared<UITabBarController>()), nullptr);
  EXPECT_EQ(sn__topViewController(std::shared_ptr<UIViewController>()), nullptr);
}

TEST_F(UILookups, TopOfTheApplicationIsThatOfItsKeyWindow) {
  const auto& application = UIApplication::sharedApplication();
  EXPECT_EQ(sn__topViewController(application), nullptr);
  const auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 480));
  window->makeKeyWindow();
  EXPECT_EQ(sn__topViewController(application), nullptr);
  window->setRootViewController(controller());
  EXPECT_EQ(sn__topViewController(application), window->rootViewController());
}

TEST_F(UILookups, KeyboardIsTheFirstContainerInAKeyboardWindowOfThatVeryClass) {
  static const UIClass ownWindow("OwnKeyboardWindow", &keyboardWindow);
  static const UIClass ownContainer("OwnContainer", &inputContainer);
  const auto makeContainer = [](const UIClass& uiClass) {
    return std::make_shared<UIView>(CGRect(), uiClass);
  };
  EXPECT_EQ(sn__keyBoard(), nullptr);
  const auto subclassed = showInWindow(makeContainer(inputContainer), ownWindow);
  EXPECT_EQ(sn__keyBoard(), nullptr);
  const auto nested = std::make_shared<UIView>();
  nested->addSubview(makeContainer(inputContainer));
  const auto window = showInWindow(nested, keyboardWindow);
  window->addSubview(makeContainer(ownContainer));
  EXPECT_EQ(sn__keyBoard(), nullptr);
  const auto container = makeContainer(inputContainer);
  window->addSubview(container);
  EXPECT_EQ(sn__keyBoard(), container);
}

TEST_F(UILookups, KeyAreaIsFoundInEveryKeyboardWindow) {
  std::vector<std::shared_ptr<UIView>> found;
  const auto note = [&found](const std::shared_ptr<UIView>& view) { found.push_back(view); };
  sn__keyBoard(note);
  EXPECT_TRUE(found.empty());
  const auto deep = std::make_shared<UIView>(CGRect(), inputView);
  const auto container = std::make_shared<UIView>();
  container->addSubview(deep);
  const auto first = showInWindow(container, keyboardWindow);
  const auto direct = std::make_shared<UIView>(CGRect(), inputView);
  const auto second = showInWindow(direct, keyboardWindow);
  const auto other = showInWindow(std::make_shared<UIView>(CGRect(), inputView));
  sn__keyBoard(note);
  EXPECT_THAT(found, ElementsAre(deep, direct));
}

TEST_F(UILookups, WindowIsTheFirstOfItsClassOrASubclass) {
  static const UIClass bulletin("SBBulletinWindow", &UIWindow::staticClass());
  static const UIClass ownBulletin("OwnBulletinWindow", &bulletin);
  const auto plain = showInWindow(std::make_shared<UIView>());
  EXPECT_EQ(sn__windowOfClass("SBBulletinWindow"), nullptr);
  const auto own = showInWindow(std::make_shared<UIView>(), ownBulletin);
  const auto exact = showInWindow(std::make_shared<UIView>(), bulletin);
  EXPECT_EQ(sn__windowOfClass("SBBulletinWindow"), own);
}

class UIAlerts : public HomeScreenTest {
 protected:
  UIAlerts() {
    for (const char* key : {"Information", "Warning", "Error", "OK"})
      process->mainBundle().translate(key, std::string("<") + key + ">");
    window->setRootViewController(presenter);
    window->setHidden(false);
  }

  /// The title of the alert on screen, once it is there.
  std::string shownTitle() {
    device.time().runDue();
    const auto alert =
        std::dynamic_pointer_cast<UIAlertController>(presenter->presentedViewController());
    if (!alert) return "no alert";
    EXPECT_EQ(alert->message(), "text");
    EXPECT_EQ(alert->preferredStyle(), UIAlertControllerStyle::alert);
    const std::string title = alert->title();
    presenter->dismissViewControllerAnimated(false, {});
    return title;
  }

  std::shared_ptr<UIViewController> presenter = std::make_shared<UIViewController>();
  std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 480));
};

TEST_F(UIAlerts, HaveTheHostsTitles) {
  sn__showInformation(*presenter, "text");
  EXPECT_EQ(presenter->presentedViewController(), nullptr) << "only on a later turn";
  EXPECT_EQ(shownTitle(), "<Information>");
  sn__showWarning(*presenter, "text");
  EXPECT_EQ(shownTitle(), "<Warning>");
  sn__showError(*presenter, "text");
  EXPECT_EQ(shownTitle(), "<Error>");
  sn__showAlertWithTitle(*presenter, "Own", "text", {});
  EXPECT_EQ(shownTitle(), "Own");
}

TEST_F(UIAlerts, ButtonClosesTheAlertAndRunsTheBlock) {
  int ran = 0;
  sn__showError(*presenter, "text", [&ran] { ++ran; });
  device.time().runDue();
  EXPECT_TRUE(tapButton("<OK>"));
  device.time().runUntilIdle();
  EXPECT_EQ(ran, 1);
  EXPECT_EQ(presenter->presentedViewController(), nullptr);
}

TEST_F(UIAlerts, ControllerThatIsGonePresentsNothing) {
  auto gone = std::make_shared<UIViewController>();
  sn__showInformation(*gone, "text");
  const std::weak_ptr<UIViewController> weak = gone;
  gone.reset();
  EXPECT_TRUE(weak.expired());
  device.time().runUntilIdle();
}

}  // namespace
}  // namespace sentrel
