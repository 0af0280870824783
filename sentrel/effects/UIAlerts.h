#pragma once

#include <functional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

// Alerts with one button, presented by `controller` on a later turn of the main queue, and not at
// all when it is gone by then. From any thread. Blocks may be empty.

SENTREL_API void sn__showInformation(UIViewController& controller, const std::string& message);
SENTREL_API void sn__showWarning(UIViewController& controller, const std::string& message);
SENTREL_API void sn__showError(UIViewController& controller, const std::string& message,
                               std::function<void()> okAction = {});

/// `ok` runs when the button was tapped. The title is shown as it is given.
SENTREL_API void sn__showAlertWithTitle(UIViewController& controller, const std::string& title,
                                        const std::string& alertMessage, std::function<void()> ok);

}  // namespace sentrel
