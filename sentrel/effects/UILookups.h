#pragma once

#include <memory>
#include <string_view>

#include "sentrel/effects/SubviewSearch.h"
#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIViewController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {

// Finding one's way among the windows and controllers of the current process. Main thread only.

/// The controller that the user sees above everything in the key window; null where there is none.
SENTREL_API std::shared_ptr<UIViewController> sn__topViewController(
    const UIApplication& application);

/// The same above `controller`, itself included. A container that shows nothing has none.
SENTREL_API std::shared_ptr<UIViewController> sn__topViewController(
    const std::shared_ptr<UIViewController>& controller);

/// The view that holds the system's keyboard, alive and not a copy, or null.
SENTREL_API std::shared_ptr<UIView> sn__keyBoard();

/// Hands the system's key area to `block`, for every keyboard window that has one.
SENTREL_API void sn__keyBoard(const SubviewBlock& block);

/// The backmost window of the class of that name or a subclass, or null.
SENTREL_API std::shared_ptr<UIWindow> sn__windowOfClass(std::string_view className);

}  // namespace sentrel
