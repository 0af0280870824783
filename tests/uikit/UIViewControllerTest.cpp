#include "sentrel/uikit/UIViewController.h"

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UINavigationController.h"
#include "sentrel/uikit/UITabBarController.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel {
namespace {

class UIWindowTest : public UIKitTest {};

TEST_F(UIWindowTest, WindowsAreListedByLevelForAsLongAsTheyLive) {
  auto& application = UIApplication::sharedApplication();
  auto alert = std::make_shared<UIWindow>();
  alert->setWindowLevel(UIWindowLevelAlert);
  const auto first = std::make_shared<UIWindow>();
  const auto second = std::make_shared<UIWindow>();
  EXPECT_EQ(application.windows(), (std::vector{first, second, alert}));
  alert->makeKeyAndVisible();
  EXPECT_EQ(application.keyWindow(), alert);
  EXPECT_FALSE(alert->isHidden());
  alert = nullptr;
  EXPECT_EQ(application.windows(), (std::vector{first, second}));
  EXPECT_EQ(application.keyWindow(), nullptr);
}

TEST_F(UIWindowTest, BelongsToTheProcessThatMadeIt) {
  const auto window = std::make_shared<UIWindow>();
  auto other = device_.launch("com.example.other");
  std::shared_ptr<UIWindow> foreign;
  other->run([&] {
    foreign = std::make_shared<UIWindow>();
    window->makeKeyWindow();
    EXPECT_EQ(UIApplication::sharedApplication().windows(), std::vector{foreign});
  });
  EXPECT_EQ(UIApplication::sharedApplication().keyWindow(), window);
  other = nullptr;
  foreign = nullptr;  // outlives its process's application
}

class UIViewControllerTest : public UIKitTest {
 protected:
  UIViewControllerTest() {
    window_->setRootViewController(root_);
    window_->makeKeyAndVisible();
  }

  std::shared_ptr<UIViewController> root_ = std::make_shared<UIViewController>();
  std::shared_ptr<UIViewController> modal_ = std::make_shared<UIViewController>();
  std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 480));
};

TEST_F(UIViewControllerTest, ShowsWhatItPresentsAndCompletesWhenTheTimeIsOver) {
  bool completed = false;
  root_->presentViewController(modal_, /*animated=*/true, [&] { completed = true; });
  EXPECT_EQ(root_->presentedViewController(), modal_);
  EXPECT_EQ(modal_->presentingViewController(), root_);
  EXPECT_EQ(modal_->view()->window(), window_);
  EXPECT_EQ(modal_->view()->frame(), window_->bounds());
  device_.time().advance(UIViewController::transitionDuration - Seconds(0.001));
  EXPECT_FALSE(completed);
  device_.time().advance(Seconds(0.01));
  EXPECT_TRUE(completed);
}

TEST_F(UIViewControllerTest, DismissesItselfOrWhatItPresentsAndAllThatStandsAbove) {
  const auto parent = UINavigationController::initWithRootViewController(modal_);
  const auto above = std::make_shared<UIViewController>();
  int completed = 0;
  const auto count = [&completed] { ++completed; };
  for (const auto& asked : {root_, std::shared_ptr<UIViewController>(parent), modal_}) {
    root_->presentViewController(parent, /*animated=*/false, {});
    EXPECT_EQ(modal_->presentingViewController(), root_);
    if (asked == root_) parent->presentViewController(above, /*animated=*/false, {});
    asked->dismissViewControllerAnimated(/*animated=*/false, count);
    EXPECT_EQ(root_->presentedViewController(), nullptr);
    EXPECT_EQ(modal_->presentingViewController(), nullptr);
    EXPECT_EQ(parent->view()->superview(), nullptr);
    EXPECT_EQ(above->presentingViewController(), nullptr);
    EXPECT_EQ(above->view()->window(), nullptr);
    EXPECT_EQ(completed, 0);
    device_.time().runDue();
    EXPECT_EQ(std::exchange(completed, 0), 1);
  }
  root_->dismissViewControllerAnimated(/*animated=*/true, count);  // there is nothing to dismiss
  root_->dismissViewControllerAnimated(/*animated=*/true, {});
  device_.time().runUntilIdle();
  EXPECT_EQ(completed, 1);
}

