#pragma once

#include <memory>

#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIAlertView.h"

namespace sentrel {

/// The legacy alert that holds a prompt. A tap on its switch button tells the delegate as if the
/// alert had gone, and renames the button where the running system can, but the alert stays.
class SENTREL_API SNAlertView : public UIAlertView {
 public:
  SNAlertView(std::string title, std::optional<std::string> message,
              std::weak_ptr<UIAlertViewDelegate> delegate, std::string cancelButtonTitle)
      : UIAlertView(std::move(title), std::move(message), std::move(delegate),
                    std::move(cancelButtonTitle), staticClass()) {}

  static const UIClass& staticClass();

  /// Null until it is set.
  const std::shared_ptr<SNAuthenticationView>& authView() const noexcept { return authView_; }
  void setAuthView(std::shared_ptr<SNAuthenticationView> view);

  void _dismissForTappedIndex(int index) override;
  bool _prepareToDismissForTappedIndex(int index) override;

 private:
  void renameSwitchButton(int index);

  std::shared_ptr<SNAuthenticationView> authView_;
};

}  // namespace sentrel
