#include "sentrel/authui/SNFakeCallIDView.h"

#include "tests/support/HomeScreenTest.h"

namespace sentrel {
namespace {

class SNFakeCallIDViewTest : public HomeScreenTest {
 protected:
  std::shared_ptr<SNFakeCallIDView> makeCover(const CGRect& bounds = CGRectMake(0, 0, 300, 100)) {
    auto cover = std::make_shared<SNFakeCallIDView>();
    cover->setBounds(bounds);
    cover->layoutIfNeeded();
    return cover;
  }
};

TEST_F(SNFakeCallIDViewTest, LinesHaveTheirPlacesInAnyBounds) {
  const struct {
    CGRect bounds;
    CGRect name;
    CGRect callerID;
    CGRect footer;
  } cases[] = {{CGRectMake(0, 0, 300, 100), CGRectMake(10, 5, 280, 40), CGRectMake(10, 55, 280, 24),
                CGRectMake(10, 88, 280, 10)},
               {CGRectMake(20, 7, 300, 100), CGRectMake(30, 12, 240, 40),
                CGRectMake(30, 62, 240, 24), CGRectMake(30, 88, 240, 10)},
               {CGRectMake(0, 0, 0, 0), CGRectMake(10, 5, -20, 40), CGRectMake(10, 55, -20, 24),
                CGRectMake(10, -12, -20, 10)}};
  for (const auto& each : cases) {
    const auto cover = makeCover(each.bounds);
    EXPECT_EQ(cover->callerNameLabel()->frame(), each.name);
    EXPECT_EQ(cover->callerIDLabel()->frame(), each.callerID);
    EXPECT_EQ(cover->sentrelCopyLabel()->frame(), each.footer);
  }
}

TEST_F(SNFakeCallIDViewTest, LooksAreThoseOfTheGeneration) {
  for (const auto& [version, style] : {std::pair("10.3", UIFontTextStyle::title1),
                                       std::pair("11.0", UIFontTextStyle::largeTitle)}) {
    restart(version);
    const auto cover = makeCover();
    EXPECT_EQ(cover->callerNameLabel()->font(), UIFont::preferredFontForTextStyle(style));
    EXPECT_EQ(cover->callerIDLabel()->font(),
              UIFont::preferredFontForTextStyle(UIFontTextStyle::subheadline));
    EXPECT_EQ(cover->sentrelCopyLabel()->font(),
              UIFont::preferredFontForTextStyle(UIFontTextStyle::footnote));
    EXPECT_EQ(cover->callerNameLabel()->textAlignment(), NSTextAlignment::center);
    EXPECT_EQ(cover->sentrelCopyLabel()->textAlignment(), NSTextAlignment::right);
    EXPECT_EQ(cover->sentrelCopyLabel()->alpha(), 0.6);
    EXPECT_TRUE(cover->callerIDLabel()->adjustsFontSizeToFitWidth());
    EXPECT_FALSE(cover->isUserInteractionEnabled());
  }
}

TEST_F(SNFakeCallIDViewTest, ShowsTheSettingsTextsOfTheLastUpdate) {
  const auto cover = makeCover();
  EXPECT_EQ(cover->callerNameLabel()->text(), "");
  cover->updateData();
  EXPECT_EQ(cover->callerNameLabel()->text(), "Someone is calling you");
  EXPECT_EQ(cover->callerIDLabel()->text(), "Unknown");
  EXPECT_EQ(cover->sentrelCopyLabel()->text(), "Protected by Sentrel");
  SNSettings::sharedSettings().setCallerNameText("Nobody");
  SNSettings::sharedSettings().setCallerLabelText("Nowhere");
  EXPECT_EQ(cover->callerNameLabel()->text(), "Someone is calling you");
  cover->updateData();
  EXPECT_EQ(cover->callerNameLabel()->text(), "Nobody");
  EXPECT_EQ(cover->callerIDLabel()->text(), "Nowhere");
}

TEST_F(SNFakeCallIDViewTest, ColoursChangeWithTheNextUpdateOnly) {
  const auto cover = makeCover();
  const auto light = UIColor::colorWithWhite(1, 0.8);
  useDarkMode();
  EXPECT_EQ(cover->callerNameLabel()->textColor(), light);
  EXPECT_EQ(cover->callerIDLabel()->textColor(), light);
  cover->updateData();
  EXPECT_EQ(cover->callerNameLabel()->textColor(), UIColor::labelColor());
  EXPECT_EQ(cover->callerIDLabel()->textColor(), UIColor::secondaryLabelColor());
  EXPECT_EQ(cover->sentrelCopyLabel()->textColor(), UIColor::secondaryLabelColor());
}

}  // namespace
}  // namespace sentrel
