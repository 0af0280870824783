#pragma once

#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

class UIView;

/// The tree as indented text, one view a line: class, tag if it has one, frame, and whatever
/// differs from a new view's properties. It lays nothing out.
///
///     UIView #541231 (0 0 320 480) alpha=0.5
///       UILabel (32 10 256 20) "Hello" font="system bold 17" center
SENTREL_API std::string dump(const UIView& view);

}  // namespace sentrel
