#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIAlertAction.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

// Hides what a view shows. The cover blurs it and has room for whatever its user is to see there:
// an icon over a caption, a message, buttons, a footer. It marks itself by tags, so nobody keeps a
// reference to it. Main thread only.

inline constexpr std::int64_t overlayBlurTag = 541231;
inline constexpr std::int64_t overlayMessageTag = 541232;
inline constexpr std::int64_t overlayFooterTag = 541233;

/// The system's styles of blur: the dark one has light texts on it, every other dark ones.
inline constexpr std::int64_t overlayLightStyle = 1;
inline constexpr std::int64_t overlayDarkStyle = 2;

using UIAlertActions = std::vector<std::shared_ptr<UIAlertAction>>;

/// Covers `view`, in place of the cover that it has, by a bare blur. Its background becomes clear.
SENTREL_API void sn__applyBlurEffects(UIView& view, std::int64_t style = overlayLightStyle);

SENTREL_API void sn__applyBlurEffectsWithMessage(UIView& view, const std::string& message);

/// Covers `view` by a blur with a message and a footer, and a button for each action. The first
/// action's image is shown as an icon; an action titled "caption+label" puts the caption under the
/// icon and the label on its button. Without actions the cover lets touches through.
SENTREL_API void sn__applyBlurEffects(UIView& view, std::int64_t style, const std::string& message,
                                      const UIAlertActions& actions = {});

/// Takes the cover off, with everything on it.
SENTREL_API void sn__removeBlurEffects(UIView& view);

/// Runs what the tapped button stands for. The cover stays.
SENTREL_API void sn__handleButtonAction(UIView& view, const UIButton& button);

/// The action that a view stands for, or null. It lives as long as the view.
SENTREL_API std::shared_ptr<UIAlertAction> sn__AlertAction(const UIView& view);
SENTREL_API void setSn__AlertAction(UIView& view, std::shared_ptr<UIAlertAction> action);

}  // namespace sentrel
