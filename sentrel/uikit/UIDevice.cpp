#include "sentrel/uikit/UIDevice.h"

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {

std::optional<UIUserInterfaceIdiom> UIDevice::userInterfaceIdiom() const {
  const auto& screen = UIApplication::sharedApplication().platform().screen;
  return screen ? screen->userInterfaceIdiom() : std::nullopt;
}

}  // namespace sentrel