TEST_F(UIViewControllerTest, PresentsOneControllerOnce) {
  const auto other = std::make_shared<UIViewController>();
  int completed = 0;
  root_->presentViewController(modal_, /*animated=*/false, {});
  root_->presentViewController(other, /*animated=*/false, [&] { ++completed; });
  other->presentViewController(modal_, /*animated=*/false, [&] { ++completed; });
  root_->presentViewController(root_, /*animated=*/false, [&] { ++completed; });
  root_->presentViewController(nullptr, /*animated=*/false, [&] { ++completed; });
  device_.time().runUntilIdle();
  EXPECT_EQ(root_->presentedViewController(), modal_);
  EXPECT_EQ(other->presentedViewController(), nullptr);
  EXPECT_EQ(completed, 0);
}

TEST_F(UIViewControllerTest, NavigationShowsTheTopOrTheModalAboveIt) {
  const auto empty = std::make_shared<UINavigationController>();
  EXPECT_EQ(empty->visibleViewController(), nullptr);
  const auto navigation = UINavigationController::initWithRootViewController(root_);
  const auto pushed = std::make_shared<UIViewController>();
  navigation->pushViewController(pushed, /*animated=*/true);
  EXPECT_EQ(navigation->visibleViewController(), pushed);
  EXPECT_EQ(pushed->view()->superview(), navigation->view());
  navigation->presentViewController(modal_, /*animated=*/false, {});
  EXPECT_EQ(navigation->visibleViewController(), modal_);
  navigation->dismissViewControllerAnimated(/*animated=*/false, {});
  pushed->presentViewController(modal_, /*animated=*/false, {});
  EXPECT_EQ(navigation->visibleViewController(), modal_);
  pushed->dismissViewControllerAnimated(/*animated=*/false, {});
  EXPECT_EQ(navigation->popViewControllerAnimated(/*animated=*/true), pushed);
  EXPECT_EQ(pushed->parentViewController(), nullptr);
  EXPECT_EQ(navigation->popViewControllerAnimated(/*animated=*/true), nullptr);
  EXPECT_EQ(navigation->visibleViewController(), root_);
}

TEST_F(UIViewControllerTest, NavigationBarHasTheTitleAndTheWayBackOfTheTop) {
  const auto navigation = UINavigationController::initWithRootViewController(root_);
  const auto& bar = navigation->navigationBar();
  const auto leftButton = [&] { return std::dynamic_pointer_cast<UIButton>(bar->subviews()[1]); };
  root_->setTitle("Settings");
  navigation->pushViewController(modal_, /*animated=*/false);
  navigation->view();
  modal_->setTitle("Passcode");
  EXPECT_EQ(bar->topItem()->title(), "Passcode");
  EXPECT_EQ(leftButton()->currentTitle(), "‹ Settings");
  modal_->navigationItem()->setHidesBackButton(true);
  EXPECT_TRUE(leftButton()->isHidden());
  modal_->navigationItem()->setHidesBackButton(false);
  leftButton()->tap();
  EXPECT_EQ(navigation->topViewController(), root_);
  EXPECT_EQ(modal_->navigationController(), nullptr);
  EXPECT_EQ(root_->navigationController(), navigation);
  EXPECT_TRUE(leftButton()->isHidden());
}

TEST_F(UIViewControllerTest, TabsSelectAmongTheirOwn) {
  UITabBarController none;
  EXPECT_EQ(none.selectedViewController(), nullptr);
  const auto tabs = std::make_shared<UITabBarController>();
  tabs->setViewControllers({root_, modal_});
  EXPECT_EQ(tabs->selectedViewController(), root_);
  tabs->setSelectedViewController(modal_);
  EXPECT_EQ(tabs->view()->subviews(), std::vector{modal_->view()});
  tabs->setSelectedViewController(std::make_shared<UIViewController>());
  EXPECT_EQ(tabs->selectedViewController(), modal_);
}

}  // namespace
}  // namespace sentrel
