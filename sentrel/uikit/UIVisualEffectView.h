#pragma once

#include <cstdint>
#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// A blur of what lies behind, in one of the system's styles: 0 extra light, 1 light, 2 dark.
struct UIBlurEffect {
  std::int64_t style = 1;

  static UIBlurEffect effectWithStyle(std::int64_t style) { return {style}; }

  friend bool operator==(const UIBlurEffect&, const UIBlurEffect&) = default;
};

/// Blurs what lies behind it. What it shows itself goes into `contentView`, which fills it.
class SENTREL_API UIVisualEffectView : public UIView {
 public:
  explicit UIVisualEffectView(UIBlurEffect effect, const CGRect& frame = {},
                              const UIClass& uiClass = staticClass());

  static const UIClass& staticClass();

  const UIBlurEffect& effect() const noexcept { return effect_; }
  const std::shared_ptr<UIView>& contentView() const noexcept { return contentView_; }

 private:
  UIBlurEffect effect_;
  std::shared_ptr<UIView> contentView_;
};

}  // namespace sentrel
