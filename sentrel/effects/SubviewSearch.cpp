#include "sentrel/effects/SubviewSearch.h"

namespace sentrel {

void sn__getSubview(const UIView& view, std::string_view className,
                    const SubviewBlock& onComplete) {
  const auto& subviews = view.subviews();
  // By index, and each one kept: the block may take views away while the walk is under way.
  for (std::size_t at = 0; at < subviews.size(); ++at) {
    const auto subview = std::static_pointer_cast<UIView>(subviews[at]->shared_from_this());
    if (subview->isKindOfClassNamed(className)) {
      if (onComplete) onComplete(subview);
      return;
    }
    sn__getSubview(*subview, className, onComplete);
  }
}

}  // namespace sentrel
