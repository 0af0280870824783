#include "sentrel/uikit/UIKeyboard.h"

#include "sentrel/uikit/UIDevice.h"

namespace sentrel {

double systemKeyboardHeight(CGSize screen) {
  const bool isLandscape = screen.width > screen.height;
  if (UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::pad)
    return isLandscape ? 352 : 264;
  return isLandscape ? 162 : 216;
}

}  // namespace sentrel
