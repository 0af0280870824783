#pragma once

#include "sentrel/uikit/UICollectionView.h"

namespace sentrel {

/// An alert's buttons, each with a hairline above it: two short ones side by side, else one a row.
class AlertButtonList final : public UICollectionView {
 public:
  using UICollectionView::UICollectionView;

  /// What all rows take in an alert's width.
  double fittingHeight() const;

  void layoutSubviews() override;

 private:
  bool isSideBySide() const;
};

}  // namespace sentrel
