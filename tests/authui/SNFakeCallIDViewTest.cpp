#include "sentrel/authui/SNFakeCallIDView.h"

#include "sentrel/uikit/Dump.h"
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
  for (const auto& [version, size] : {std::pair("10.3", "28"), std::pair("11.0", "34")}) {
    restart(version);
    const auto cover = makeCover();
    EXPECT_FALSE(cover->isUserInteractionEnabled());
    const std::string light = "\" color=\"white 1 alpha 0.8\" ";
    EXPECT_EQ(dump(*cover),
              "SNFakeCallIDView (-150 -50 300 100)\n  UILabel (10 5 280 40) \"\" font=\"system " +
                  (size + light) + "center fits\n  UILabel (10 55 280 24) \"\" font=\"system 15" +
                  light + "center fits\n  UILabel (10 88 280 10) \"\" font=\"system 13" + light +
                  "right fits alpha=0.6\n");
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
  const auto colors = [&cover] {
    return std::vector{cover->callerNameLabel()->textColor().description(),
                       cover->callerIDLabel()->textColor().description(),
                       cover->sentrelCopyLabel()->textColor().description()};
  };
  const auto light = colors();
  useDarkMode();
  EXPECT_EQ(colors(), light);
  cover->updateData();
  EXPECT_EQ(colors(),
            (std::vector<std::string>{"labelColor", "secondaryLabelColor", "secondaryLabelColor"}));
}

}  // namespace
}  // namespace sentrel
