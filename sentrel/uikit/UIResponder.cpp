#include "sentrel/uikit/UIResponder.h"

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {

bool UIResponder::isFirstResponder() const {
  return UIApplication::sharedApplication().firstResponder().get() == this;
}

bool UIResponder::becomeFirstResponder() {
  if (isFirstResponder()) return true;
  if (!canBecomeFirstResponder()) return false;
  auto& application = UIApplication::sharedApplication();
  const auto current = application.firstResponder();
  if (current && !current->canResignFirstResponder()) return false;
  application.setFirstResponder(shared_from_this());
  return true;
}

bool UIResponder::resignFirstResponder() {
  if (!isFirstResponder()) return true;
  if (!canResignFirstResponder()) return false;
  UIApplication::sharedApplication().giveUpFirstResponder();
  return true;
}

}  // namespace sentrel
