#pragma once

#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIImage.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// Shows a picture stretched over its bounds. Ignores touches.
class SENTREL_API UIImageView : public UIView {
 public:
  explicit UIImageView(const CGRect& frame = {}, const UIClass& uiClass = staticClass());

  static const UIClass& staticClass();

  /// Null shows nothing.
  const std::shared_ptr<const UIImage>& image() const noexcept { return image_; }
  void setImage(std::shared_ptr<const UIImage> image) { image_ = std::move(image); }

 private:
  std::shared_ptr<const UIImage> image_;
};

}  // namespace sentrel
