#pragma once

#include <functional>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// Shows what its data source makes: nothing that changes behind it shows before the next reload.
class SENTREL_API UICollectionView : public UIView {
 public:
  using DataSource = std::function<std::vector<std::shared_ptr<UIView>>()>;

  explicit UICollectionView(DataSource dataSource);

  static const UIClass& staticClass();

  /// Replaces every subview by what the data source makes now.
  void reloadData();

  int reloadCount() const noexcept { return reloadCount_; }

 private:
  DataSource dataSource_;
  int reloadCount_ = 0;
};

}  // namespace sentrel
