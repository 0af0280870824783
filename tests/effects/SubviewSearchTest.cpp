#include "sentrel/effects/SubviewSearch.h"

#include <gmock/gmock.h>

#include "sentrel/uikit/UILabel.h"
#include "tests/support/HomeScreenTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

class SubviewSearch : public HomeScreenTest {
 protected:
  template <class View>
  static std::shared_ptr<View> add(UIView& parent, std::int64_t tag,
                                   const UIClass& uiClass = View::staticClass()) {
    auto view = std::make_shared<View>(CGRect(), uiClass);
    view->setTag(tag);
    parent.addSubview(view);
    return view;
  }

  std::vector<std::int64_t> find(std::string_view className) {
    std::vector<std::int64_t> tags;
    sn__getSubview(*root, className, [&tags](const auto& view) { tags.push_back(view->tag()); });
    return tags;
  }

  std::shared_ptr<UIView> root = std::make_shared<UIView>();
};

TEST_F(SubviewSearch, FindEndsItsOwnLevelAlone) {
  const auto first = add<UIView>(*root, 1);
  add<UILabel>(*first, 11);
  add<UILabel>(*first, 12);
  const auto second = add<UILabel>(*root, 2);
  add<UILabel>(*second, 21);
  add<UILabel>(*root, 3);
  EXPECT_THAT(find("UILabel"), ElementsAre(11, 2));
}

TEST_F(SubviewSearch, FindsSubclassesButNotTheReceiver) {
  static const UIClass badge("Badge", &UILabel::staticClass());
  add<UILabel>(*root, 1, badge);
  EXPECT_THAT(find("UILabel"), ElementsAre(1));
  EXPECT_THAT(find("Badge"), ElementsAre(1));
  EXPECT_THAT(find("Missing"), ElementsAre());
  sn__getSubview(*root, "UIView", {});
}

TEST_F(SubviewSearch, BlockMayEmptyTheTree) {
  const auto first = add<UIView>(*root, 1);
  const auto inner = add<UIView>(*first, 11);
  add<UILabel>(*inner, 111);
  add<UILabel>(*root, 2);
  std::vector<std::int64_t> tags;
  sn__getSubview(*root, "UILabel", [&](const auto& view) {
    tags.push_back(view->tag());
    while (!root->subviews().empty())
      root->subviews().back()->removeFromSuperview();
  });
  EXPECT_THAT(tags, ElementsAre(111));
}

}  // namespace
}  // namespace sentrel
