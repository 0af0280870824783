#pragma once

#include <memory>
#include <string>
#include <utility>

#include "sentrel/platform/PropertyList.h"
#include "sentrel/platform/SystemFacts.h"

namespace sentrel::simulated {

/// What kind of device it is. The version is settled before the first process starts: it decides
/// which classes and operations a process finds.
struct SystemState {
  std::string version = "14.0";
  std::string model = "iPhone10,3";
  std::size_t connectedScenes = 1;
  bool canUseAlertView = false;
};

inline int majorVersion(const SystemState& system) {
  return static_cast<int>(PropertyList(system.version).integerValue());
}

/// Scenes and dark mode came together.
inline bool hasScenes(const SystemState& system) {
  return majorVersion(system) >= 13;
}

class SimulatedSystemFacts final : public SystemFacts {
 public:
  explicit SimulatedSystemFacts(std::shared_ptr<const SystemState> state)
      : state_(std::move(state)) {}

  std::string systemVersion() const override { return state_->version; }

 private:
  std::shared_ptr<const SystemState> state_;
};

}  // namespace sentrel::simulated
