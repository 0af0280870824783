#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "sentrel/authui/SNAuthenticationDelegates.h"
#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

/// Puts an authentication view into an alert controller: everything is forwarded to the view, and
/// what becomes of a passcode is handed on to the delegate.
class SENTREL_API SNAuthenticationViewController : public UIViewController,
                                                   public SNAuthenticationViewDelegate {
 public:
  /// The current process's own controller, in glyph mode, its view loaded.
  static std::shared_ptr<SNAuthenticationViewController> sharedInstance();

  /// What sharedInstance is made by.
  static std::shared_ptr<SNAuthenticationViewController> makeShared();

  void loadView() override;
  CGSize preferredContentSize() override;

  /// The controller's view, loaded now if it was not. Null where it was given a view of another
  /// kind: nothing is forwarded then, and there is neither a mode nor a height.
  std::shared_ptr<SNAuthenticationView> authenticationView();

  std::shared_ptr<SNAuthenticationDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<SNAuthenticationDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

  SNAuthenticationMode currentAuthenticationMode();
  void setCurrentAuthenticationMode(SNAuthenticationMode mode);
  void setup(const std::optional<std::string>& title, const std::optional<std::string>& message);
  void animateFingerPrintActions(std::int64_t state, bool animated,
                                 PKGlyphView::Completion completionHandler);
  void showKeyboard();
  void hideKeyboard();
  void switchToPasscodeView();
  void switchToGlyphView();
  void toggleAuthenticationModes();
  void resetPasscodeState();

  void passcodeMatchedSuccessfully() override;
  void passcodeNotMatched() override;

 private:
  std::weak_ptr<SNAuthenticationDelegate> delegate_;
};

}  // namespace sentrel
