#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// A button of a navigation bar.
struct UIBarButtonItem {
  std::string title;
  /// May be empty.
  std::function<void()> action;
};

/// What a navigation bar shows while the item is on top.
class SENTREL_API UINavigationItem {
 public:
  const std::string& title() const noexcept { return title_; }
  void setTitle(std::string title) { change(title_, std::move(title)); }

  /// Null shows nothing; on the left the way back, where there is one.
  const std::shared_ptr<UIBarButtonItem>& leftBarButtonItem() const noexcept { return left_; }
  void setLeftBarButtonItem(std::shared_ptr<UIBarButtonItem> item) {
    change(left_, std::move(item));
  }
  const std::shared_ptr<UIBarButtonItem>& rightBarButtonItem() const noexcept { return right_; }
  void setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item) {
    change(right_, std::move(item));
  }

  bool hidesBackButton() const noexcept { return hidesBackButton_; }
  void setHidesBackButton(bool value) { change(hidesBackButton_, std::move(value)); }

  /// Called after each change; for the bar that shows the item.
  void setOnChange(std::function<void()> onChange) { onChange_ = std::move(onChange); }

 private:
  template <class T>
  void change(T& field, T&& value) {
    field = std::move(value);
    if (onChange_) onChange_();
  }

  std::string title_;
  std::shared_ptr<UIBarButtonItem> left_;
  std::shared_ptr<UIBarButtonItem> right_;
  std::function<void()> onChange_;
  bool hidesBackButton_ = false;
};

}  // namespace sentrel
