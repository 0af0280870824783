#include "sentrel/uikit/UIAlertController.h"
#include "sentrel/uikit/UIAlertView.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel {
namespace {

/// Says which of the system's operations closed it.
class RecordingAlert : public UIAlertController {
 public:
  RecordingAlert() : UIAlertController("Sentrel", "Message", UIAlertControllerStyle::alert) {}

  void _dismissAnimated(bool animated, const std::shared_ptr<UIAlertAction>& action) override {
    operation = "animated";
    UIAlertController::_dismissAnimated(animated, action);
  }
  void _dismissAnimated(bool animated, const std::shared_ptr<UIAlertAction>& action, bool popover,
                        Completion completion) override {
    operation = "completion";
    UIAlertController::_dismissAnimated(animated, action, popover, std::move(completion));
  }
  void _dismissWithAction(const std::shared_ptr<UIAlertAction>& action) override {
    operation = "action";
    UIAlertController::_dismissWithAction(action);
  }

  std::string operation;
};

class UIAlertControllerTest : public UIKitTest {
 protected:
  UIAlertControllerTest() {
    window_->setRootViewController(root_);
    window_->makeKeyAndVisible();
    action_ = UIAlertAction::actionWithTitle("OK", UIAlertActionStyle::standard,
                                             [this](const auto& action) {
                                               ran_ += action->title() + ".";
                                               wasPresented_ = alert_->_isPresented();
                                             });
    alert_->addAction(action_);
  }

  void present() { root_->presentViewController(alert_, /*animated=*/true, {}); }

  std::shared_ptr<UIViewController> root_ = std::make_shared<UIViewController>();
  std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 480));
  std::shared_ptr<RecordingAlert> alert_ = std::make_shared<RecordingAlert>();
  std::shared_ptr<UIAlertAction> action_;
  std::string ran_;
  bool wasPresented_ = true;
};

TEST_F(UIAlertControllerTest, ATapClosesByTheOperationOfTheSystemAndThenRunsTheHandler) {
  for (const auto& [dismissal, operation] :
       {std::pair(UIAlertDismissal::withAction, "action"),
        {UIAlertDismissal::animated, "animated"},
        {UIAlertDismissal::animatedWithCompletion, "completion"}}) {
    UIApplication::sharedApplication().setAlertDismissal(dismissal);
    ran_.clear();
    present();
    EXPECT_TRUE(alert_->_isPresented());
    alert_->tap(action_);
    EXPECT_EQ(alert_->operation, operation);
    EXPECT_FALSE(alert_->_isPresented());
    EXPECT_EQ(ran_, "") << "not before the alert is gone";
    device_.time().advance(UIViewController::transitionDuration);
    EXPECT_EQ(ran_, "OK.");
    EXPECT_FALSE(wasPresented_);
  }
}

TEST_F(UIAlertControllerTest, OnlyAnEnabledActionOfItsOwnCanBeTappedWhileItShows) {
  const auto silent = UIAlertAction::actionWithTitle("x", UIAlertActionStyle::cancel, {});
  alert_->tap(action_);
  present();
  alert_->tap(silent);
  alert_->tap(nullptr);
  action_->setEnabled(false);
  alert_->tap(action_);
  EXPECT_EQ(alert_->operation, "");
  EXPECT_TRUE(alert_->_isPresented());
  alert_->addAction(silent);
  alert_->tap(silent);
  device_.time().runUntilIdle();
  EXPECT_FALSE(alert_->_isPresented());
}

TEST_F(UIAlertControllerTest, ANewTitleShowsAfterTheListIsReloaded) {
  present();
  const auto list = std::dynamic_pointer_cast<UICollectionView>(
      alert_->instanceVariable("_actionCollectionView"));
  ASSERT_TRUE(list);
  EXPECT_EQ(alert_->instanceVariable("_other"), nullptr);
  const auto shown = [&] {
    return std::dynamic_pointer_cast<UIButton>(list->subviews().at(0))->currentTitle();
  };
  action_->setTitle("Use Face ID");
  EXPECT_EQ(shown(), "OK");
  list->reloadData();
  EXPECT_EQ(shown(), "Use Face ID");
  std::dynamic_pointer_cast<UIButton>(list->subviews().at(0))->tap();
  EXPECT_FALSE(alert_->_isPresented());
}

