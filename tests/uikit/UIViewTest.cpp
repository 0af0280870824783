#include "sentrel/uikit/UIView.h"

#include <numbers>

#include "sentrel/uikit/Dump.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIVisualEffectView.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel {
namespace {

class UIViewTest : public UIKitTest {
 protected:
  std::shared_ptr<UIView> root_ = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
};

TEST_F(UIViewTest, AddingTakesAViewOutOfItsFormerPlace) {
  const auto first = addView(root_);
  const auto second = addView(root_);
  first->addSubview(second);
  EXPECT_EQ(root_->subviews(), std::vector{first});
  EXPECT_EQ(second->superview(), first);
  root_->addSubview(second);
  root_->addSubview(first);
  EXPECT_EQ(root_->subviews(), (std::vector{second, first})) << "added again comes to the front";
  root_->bringSubviewToFront(second);
  EXPECT_EQ(root_->subviews(), (std::vector{first, second}));
}

TEST_F(UIViewTest, ATreeHasNoCirclesAndASuperviewThatIsGoneIsNone) {
  const auto child = addView(root_);
  addView(child)->addSubview(root_);
  root_->addSubview(root_);
  root_->addSubview(nullptr);
  EXPECT_EQ(root_->superview(), nullptr);
  EXPECT_EQ(root_->subviews(), std::vector{child});
  root_ = nullptr;
  EXPECT_EQ(child->superview(), nullptr);
  EXPECT_EQ(child->window(), nullptr);
  child->removeFromSuperview();
}

TEST_F(UIViewTest, FindsTheFirstViewWithATagDepthFirst) {
  const auto branch = addView(root_);
  const auto deep = addView(branch);
  const auto late = addView(root_);
  deep->setTag(7);
  late->setTag(7);
  EXPECT_EQ(root_->viewWithTag(7), deep);
  EXPECT_EQ(late->viewWithTag(7), late);
  EXPECT_EQ(root_->viewWithTag(8), nullptr);
}

TEST_F(UIViewTest, KnowsItsClassByName) {
  static const UIClass image("CAMImageWell", &UIImageView::staticClass());
  const UIView view({}, image);
  EXPECT_TRUE(view.isMemberOfClassNamed("CAMImageWell"));
  EXPECT_FALSE(view.isMemberOfClassNamed("UIImageView"));
  EXPECT_TRUE(view.isKindOfClass(UIImageView::staticClass()));
  EXPECT_TRUE(view.isKindOfClassNamed("UIView"));
  EXPECT_FALSE(view.isKindOfClass(UIButton::staticClass()));
}

TEST_F(UIViewTest, KeepsAssociatedObjectsForItsLifetime) {
  auto number = std::make_shared<int>(5);
  const std::weak_ptr<int> weak = number;
  root_->setAssociatedObject("key", std::move(number));
  EXPECT_EQ(*root_->associatedObject<int>("key"), 5);
  EXPECT_EQ(root_->associatedObject<int>("other"), nullptr);
  root_ = nullptr;
  EXPECT_TRUE(weak.expired());
}

TEST_F(UIViewTest, FrameBoundsAndCenterAgree) {
  UIView view(CGRectMake(10, 20, 30, 40));
  EXPECT_EQ(view.center(), (CGPoint{25, 40}));
  view.setBounds(CGRectMake(5, 5, 10, 10));
  EXPECT_EQ(view.frame(), CGRectMake(20, 35, 10, 10));
  view.setCenter({0, 0});
  EXPECT_EQ(view.frame(), CGRectMake(-5, -5, 10, 10));
  view.setTransform(CGAffineTransform::makeTranslation(30, 0));
  EXPECT_EQ(view.frame(), CGRectMake(25, -5, 10, 10));
  EXPECT_EQ(view.center(), (CGPoint{0, 0}));
}

TEST_F(UIViewTest, ATurnedViewFillsTheFrameThatItIsGiven) {
  UIView view;
  view.setTransform(CGAffineTransform::makeRotation(std::numbers::pi / 2));
  view.setFrame(CGRectMake(0, 0, 320, 480));
  EXPECT_NEAR(view.bounds().size.width, 480, 1e-9);
  EXPECT_NEAR(view.bounds().size.height, 320, 1e-9);
  EXPECT_NEAR(view.frame().origin.x, 0, 1e-9);
  EXPECT_NEAR(view.frame().size.height, 480, 1e-9);
}

TEST_F(UIViewTest, WhatIsFlexibleGrowsAlong) {
  const auto both = addView(root_, CGRectMake(1, 2, 50, 60));
  both->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  const auto inside = addView(both, CGRectMake(0, 0, 50, 10));
  inside->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
  const auto fixed = addView(root_, CGRectMake(1, 2, 50, 60));
  root_->setFrame(CGRectMake(9, 9, 120, 90));
  EXPECT_EQ(both->frame(), CGRectMake(1, 2, 70, 50));
  EXPECT_EQ(inside->frame(), CGRectMake(0, 0, 70, 10));
  EXPECT_EQ(fixed->frame(), CGRectMake(1, 2, 50, 60));
}

TEST_F(UIViewTest, ColorsResolveByStyle) {
  using Components = UIColor::Components;
  const auto light = UIUserInterfaceStyle::light;
  const auto dark = UIUserInterfaceStyle::dark;
  EXPECT_EQ(UIColor::labelColor().resolved(light), (Components{0, 0, 0, 1}));
  EXPECT_EQ(UIColor::labelColor().resolved(dark), (Components{1, 1, 1, 1}));
  EXPECT_EQ(UIColor::grayColor().resolved(dark), (Components{0.5, 0.5, 0.5, 1}));
  EXPECT_EQ(UIColor::labelColor().colorWithAlphaComponent(0.5).resolved(dark),
            (Components{1, 1, 1, 0.5}));
  EXPECT_NE(UIColor::labelColor(), UIColor::blackColor());
}

TEST_F(UIViewTest, AButtonShowsItsStateAndIsTappedOnlyWhereItCanBe) {
  const auto button = UIButton::buttonWithType(UIButtonType::custom);
  int taps = 0;
  button->addTarget([&taps](const auto&) { ++taps; }, UIControlEventTouchUpInside);
  button->addTarget([&taps](const auto&) { taps += 100; }, 1);
  button->setTitle("Open", UIControlState::normal);
  button->setTitle("Closed", UIControlState::disabled);
  button->setHighlighted(true);
  EXPECT_EQ(button->currentTitle(), "Open");
  button->tap();
  button->setEnabled(false);
  EXPECT_EQ(button->currentTitle(), "Closed");
  button->tap();
  button->setEnabled(true);
  button->setHidden(true);
  button->tap();
  EXPECT_EQ(taps, 1);
}

TEST_F(UIViewTest, DumpShowsTheTreeAndWhatIsNotAsUsual) {
  root_->setTag(541231);
  root_->setAlpha(0.5);
  root_->setBackgroundColor(UIColor::colorWithWhite(1, 0.7));
  const auto label = addView<UILabel>(root_, CGRectMake(1.5, 2, 1.0 / 3, 20));
  label->setText("Hello");
  label->setFont(UIFont::boldSystemFontOfSize(17));
  label->setTextAlignment(NSTextAlignment::center);
  const auto effect =
      std::make_shared<UIVisualEffectView>(UIBlurEffect{2}, CGRectMake(0, 0, 10, 10));
  effect->layer().setCornerRadius(6);
  effect->setClipsToBounds(true);
  root_->addSubview(effect);
  const auto field = addView<UITextField>(effect->contentView());
  field->setSecureTextEntry(true);
  field->setText("12");
  field->setFont(UIFont::fontWithName("AvenirNext-Regular", 33));
  EXPECT_EQ(dump(*root_),
            "UIView #541231 (0 0 100 100) alpha=0.5 background=\"white 1 alpha 0.7\"\n"
            "  UILabel (1.5 2 0.333 20) \"Hello\" font=\"system bold 17\" center\n"
            "  UIVisualEffectView (0 0 10 10) blur=2 radius=6 clips\n"
            "    UIView (0 0 10 10) autoresizing=18\n"
            "      UITextField (0 0 0 0) \"12\" font=\"AvenirNext-Regular 33\" secure\n");
}

}  // namespace
}  // namespace sentrel
