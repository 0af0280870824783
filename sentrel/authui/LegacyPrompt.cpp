#include "sentrel/authui/LegacyPrompt.h"

#include <utility>

#include "sentrel/authui/PromptTexts.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/bridge/Bridge.h"

namespace sentrel {
namespace {

/// A legacy alert does not tell when its glyph has come to rest.
constexpr Seconds glyphDelay{0.1};

}  // namespace

void LegacyPrompt::show(const Prompt& prompt) {
  const auto text = [this](std::string_view key) {
    return std::string(bridge_.localizedString(key));
  };
  alert_ = std::make_shared<SNAlertView>(text(prompt_texts::productName), std::nullopt,
                                         prompt.owner, text(prompt_texts::cancel));
  const auto view = content_();
  view->setup(prompt.title, prompt.message);
  view->setDelegate(prompt.owner);
  alert_->setAuthView(view);
  if (prompt.canSwitch) alert_->addButtonWithTitle(text(prompt_texts::enterPasscode));
  settleMode(*view, prompt);
  alert_->show();
  prompt.onSettled();
}

void LegacyPrompt::settleMode(SNAuthenticationView& view, const Prompt& prompt) {
  if (view.currentAuthenticationMode() == SNAuthenticationModePasscode && !prompt.isPasscodeForced)
    view.toggleAuthenticationModes();
  else
    view.hideKeyboard();
  if (prompt.isPasscodeForced)
    view.switchToPasscodeView();
  else
    animateGlyph(prompt.glyph, /*animated=*/false, {});
}

void LegacyPrompt::dismiss(bool animated, Completion completion) {
  const auto alert = alert_;
  alert->dismissWithClickedButtonIndex(alert->cancelButtonIndex(), animated);
  if (completion) completion();
  // The completion still reaches the alert's view, and may have shown another alert.
  if (alert == alert_) alert_ = nullptr;
}

std::shared_ptr<UIResponder> LegacyPrompt::alert() const {
  return alert_;
}

bool LegacyPrompt::isShowing() const {
  return alert_ && alert_->isVisible();
}

std::shared_ptr<UIView> LegacyPrompt::shakenView() const {
  return alert_;
}

std::shared_ptr<SNAuthenticationView> LegacyPrompt::viewInUse() const {
  return alert_ ? alert_->authView() : nullptr;
}

void LegacyPrompt::animateGlyph(GlyphState state, bool animated, Completion completion) {
  if (const auto view = viewInUse())
    view->animateFingerPrintActions(static_cast<std::int64_t>(state), animated, {});
  if (completion) bridge_.platform().mainQueue->after(glyphDelay, std::move(completion));
}

}  // namespace sentrel
