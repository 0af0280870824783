#pragma once

#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// An action that waits for the owner to prove who they are.
class SENTREL_API Invocation {
 public:
  virtual ~Invocation() = default;

  /// The bundle identifier of the application that is the action's argument at index 2; none where
  /// there is no such argument.
  virtual std::optional<std::string> argumentBundleIdentifier() const = 0;

  virtual void invoke() = 0;
};

}  // namespace sentrel
