#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "programs/sim/PasscodeHost.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIViewController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::sim {

/// A process with a user interface: what it shows, and above that an empty window whose controller
/// presents its prompts.
class PhoneProcess {
 public:
  /// `content` makes what it shows, inside the process. The main bundle has its texts.
  PhoneProcess(simulated::SimulatedDevice& device, std::shared_ptr<MainBundle> mainBundle,
               std::shared_ptr<TextMeasuring> textMeasuring,
               const std::function<std::shared_ptr<UIWindow>()>& content);
  ~PhoneProcess();
  PhoneProcess(const PhoneProcess&) = delete;
  PhoneProcess& operator=(const PhoneProcess&) = delete;

  const std::string& identifier() const noexcept { return identifier_; }
  simulated::SimulatedProcess& process() noexcept { return *process_; }

  /// Runs `action` inside the process and hands on its result.
  template <class Action>
  decltype(auto) run(Action action) {
    return process_->run(std::move(action));
  }

  /// Makes a part of the hooking side inside the process, for as long as the process runs.
  template <class Part, class... Arguments>
  std::shared_ptr<Part> add(Arguments&&... arguments) {
    auto part = run([&] { return std::make_shared<Part>(std::forward<Arguments>(arguments)...); });
    parts_.push_back(part);
    return part;
  }

  /// The process's passcode screen and what it lives on; made when it is first asked for, as
  /// `options` say, which outlive it.
  PasscodeHost& passcodeHost(const PasscodeOptions& options);
  /// Null until then.
  PasscodeHost* passcodeHost() const noexcept { return passcodeHost_.get(); }

  /// Posts to the process alone.
  void post(std::string_view name);
  /// Turns what the process shows.
  void turn(UIInterfaceOrientation orientation, CGSize screen);

  const std::shared_ptr<UIWindow>& content() const noexcept { return content_; }
  const std::shared_ptr<UIViewController>& presenter() const noexcept { return presenter_; }

 private:
  std::string identifier_;
  std::unique_ptr<simulated::SimulatedProcess> process_;
  std::shared_ptr<UIWindow> content_;
  std::shared_ptr<UIWindow> presenterWindow_;
  std::shared_ptr<UIViewController> presenter_;
  std::unique_ptr<PasscodeHost> passcodeHost_;
  std::vector<std::shared_ptr<void>> parts_;
};

}  // namespace sentrel::sim
