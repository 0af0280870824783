#pragma once

#include <memory>

#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::programs {

/// Points.
inline constexpr double numberPadHeight = 216;

/// The system's number pad as it stands at the bottom of a screen, in a visible window of the
/// current process. Only to be looked at.
std::shared_ptr<UIWindow> makeNumberPad(CGSize screen, double height = numberPadHeight);

/// The keyboard that `field` asks for, as high as the system's is on this device; null for no
/// field.
std::shared_ptr<UIWindow> makeKeyboardFor(const std::shared_ptr<UITextField>& field, CGSize screen);

}  // namespace sentrel::programs
