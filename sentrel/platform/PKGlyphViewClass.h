#pragma once

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// PassKit's class of glyph views, as the running system has it: which operations its views answer,
/// and how long they take to go from one state to the next.
struct SENTREL_API PKGlyphViewClass {
  /// `setColorMode:animated:`
  bool answersSetColorMode = true;
  /// `setPrimaryColor:`
  bool answersSetPrimaryColor = true;
  /// `_setPrimaryColor:animated:`
  bool answersPrivateSetPrimaryColor = true;
  /// `setState:animated:completionHandler:`
  bool answersSetState = true;

  Seconds stateAnimationDuration{0.35};
};

}  // namespace sentrel
