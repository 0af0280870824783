#pragma once

#include <memory>

#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::host {

/// Has the current process's settings reloaded whenever any process has changed the file: at
/// the first notice, so that a question right behind it is answered anew, and then once a turn of
/// the main queue, however many there are. While nobody can tell what
/// the file holds it comes back, first in a second, then less and less often, down to once a
/// minute. Every process makes one, and keeps it.
class SettingsReloader {
 public:
  /// Loads the settings where they have not been yet.
  SettingsReloader();

  /// As if there had been a notice.
  void reload() const;

 private:
  class Reloading;

  std::shared_ptr<Reloading> reloading_;
  Observation observation_;
};

}  // namespace sentrel::host
