#pragma once

#include <cstdint>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// System sounds. Main thread only.
class SENTREL_API AudioServices {
 public:
  virtual ~AudioServices() = default;

  /// Returns at once. The pattern says how to vibrate: under "VibePattern" turns of on or off, each
  /// followed by its milliseconds, under "Intensity" a number from 0 to 1.
  virtual void playSystemSoundWithVibration(std::uint32_t sound,
                                            const PropertyList::Dictionary& pattern) = 0;
};

}  // namespace sentrel
