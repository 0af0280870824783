#include "sentrel/uikit/UICollectionView.h"

#include <utility>

namespace sentrel {

UICollectionView::UICollectionView(DataSource dataSource)
    : UIView({}, staticClass()), dataSource_(std::move(dataSource)) {}

const UIClass& UICollectionView::staticClass() {
  static const UIClass uiClass("UICollectionView", &UIView::staticClass());
  return uiClass;
}

void UICollectionView::reloadData() {
  ++reloadCount_;
  while (!subviews().empty())
    subviews().back()->removeFromSuperview();
  for (const auto& view : dataSource_())
    addSubview(view);
}

}  // namespace sentrel
