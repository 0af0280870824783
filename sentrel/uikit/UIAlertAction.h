#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIImage.h"

namespace sentrel {

enum class UIAlertActionStyle { standard = 0, cancel = 1, destructive = 2 };

/// Something that an alert or an overlay offers to do. Always held by a shared_ptr.
class SENTREL_API UIAlertAction {
 public:
  using Handler = std::function<void(const std::shared_ptr<UIAlertAction>&)>;

  static std::shared_ptr<UIAlertAction> actionWithTitle(std::string title, UIAlertActionStyle style,
                                                        Handler handler) {
    return std::make_shared<UIAlertAction>(std::move(title), style, std::move(handler));
  }

  UIAlertAction(std::string title, UIAlertActionStyle style, Handler handler)
      : title_(std::move(title)), style_(style), handler_(std::move(handler)) {}

  const std::string& title() const noexcept { return title_; }
  void setTitle(std::string title) { title_ = std::move(title); }
  UIAlertActionStyle style() const noexcept { return style_; }
  /// May be empty.
  const Handler& handler() const noexcept { return handler_; }
  bool isEnabled() const noexcept { return enabled_; }
  void setEnabled(bool value) noexcept { enabled_ = value; }
  /// Null where there is none.
  const std::shared_ptr<const UIImage>& image() const noexcept { return image_; }
  void setImage(std::shared_ptr<const UIImage> image) { image_ = std::move(image); }

 private:
  std::string title_;
  UIAlertActionStyle style_;
  Handler handler_;
  bool enabled_ = true;
  std::shared_ptr<const UIImage> image_;
};

}  // namespace sentrel