TEST_F(UIAlertControllerTest, StandsInTheMiddleWithItsContentBetweenTextsAndButtons) {
  const auto content = std::make_shared<UIViewController>();
  content->setPreferredContentSize({0, 142});
  alert_->setContentViewController(content);
  present();
  window_->layoutIfNeeded();
  const CGRect frame = alert_->view()->frame();
  EXPECT_EQ(frame.size.width, 270);
  EXPECT_EQ(frame.midX(), 160);
  EXPECT_EQ(frame.midY(), 240);
  const CGRect inside = content->view()->frame();
  EXPECT_EQ(inside.size, (CGSize{270, 142}));
  const auto list = alert_->_actionCollectionView();
  EXPECT_EQ(list->frame().origin.y, inside.maxY());
  EXPECT_EQ(list->frame().maxY(), frame.size.height);
  EXPECT_EQ(list->subviews().at(0)->frame(), CGRectMake(0, 0, 270, 44));
}

TEST_F(UIAlertControllerTest, TwoShortButtonsStandSideBySideAndLongOnesDoNot) {
  alert_->addAction(UIAlertAction::actionWithTitle("Cancel", UIAlertActionStyle::cancel, {}));
  present();
  window_->layoutIfNeeded();
  const auto list = alert_->_actionCollectionView();
  for (const auto& button : list->subviews()) {
    EXPECT_EQ(button->layer().borderWidth(), 0);
    EXPECT_EQ(button->subviews().back()->frame(), CGRectMake(0, 0, 135, 0.5)) << "a line above";
  }
  EXPECT_EQ(list->subviews().at(1)->frame(), CGRectMake(135, 0, 135, 44));
  const double height = alert_->view()->frame().size.height;
  alert_->dismissViewControllerAnimated(/*animated=*/false, {});
  action_->setTitle("A title that fills more than half");
  list->reloadData();
  present();
  window_->layoutIfNeeded();
  EXPECT_EQ(list->subviews().at(1)->frame(), CGRectMake(0, 44, 270, 44));
  EXPECT_EQ(alert_->view()->frame().size.height, height + 44);
}

// --- The older alert -----------------------------------------------------------------------------

struct RecordingDelegate : UIAlertViewDelegate {
  void alertView(UIAlertView&, int index) override { indexes.push_back(index); }

  std::vector<int> indexes;
};

class UIAlertViewTest : public UIKitTest {
 protected:
  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::shared_ptr<UIAlertView> alert_ =
      std::make_shared<UIAlertView>("Sentrel", std::nullopt, delegate_, "Cancel");
};

TEST_F(UIAlertViewTest, ShowsItselfAboveEverythingUntilAButtonIsTapped) {
  EXPECT_EQ(alert_->addButtonWithTitle("Enter Passcode"), 1);
  alert_->tap(1);
  alert_->show();
  alert_->show();
  const auto windows = UIApplication::sharedApplication().windows();
  ASSERT_EQ(windows.size(), 1u);
  EXPECT_FALSE(windows[0]->isHidden());
  EXPECT_EQ(windows[0]->windowLevel(), UIWindowLevelAlert);
  EXPECT_EQ(alert_->window(), windows[0]);
  alert_->tap(2);
  alert_->tap(-1);
  EXPECT_TRUE(alert_->isVisible());
  alert_->tap(1);
  EXPECT_FALSE(alert_->isVisible());
  EXPECT_EQ(alert_->window(), nullptr);
  EXPECT_TRUE(delegate_->indexes.empty());
  device_.time().advance(UIViewController::transitionDuration);
  EXPECT_EQ(delegate_->indexes, std::vector{1});
}

