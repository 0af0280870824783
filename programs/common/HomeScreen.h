#pragma once

#include <memory>

#include "sentrel/platform/Screen.h"
#include "sentrel/uikit/UIImage.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::programs {

/// A home screen with a colourful wallpaper, icons and a dock, in a visible window of the current
/// process. Something worth blurring.
std::shared_ptr<UIWindow> makeHomeScreen(CGSize size, UIUserInterfaceStyle style);

/// An application's icon without its name, the `number`-th of a few that repeat.
std::shared_ptr<const UIImage> makeIconImage(int number);

}  // namespace sentrel::programs
