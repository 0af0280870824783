#pragma once

#include <memory>
#include <string>

#include "sentrel/uikit/UIWindow.h"

namespace sentrel::sim {

// Something to look at, in a visible window of the current process.

/// An application that lists a few things under its name.
std::shared_ptr<UIWindow> makeApplicationScreen(CGSize size, const std::string& name);

/// The lock screen, over everything else.
std::shared_ptr<UIWindow> makeLockScreen(CGSize size);

}  // namespace sentrel::sim
