#pragma once

#include <map>
#include <string>
#include <utility>

#include "sentrel/platform/MainBundle.h"

namespace sentrel::simulated {

/// A main bundle whose translations a test sets.
class SimulatedMainBundle final : public MainBundle {
 public:
  explicit SimulatedMainBundle(std::string bundleIdentifier)
      : bundleIdentifier_(std::move(bundleIdentifier)) {}

  void translate(std::string key, std::string text) {
    texts_.insert_or_assign(std::move(key), std::move(text));
  }

  const std::string& bundleIdentifier() const override { return bundleIdentifier_; }

  std::string_view localizedString(std::string_view key) const override {
    const auto text = texts_.find(key);
    return text == texts_.end() ? key : std::string_view(text->second);
  }

 private:
  std::string bundleIdentifier_;
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace sentrel::simulated
