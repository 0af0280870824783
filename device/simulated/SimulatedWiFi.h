#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sentrel/platform/WiFi.h"

namespace sentrel::simulated {

/// The radio of a simulated device.
struct WiFiState {
  std::vector<std::string> known;
  std::optional<std::string> joined;
};

/// The radio as one process sees it: only a process with Wi-Fi access holds the handles.
class SimulatedWiFi final : public WiFi {
 public:
  SimulatedWiFi(std::shared_ptr<const WiFiState> state, bool hasAccess)
      : state_(std::move(state)), hasManager_(hasAccess), hasClient_(hasAccess) {}

  void setHasManager(bool value) noexcept { hasManager_ = value; }
  void setHasClient(bool value) noexcept { hasClient_ = value; }

  bool hasManager() const override { return hasManager_; }
  bool hasClient() const override { return hasClient_; }

  std::optional<PropertyList::Array> knownNetworks() const override {
    return PropertyList::Array(state_->known.begin(), state_->known.end());
  }

  std::optional<PropertyList::Dictionary> currentNetwork() const override {
    if (!state_->joined) return std::nullopt;
    return PropertyList::Dictionary{{"SSID", *state_->joined}};
  }

  bool seesNoNetwork() const override { return hasClient_ && !state_->joined; }

 private:
  std::shared_ptr<const WiFiState> state_;
  bool hasManager_;
  bool hasClient_;
};

}  // namespace sentrel::simulated
