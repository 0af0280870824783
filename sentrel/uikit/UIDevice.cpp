#include "sentrel/uikit/UIDevice.h"

#include "sentrel/Process.h"

namespace sentrel {

std::optional<UIUserInterfaceIdiom> UIDevice::userInterfaceIdiom() const {
  const auto& screen = Process::current().platform().screen;
  return screen ? screen->userInterfaceIdiom() : std::nullopt;
}

}  // namespace sentrel
