#include "sentrel/effects/ProtectionOverlay.h"

#include <gmock/gmock.h>

#include "sentrel/effects/TextHeight.h"
#include "sentrel/uikit/Dump.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UIVisualEffectView.h"
#include "tests/support/HomeScreenTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class ProtectionOverlay : public HomeScreenTest {
 protected:
  static std::shared_ptr<UIAlertAction> action(std::string title, bool hasImage = false,
                                               UIAlertAction::Handler handler = {}) {
    auto made = UIAlertAction::actionWithTitle(std::move(title), UIAlertActionStyle::standard,
                                               std::move(handler));
    if (hasImage) made->setImage(std::make_shared<UIImage>());
    return made;
  }

  std::shared_ptr<UIVisualEffectView> cover() {
    for (const auto& subview : host->subviews())
      if (subview->tag() == 541231) return std::dynamic_pointer_cast<UIVisualEffectView>(subview);
    return nullptr;
  }

  template <class View>
  std::vector<std::shared_ptr<View>> shown() {
    std::vector<std::shared_ptr<View>> views;
    for (const auto& view : cover()->contentView()->subviews())
      if (auto wanted = std::dynamic_pointer_cast<View>(view)) views.push_back(std::move(wanted));
    return views;
  }

  std::shared_ptr<UILabel> label(std::int64_t tag) {
    return std::dynamic_pointer_cast<UILabel>(host->viewWithTag(tag));
  }

  std::shared_ptr<UIView> host = std::make_shared<UIView>(CGRectMake(7, 9, 320, 480));
};

TEST_F(ProtectionOverlay, BareCoverFillsTheHostAndLetsTouchesThrough) {
  host->setBackgroundColor(UIColor::whiteColor());
  host->addSubview(std::make_shared<UIView>());
  sn__applyBlurEffects(*host);
  ASSERT_EQ(host->subviews().back(), cover());
  EXPECT_FALSE(cover()->isUserInteractionEnabled());
  EXPECT_EQ(dump(*cover()),
            "UIVisualEffectView #541231 (0 0 320 480) blur=1 autoresizing=18 radius=38 clips\n"
            "  UIView (0 0 320 480) autoresizing=18\n");
  EXPECT_EQ(host->backgroundColor(), UIColor::clearColor());
}

TEST_F(ProtectionOverlay, CornersFollowTheHostTheSystemAndTheSensor) {
  static const UIClass imageWell("CAMImageWell", &UIView::staticClass());
  static const UIClass ownImageWell("OwnImageWell", &imageWell);
  const struct {
    const char* version;
    bool hasFaceID;
    const UIClass& hostClass;
    double hostRadius;
    double expected;
  } cases[] = {{"14.0", true, UIView::staticClass(), 12, 12},
               {"14.0", true, imageWell, 12, 12},
               {"11.0", true, UIView::staticClass(), 0, 38},
               {"11.0", false, UIView::staticClass(), 0, 6},
               {"11.0", true, imageWell, 0, 5},
               {"11.0", true, ownImageWell, 0, 38},
               {"10.3", true, imageWell, 0, 6},
               {"10.3", true, UIView::staticClass(), -3, 6}};
  for (const auto& each : cases) {
    SCOPED_TRACE(std::string(each.version) + " " + each.hostClass.name());
    host.reset();
    restart(each.version, each.hasFaceID);
    host = std::make_shared<UIView>(CGRectMake(0, 0, 10, 10), each.hostClass);
    host->layer().setCornerRadius(each.hostRadius);
    sn__applyBlurEffects(*host);
    EXPECT_EQ(cover()->layer().cornerRadius(), each.expected);
  }
}

TEST_F(ProtectionOverlay, AppliedTwiceIsThereOnceAndRemovedTwiceLeavesNothing) {
  const auto inner = std::make_shared<UIView>();
  host->addSubview(inner);
  sn__applyBlurEffects(*inner);
  sn__applyBlurEffects(*host, 1, "old", {action("Open")});
  sn__applyBlurEffects(*host, 2, "new", {action("Open")});
  EXPECT_THAT(host->subviews(), SizeIs(2));
  EXPECT_EQ(label(541232)->text(), "new");
  sn__removeBlurEffects(*host);
  sn__removeBlurEffects(*host);
  EXPECT_THAT(host->subviews(), ElementsAre(inner));
  EXPECT_THAT(host->constraints(), SizeIs(0));
  EXPECT_THAT(inner->subviews(), SizeIs(1)) << "the cover of another view is not this one's";
}

