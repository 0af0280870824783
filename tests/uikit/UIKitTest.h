#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "device/simulated/SimulatedDevice.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// Puts a test inside a process of a simulated device.
class UIKitTest : public testing::Test {
 protected:
  template <class View = UIView>
  static std::shared_ptr<View> addView(const std::shared_ptr<UIView>& parent,
                                       const CGRect& frame = {}) {
    auto view = std::make_shared<View>(frame);
    parent->addSubview(view);
    return view;
  }

  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_ = device_.launch("com.example.notes");
  Process::Scope scope_{process_->process()};
};

inline std::ostream& operator<<(std::ostream& out, const CGRect& rect) {
  return out << '(' << rect.origin.x << ' ' << rect.origin.y << ' ' << rect.size.width << ' '
             << rect.size.height << ')';
}

inline std::ostream& operator<<(std::ostream& out, const CGSize& size) {
  return out << '(' << size.width << ' ' << size.height << ')';
}

}  // namespace sentrel
