#include "sentrel/passcode/InterfaceOrientation.h"

#include <numbers>

#include "sentrel/uikit/UIApplication.h"

std::uint64_t UIInterfaceOrientationMaskFromOrientation(std::int64_t orientation) {
  return orientation < 0 || orientation >= 64 ? 0 : std::uint64_t{1} << orientation;
}

double UIInterfaceOrientationAngleOfOrientation(std::int64_t orientation) {
  using enum sentrel::UIInterfaceOrientation;
  switch (static_cast<sentrel::UIInterfaceOrientation>(orientation)) {
    case portraitUpsideDown:
      return std::numbers::pi;
    case landscapeRight:
      return std::numbers::pi / 2;
    case landscapeLeft:
      return -std::numbers::pi / 2;
    case portrait:
      break;
  }
  return 0;
}