TEST_F(ProtectionOverlay, MessageStandsInTheMiddleWithoutActionsAndAboveWithThem) {
  sn__applyBlurEffectsWithMessage(*host, "Protected");
  host->layoutIfNeeded();
  EXPECT_EQ(label(541232)->frame(), CGRectMake(32, 186, 256, 108));
  EXPECT_FALSE(cover()->isUserInteractionEnabled());
  sn__applyBlurEffects(*host, 1, "Protected", {action("Open")});
  host->layoutIfNeeded();
  EXPECT_EQ(label(541232)->frame(), CGRectMake(32, 132, 256, 108));
  EXPECT_TRUE(cover()->isUserInteractionEnabled());
}

TEST_F(ProtectionOverlay, TextsShrinkFromTheSizeOfTheGenerationToTenPoints) {
  for (const auto& [version, size, scale] :
       {std::tuple("8.4", 25.0, 0.4), std::tuple("9.0", 45.0, 2.0 / 9)}) {
    host = nullptr;
    restart(version);
    host = std::make_shared<UIView>(CGRectMake(0, 0, 320, 480));
    sn__applyBlurEffectsWithMessage(*host, "Protected");
    const auto message = label(541232);
    EXPECT_EQ(message->font(), UIFont::boldSystemFontOfSize(size)) << version;
    EXPECT_EQ(message->minimumScaleFactor(), scale) << version;
    EXPECT_TRUE(message->adjustsFontSizeToFitWidth());
    EXPECT_EQ(message->numberOfLines(), 2);
    EXPECT_EQ(label(541233)->minimumScaleFactor(), scale) << version;
    EXPECT_EQ(message->superview(), cover()) << "elements go into the effect view itself";
  }
}

TEST_F(ProtectionOverlay, FooterSitsAtTheBottomInTheHostsLanguage) {
  process->mainBundle().translate("Brought to you by Quorvin", "Von Quorvin");
  sn__applyBlurEffectsWithMessage(*host, "");
  host->layoutIfNeeded();
  const auto footer = label(541233);
  EXPECT_EQ(footer->text(), "Von Quorvin");
  EXPECT_EQ(footer->frame(), CGRectMake(32, 450, 256, 25));
  EXPECT_EQ(footer->font(), UIFont::italicSystemFontOfSize(11));
  EXPECT_EQ(footer->numberOfLines(), 1);
}

TEST_F(ProtectionOverlay, DarkStyleAloneHasLightTexts) {
  const auto light = UIColor::colorWithWhite(1, 0.7);
  for (const std::int64_t style : {0, 1, 2, 3}) {
    SCOPED_TRACE(style);
    sn__applyBlurEffects(*host, style, "Protected", {action("A+B", true)});
    const auto text = style == 2 ? light : UIColor::darkGrayColor();
    EXPECT_EQ(label(541232)->textColor(), text);
    EXPECT_EQ(label(541233)->textColor(), style == 2 ? light : UIColor::lightGrayColor());
    EXPECT_EQ(shown<UILabel>()[1]->textColor(), text) << "caption";
    EXPECT_EQ(shown<UIButton>()[0]->currentTitleColor(), text);
    EXPECT_EQ(shown<UIButton>()[0]->layer().borderColor(), text);
    EXPECT_EQ(cover()->effect().style, style);
  }
}

TEST_F(ProtectionOverlay, TitleIsSplitIntoCaptionAndButtonLabel) {
  const struct {
    const char* title;
    const char* caption;
    double iconTop;
    const char* button;
  } cases[] = {{"Open", "", 86, "Open"},
               {"Mail+Open", "Mail", 66, "Open"},
               {"+Open", "", 66, "Open"},
               {"Mail+", "Mail", 66, ""},
               {"a+b+c+d", "a", 66, "d"},
               {"+", "", 66, ""},
               {"Почта+Открыть", "Почта", 66, "Открыть"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.title);
    sn__applyBlurEffects(*host, 1, "Protected", {action(each.title, true)});
    const auto icon = shown<UIImageView>().at(0);
    EXPECT_EQ(icon->frame(), CGRectMake(135, each.iconTop, 50, 50));
    EXPECT_EQ(icon->layer().cornerRadius(), 5);
    const auto caption = shown<UILabel>().at(1);
    EXPECT_EQ(caption->text(), each.caption);
    EXPECT_EQ(caption->frame(), CGRectMake(0, each.iconTop + 55, 320, 15));
    EXPECT_EQ(shown<UIButton>().at(0)->currentTitle(), each.button);
  }
}

