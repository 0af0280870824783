#include "sentrel/uikit/AlertButtonList.h"

#include <algorithm>
#include <limits>

#include "sentrel/uikit/AlertPanel.h"

namespace sentrel {
namespace {

constexpr double rowHeight = 44;
constexpr double titleMargin = 8;

}  // namespace

bool AlertButtonList::isSideBySide() const {
  constexpr double room = AlertPanel::width / 2 - 2 * titleMargin;
  return subviews().size() == 2 && std::ranges::all_of(subviews(), [](const auto& button) {
           const auto size = button->intrinsicContentSize(std::numeric_limits<double>::infinity());
           return size && size->width <= room;
         });
}

double AlertButtonList::fittingHeight() const {
  return rowHeight * (isSideBySide() ? 1 : static_cast<double>(subviews().size()));
}

void AlertButtonList::layoutSubviews() {
  UICollectionView::layoutSubviews();
  const bool sideBySide = isSideBySide();
  const double width = bounds().size.width / (sideBySide ? 2 : 1);
  CGPoint origin;
  for (const auto& button : subviews()) {
    button->setFrame({origin, {width, rowHeight}});
    (sideBySide ? origin.x : origin.y) += sideBySide ? width : rowHeight;
  }
}

}  // namespace sentrel