TEST_F(UIAlertViewTest, KeepsItselfWhileShownAndTellsItsDelegateOnce) {
  const std::weak_ptr<UIAlertView> weak = alert_;
  alert_->show();
  alert_->dismissWithClickedButtonIndex(0, /*animated=*/false);
  alert_->dismissWithClickedButtonIndex(0, /*animated=*/false);
  alert_->dismissAnimated(/*animated=*/true);
  device_.time().runUntilIdle();
  EXPECT_EQ(delegate_->indexes, std::vector{0});
  alert_->show();
  alert_->dismissAnimated(/*animated=*/true);
  device_.time().runUntilIdle();
  EXPECT_EQ(delegate_->indexes, std::vector{0});
  alert_->show();
  alert_.reset();
  ASSERT_FALSE(weak.expired());
  weak.lock()->dismissWithClickedButtonIndex(0, /*animated=*/true);
  delegate_.reset();
  device_.time().runUntilIdle();
  EXPECT_TRUE(weak.expired());
}

TEST_F(UIAlertViewTest, StaysShownWithoutAnOwnerUntilItsProcessEnds) {
  auto process = device_.launch("com.example.letters");
  const auto shown = [this] {
    const auto alert = std::make_shared<UIAlertView>("Letters", std::nullopt, delegate_, "Cancel");
    alert->show();
    return alert;
  };
  const std::weak_ptr<UIAlertView> unowned = process->run(shown);
  alert_ = process->run(shown);
  ASSERT_FALSE(unowned.expired());
  EXPECT_TRUE(unowned.lock()->isVisible());
  EXPECT_FALSE(unowned.lock()->window()->isHidden());
  process.reset();
  EXPECT_TRUE(unowned.expired());
  EXPECT_FALSE(alert_->isVisible()) << "owned from outside it lives on, but nothing shows it";
  EXPECT_EQ(alert_->window(), nullptr);
}

TEST_F(UIAlertViewTest, BothWaysToRetitleAButtonShowTheTitle) {
  alert_->addButtonWithTitle("Enter Passcode");
  alert_->show();
  alert_->_updateButtonTitle("Use Face ID", 1);
  EXPECT_EQ(alert_->buttonTitleAtIndex(1), "Use Face ID");
  alert_->_changeButtonTitleAtIndex(1, "Use Fingerprint");
  EXPECT_EQ(alert_->buttonTitleAtIndex(1), "Use Fingerprint");
  alert_->_changeButtonTitleAtIndex(7, "x");
  EXPECT_EQ(alert_->buttonTitleAtIndex(7), "");
}

TEST_F(UIAlertViewTest, IsHigherByItsAccessoryView) {
  alert_->show();
  const double height = alert_->frame().size.height;
  alert_->dismissAnimated(/*animated=*/false);
  alert_->setAccessoryView(std::make_shared<UIView>(CGRectMake(0, 0, 270, 170)));
  alert_->show();
  EXPECT_EQ(alert_->frame().size.height, height + 170);
  EXPECT_EQ(alert_->accessoryView()->window(), alert_->window());
}

TEST_F(UIAlertViewTest, EditingInItEndsOnlyWhereTheTapPreparesADismissal) {
  struct Unprepared : UIAlertView {
    using UIAlertView::UIAlertView;
    bool _prepareToDismissForTappedIndex(int index) override { return index == 0; }
    void _dismissForTappedIndex(int) override {}
  };
  const auto alert = std::make_shared<Unprepared>("", std::nullopt, delegate_, "Cancel");
  alert->addButtonWithTitle("Other");
  const auto field = std::make_shared<UITextField>();
  alert->setAccessoryView(field);
  alert->show();
  field->becomeFirstResponder();
  alert->tap(1);
  EXPECT_TRUE(field->isFirstResponder());
  alert->tap(0);
  EXPECT_FALSE(field->isFirstResponder());
  alert->dismissAnimated(/*animated=*/false);
}

}  // namespace
}  // namespace sentrel
