#pragma once

#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::host {

/// Has the current process's settings reloaded whenever any process has changed the file. Every
/// process makes one, and keeps it.
class SettingsReloader {
 public:
  SettingsReloader();

 private:
  Observation observation_;
};

}  // namespace sentrel::host