TEST_F(ProtectionOverlay, OnlyTheFirstActionsImageMakesAnIcon) {
  sn__applyBlurEffects(*host, 1, "Protected", {action("a+b"), action("c+d", true)});
  EXPECT_THAT(shown<UIImageView>(), SizeIs(0));
  EXPECT_THAT(shown<UILabel>(), SizeIs(2)) << "message and footer, no caption";
}

TEST_F(ProtectionOverlay, ButtonsHangBelowTheBaseLineLeftOfTheMiddleByTheirHeight) {
  sn__applyBlurEffects(*host, 1, "Protected", {action("Open"), action("Open with passcode")});
  const auto buttons = shown<UIButton>();
  ASSERT_THAT(buttons, SizeIs(2));
  const double baseLine = (480.0 - 108) / 2;
  for (int number = 1; number <= 2; ++number) {
    const auto& button = buttons[static_cast<std::size_t>(number - 1)];
    const CGSize text =
        findHeightForText(button->currentTitle(), 256, button->titleLabel()->font());
    const double height = text.height + 20;
    EXPECT_EQ(button->frame(),
              CGRectMake(160 - height, baseLine + number * (20 + height), text.width + 30, height));
    EXPECT_EQ(button->layer().borderWidth(), 2);
    EXPECT_EQ(button->layer().cornerRadius(), 5);
    EXPECT_TRUE(button->layer().masksToBounds());
  }
  EXPECT_GT(buttons[1]->frame().size.width, buttons[0]->frame().size.width);
}

TEST_F(ProtectionOverlay, TapRunsTheButtonsOwnActionAndTheCoverStays) {
  std::vector<std::string> ran;
  const auto note = [&ran](const std::shared_ptr<UIAlertAction>& tapped) {
    ran.push_back(tapped->title());
  };
  sn__applyBlurEffects(*host, 1, "",
                       {action("x+A", false, note), action("B", false, note), action("mute")});
  const auto window = showInWindow(host);
  EXPECT_TRUE(tapButton("B"));
  EXPECT_TRUE(tapButton("A"));
  EXPECT_TRUE(tapButton("mute"));
  EXPECT_THAT(ran, ElementsAre("B", "x+A"));
  EXPECT_NE(cover(), nullptr);
}

TEST_F(ProtectionOverlay, HandlerMayTakeTheCoverOffAndAHostThatIsGoneHandlesNothing) {
  int ran = 0;
  const auto takeOff = [&](const auto&) {
    ++ran;
    sn__removeBlurEffects(*host);
  };
  sn__applyBlurEffects(*host, 1, "", {action("Open", false, takeOff)});
  shown<UIButton>()[0]->tap();
  EXPECT_EQ(cover(), nullptr);
  sn__applyBlurEffects(*host, 1, "", {action("Open", false, takeOff)});
  const auto button = shown<UIButton>()[0];
  host.reset();
  button->tap();
  EXPECT_EQ(ran, 1);
}

TEST_F(ProtectionOverlay, TakesTextsOfAnyKindAndHostsOfAnySize) {
  const std::string longText(10'000, 'W');
  for (const std::string& text :
       {longText, std::string("\xff\xfe\xc3"), std::string("ا\u0301+\u202e")})
    for (const CGRect& frame : {CGRectMake(0, 0, 0, 0), CGRectMake(0, 0, -50, -20)}) {
      host->setFrame(frame);
      sn__applyBlurEffects(*host, 1, text, {action(text, true)});
      host->layoutIfNeeded();
      EXPECT_EQ(label(541232)->text(), text);
      EXPECT_THAT(shown<UIButton>(), SizeIs(1));
    }
}

TEST_F(ProtectionOverlay, MeasuredTextHasAPointMoreOfHeight) {
  const UIFont font = UIFont::systemFontOfSize(10);
  EXPECT_EQ(findHeightForText(std::nullopt, 100, font), CGSize{});
  EXPECT_EQ(findHeightForText("", 100, font), (CGSize{0, 13}));
  EXPECT_EQ(findHeightForText("four five", 25, font), (CGSize{20, 25}));
}

}  // namespace
}  // namespace sentrel
