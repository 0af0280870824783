#include "device/screen/ApplicationWindow.h"

#include <cstdlib>
#include <functional>

#include "device/screen/Fingerprint.h"
#include "sentrel/uikit/PKGlyphView.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class VisibleWindow : public ScreenTest {
 protected:
  VisibleWindow() { window_->makeKeyAndVisible(); }

  template <class View>
  std::shared_ptr<View> add(std::shared_ptr<View> view) {
    view->setFrame(CGRectMake(10, 10, 40, 20));
    window_->addSubview(view);
    return view;
  }

  std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>(CGRectMake(0, 0, 375, 667));
  UIApplication& application_ = UIApplication::sharedApplication();
};

TEST_F(VisibleWindow, EveryVisibleChangeChangesTheFingerprintAndNothingElseDoes) {
  const auto box = add(std::make_shared<UIView>());
  const auto label = add(std::make_shared<UILabel>());
  const auto field = add(std::make_shared<UITextField>());
  const auto button = add(UIButton::buttonWithType(UIButtonType::system));
  const auto image = add(std::make_shared<UIImageView>());
  const auto glyph = add(std::make_shared<PKGlyphView>(2, PKGlyphViewClass{}));
  const std::vector<std::function<void()>> changes = {
      [&] { box->setFrame(CGRectMake(11, 10, 40, 20)); },
      [&] { box->setAlpha(0.5); },
      [&] { box->setBackgroundColor(red()); },
      [&] { box->setTransform(CGAffineTransform::makeRotation(1)); },
      [&] { box->layer().setCornerRadius(3); },
      [&] { label->setText("Later"); },
      [&] { label->setTextColor(blue()); },
      [&] { field->setText("1"); },
      [&] { field->setSecureTextEntry(true); },
      [&] { field->becomeFirstResponder(); },
      [&] { button->setHighlighted(true); },
      [&] { button->setEnabled(false); },
      [&] { image->setImage(std::make_shared<UIImage>()); },
      [&] { glyph->setState(12, /*animated=*/false, {}); },
      [&] { window_->bringSubviewToFront(box); },
      [&] { box->setHidden(true); },
      [&] { label->removeFromSuperview(); },
      [&] { window_->setHidden(true); },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    const std::size_t before = fingerprintOf(application_);
    EXPECT_EQ(fingerprintOf(application_), before);
    changes[i]();
    EXPECT_NE(fingerprintOf(application_), before) << "change " << i;
  }
  const std::size_t hidden = fingerprintOf(application_);
  box->setAlpha(0.1);
  EXPECT_EQ(fingerprintOf(application_), hidden) << "inside a hidden window";
}

TEST_F(VisibleWindow, AnAnimationIsSeenUntilItIsOver) {
  const auto box = add(std::make_shared<UIView>());
  const auto animates = [this] { return isAnimating(application_); };
  EXPECT_FALSE(animates());
  UIView::animateWithDuration(Seconds(1), [&] { box->setAlpha(0.5); });
  EXPECT_TRUE(animates());
  device_.time().advance(Seconds(0.9));
  EXPECT_TRUE(animates());
  window_->setHidden(true);
  EXPECT_FALSE(animates());
  window_->setHidden(false);
  device_.time().advance(Seconds(0.2));
  device_.time().setWallClock(device_.time().now() - Seconds(3600));
  EXPECT_FALSE(animates());
}

TEST_F(VisibleWindow, ATapInTheDesktopsWindowReachesTheButton) {
  setenv("SDL_VIDEODRIVER", "offscreen", 1);
  const auto button = add(UIButton::buttonWithType(UIButtonType::system));
  int taps = 0;
  button->addTarget([&](const auto&) { ++taps; }, UIControlEventTouchUpInside);
  ApplicationWindow shown(process_->process(), fonts(), {.title = "test"});
  for (const auto type : {SDL_FINGERDOWN, SDL_FINGERUP}) {
    SDL_Event finger{};
    finger.type = type;
    finger.tfinger.x = 20.0F / 375;
    finger.tfinger.y = 20.0F / 667;
    SDL_PushEvent(&finger);
  }
  shown.pump();
  EXPECT_EQ(taps, 1);
  unsetenv("SDL_VIDEODRIVER");
}

}  // namespace
}  // namespace sentrel::screen
