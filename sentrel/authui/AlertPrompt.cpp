#include "sentrel/authui/AlertPrompt.h"

#include <utility>

#include "sentrel/authui/PromptTexts.h"
#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/bridge/Bridge.h"

namespace sentrel {
namespace {

/// What a prompt waits for when none is on screen, and how long after it was presented its
/// keyboard is looked at again.
constexpr Seconds shortDelay{0.1};

/// The overlay window, if `presenter` presents from there; else null.
std::shared_ptr<SNWindow> overlayOf(const std::shared_ptr<UIViewController>& presenter) {
  return presenter ? std::dynamic_pointer_cast<SNWindow>(presenter->view()->window()) : nullptr;
}

}  // namespace

void AlertPrompt::prepare(bool isPasscodeForced) {
  const auto content = content_();
  if (content->currentAuthenticationMode() == SNAuthenticationModePasscode && !isPasscodeForced)
    content->toggleAuthenticationModes();
}

std::optional<Seconds> AlertPrompt::waitBeforeShowing() const {
  return shortDelay;
}

void AlertPrompt::show(const Prompt& prompt) {
  alert_ = SNAlertController::alertControllerWithTitle(
      std::string(bridge_.localizedString(prompt_texts::productName)), std::nullopt,
      UIAlertControllerStyle::alert);
  const auto content = content_();
  alert_->setContentViewController(content);
  content->setDelegate(prompt.owner);
  if (prompt.isPasscodeForced)
    content->switchToPasscodeView();
  else
    animateGlyph(prompt.glyph, /*animated=*/false, {});
  content->setup(prompt.title, prompt.message);
  addActions(prompt);
  present(prompt);
  bridge_.platform().mainQueue->after(shortDelay, prompt.onSettled);
}

void AlertPrompt::addActions(const Prompt& prompt) {
  const auto add = [this](std::string_view title, UIAlertActionStyle style,
                          const Completion& handler) {
    alert_->addAction(UIAlertAction::actionWithTitle(std::string(bridge_.localizedString(title)),
                                                     style, [handler](const auto&) { handler(); }));
  };
  if (prompt.canSwitch)
    add(prompt_texts::enterPasscode, UIAlertActionStyle::standard, prompt.onSwitch);
  add(prompt_texts::cancel, UIAlertActionStyle::cancel, prompt.onCancel);
}

void AlertPrompt::present(const Prompt& prompt) {
  // A prompt that went meanwhile has hidden the overlay window, which would hide this one too.
  if (const auto overlay = overlayOf(prompt.presenter))
    overlay->presentViewController(alert_, /*animated=*/true, prompt.onSettled);
  else if (prompt.presenter)
    prompt.presenter->presentViewController(alert_, /*animated=*/true, prompt.onSettled);
}

void AlertPrompt::dismiss(bool animated, Completion completion) {
  // Forgotten first: what the dismissal sets off no longer finds the prompt.
  const auto alert = std::exchange(alert_, nullptr);
  alert->dismissViewControllerAnimated(animated, std::move(completion));
}

std::shared_ptr<UIResponder> AlertPrompt::alert() const {
  return alert_;
}

bool AlertPrompt::isShowing() const {
  return alert_ && alert_->isAlertPresented();
}

std::shared_ptr<UIView> AlertPrompt::shakenView() const {
  return alert_ ? alert_->view() : nullptr;
}

std::shared_ptr<SNAuthenticationView> AlertPrompt::viewInUse() const {
  return content_()->authenticationView();
}

void AlertPrompt::animateGlyph(GlyphState state, bool animated, Completion completion) {
  content_()->animateFingerPrintActions(static_cast<std::int64_t>(state), animated,
                                        std::move(completion));
}

void AlertPrompt::keepVisible() const {
  const auto presenter = alert_ ? alert_->presentingViewController() : nullptr;
  if (const auto overlay = overlayOf(presenter)) overlay->setHidden(/*hidden=*/false);
}

}  // namespace sentrel
