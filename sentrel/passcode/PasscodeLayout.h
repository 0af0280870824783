#pragma once

#include <vector>

#include "sentrel/passcode/PasscodeAppearance.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel {

/// What there is to be placed on a passcode screen, in points.
struct PasscodeContent {
  /// The screen's, in the orientation of the interface.
  CGSize screen;
  /// Taken at the top by bars, at the bottom by the keyboard.
  double top = 0;
  double bottom = 0;
  bool isSimple = true;
  int boxes = 0;
  /// Of a digit box that has all the room it wants.
  CGSize box;
  CGSize prompt;
  CGSize info;
  CGSize failure;
  bool hasFailure = false;
};

/// Where it stands.
struct PasscodePlaces {
  CGRect prompt;
  CGRect info;
  CGRect failure;
  /// The overlay of the complex form.
  CGRect overlay;
  std::vector<CGPoint> boxCenters;
  /// What boxes that stand closer than they want are drawn smaller by.
  double boxScale = 1;
};

/// A column in the middle of what bars and keyboard leave: prompt, entry, failure. The appearance
/// gives the distances, which shrink where there is not enough room.
SENTREL_API PasscodePlaces placePasscode(const PasscodeContent& content,
                                         const PasscodeAppearance& appearance);

/// How wide a text may be on a screen of that width.
double passcodeTextWidth(double screenWidth);

}  // namespace sentrel
