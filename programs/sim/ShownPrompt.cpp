#include "programs/sim/ShownPrompt.h"

#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/uikit/UIApplication.h"

namespace sentrel::sim {
namespace {

ShownPrompt describe(PhoneProcess& process, const std::shared_ptr<UIView>& alertView,
                     const SNAuthenticationView& content, std::vector<std::string> buttons) {
  const auto& field = content.passcodeView()->passcodeTextField();
  const auto& glyph = content.glyphView();
  return {&process,
          alertView,
          content.titleLabel()->text(),
          content.messageLabel()->text(),
          !content.passcodeView()->isHidden(),
          std::move(buttons),
          field ? field->text().size() : 0,
          glyph ? std::optional(glyph->state()) : std::nullopt};
}

/// What a controller presents, if that is a prompt.
void addPresented(PhoneProcess& process, const UIViewController* controller,
                  std::vector<ShownPrompt>& prompts) {
  for (; controller; controller = controller->presentedViewController().get()) {
    const auto alert =
        std::dynamic_pointer_cast<SNAlertController>(controller->presentedViewController());
    if (!alert) continue;
    const auto content =
        std::dynamic_pointer_cast<SNAuthenticationViewController>(alert->contentViewController());
    const auto view = content ? content->authenticationView() : nullptr;
    if (!view) continue;
    std::vector<std::string> buttons;
    for (const auto& action : alert->actions())
      buttons.push_back(action->title());
    prompts.push_back(describe(process, alert->view(), *view, std::move(buttons)));
  }
}

/// The legacy alerts inside a view.
void addLegacy(PhoneProcess& process, const std::shared_ptr<UIView>& view,
               std::vector<ShownPrompt>& prompts) {
  const auto alert = std::dynamic_pointer_cast<SNAlertView>(view);
  if (alert && alert->authView()) {
    std::vector<std::string> buttons;
    for (int i = 0; i < alert->numberOfButtons(); ++i)
      buttons.push_back(alert->buttonTitleAtIndex(i));
    prompts.push_back(describe(process, alert, *alert->authView(), std::move(buttons)));
    return;
  }
  for (const auto& subview : view->subviews())
    addLegacy(process, subview, prompts);
}

void addPrompts(PhoneProcess& process, std::vector<ShownPrompt>& prompts) {
  const auto windows = UIApplication::sharedApplication().windows();
  for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
    if ((*window)->isHidden()) continue;
    addPresented(process, (*window)->rootViewController().get(), prompts);
    addLegacy(process, *window, prompts);
  }
}

}  // namespace

std::vector<ShownPrompt> shownPrompts(Phone& phone) {
  std::vector<ShownPrompt> prompts;
  for (PhoneProcess* process : phone.visibleProcesses())
    process->run([&] { addPrompts(*process, prompts); });
  return prompts;
}

std::string modeOf(const ShownPrompt& prompt) {
  return prompt.isPasscodeShown ? "passcode" : "glyph";
}

std::string buttonsOf(const ShownPrompt& prompt) {
  std::string text;
  for (const std::string& button : prompt.buttons)
    text += (text.empty() ? "\"" : " \"") + button + "\"";
  return text.empty() ? "none" : text;
}

}  // namespace sentrel::sim
