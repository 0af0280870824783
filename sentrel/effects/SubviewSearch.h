#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

using SubviewBlock = std::function<void(const std::shared_ptr<UIView>&)>;

/// Walks the subviews of `view` in order, each with everything inside it, up to the first that is
/// of the class of that name or a subclass, and hands that one to `onComplete`, which may be empty.
///
/// A find ends the walk at its own level alone, so there can be several: the inner ones come first.
/// The block may change the tree.
SENTREL_API void sn__getSubview(const UIView& view, std::string_view className,
                                const SubviewBlock& onComplete);

}  // namespace sentrel
