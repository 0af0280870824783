#pragma once

#include <memory>

#include "programs/common/HomeScreenItems.h"
#include "sentrel/platform/Screen.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::programs {

/// A home screen with a colourful wallpaper, icons and a dock, in a visible window of the current
/// process. Something worth blurring. What has no place on it is left out.
std::shared_ptr<UIWindow> makeHomeScreen(CGSize size, UIUserInterfaceStyle style,
                                         const HomeScreenItems& items);

}  // namespace sentrel::programs
