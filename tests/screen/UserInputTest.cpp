#include "device/screen/UserInput.h"

#include <numbers>

#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class UserInputs : public ScreenTest {
 protected:
  UserInputs() {
    window_->makeKeyAndVisible();
    button_->setFrame(CGRectMake(10, 10, 40, 20));
    button_->addTarget([this](const auto&) { ++taps_; }, UIControlEventTouchUpInside);
    window_->addSubview(button_);
    window_->addSubview(field_);
    window_->layoutIfNeeded();
  }

  void tap(CGPoint point) {
    input_.touchBegan(point);
    input_.touchEnded(point);
  }

  std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>(CGRectMake(0, 0, 100, 100));
  std::shared_ptr<UIButton> button_ = UIButton::buttonWithType(UIButtonType::custom);
  std::shared_ptr<UITextField> field_ = std::make_shared<UITextField>(CGRectMake(10, 60, 40, 20));
  UserInput input_{UIApplication::sharedApplication()};
  int taps_ = 0;
};

TEST_F(UserInputs, AButtonIsPressedWhileTheFingerIsOnItAndActsWhenItIsLiftedThere) {
  input_.touchBegan({20, 20});
  EXPECT_TRUE(button_->isHighlighted());
  input_.touchMoved({90, 90});
  EXPECT_FALSE(button_->isHighlighted());
  input_.touchMoved({21, 21});
  EXPECT_TRUE(button_->isHighlighted());
  input_.touchEnded({21, 21});
  EXPECT_FALSE(button_->isHighlighted());
  EXPECT_EQ(taps_, 1);
}

TEST_F(UserInputs, AFingerThatSlidAwayOrWasCancelledDoesNothing) {
  input_.touchBegan({20, 20});
  input_.touchEnded({90, 90});
  input_.touchBegan({90, 90});
  input_.touchEnded({20, 20});
  input_.touchBegan({20, 20});
  input_.touchCancelled();
  input_.touchEnded({20, 20});
  EXPECT_EQ(taps_, 0);
  EXPECT_FALSE(button_->isHighlighted());
}

TEST_F(UserInputs, TouchesReachTheFrontmostViewThatTakesThem) {
  const auto cover = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
  window_->addSubview(cover);
  tap({20, 20});
  EXPECT_EQ(taps_, 0);
  cover->setUserInteractionEnabled(false);
  tap({20, 20});
  EXPECT_EQ(taps_, 1);
  cover->setUserInteractionEnabled(true);
  cover->setHidden(true);
  tap({20, 20});
  EXPECT_EQ(taps_, 2);
}

TEST_F(UserInputs, AVisibleWindowInFrontTakesEveryTouch) {
  const auto front = std::make_shared<UIWindow>(CGRectMake(0, 0, 100, 100));
  front->setWindowLevel(UIWindowLevelAlert);
  tap({20, 20});
  front->setHidden(false);
  tap({20, 20});
  EXPECT_EQ(taps_, 1);
}

TEST_F(UserInputs, TurnedViewsAreTouchedWhereTheyAreSeen) {
  button_->setFrame(CGRectMake(30, 45, 40, 10));
  button_->setTransform(CGAffineTransform::makeRotation(std::numbers::pi / 2));
  tap({50, 32});
  EXPECT_EQ(taps_, 1);
  tap({32, 50});
  EXPECT_EQ(taps_, 1);
}

TEST_F(UserInputs, ATappedFieldGetsWhatIsTyped) {
  input_.typeText("lost");
  tap({20, 70});
  input_.typeText("1");
  input_.typeText("é");
  input_.typeText("3");
  input_.pressBackspace();
  EXPECT_EQ(field_->text(), "1é");
}

TEST_F(UserInputs, AButtonThatGoesUnderTheFingerIsForgotten) {
  input_.touchBegan({20, 20});
  button_->removeFromSuperview();
  button_.reset();
  input_.touchMoved({20, 20});
  input_.touchEnded({20, 20});
  EXPECT_EQ(taps_, 0);
}

}  // namespace
}  // namespace sentrel::screen
