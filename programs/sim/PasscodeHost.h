#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/PasscodeKeeper.h"
#include "sentrel/passcode/SNPasscodeViewController.h"
#include "sentrel/uikit/UINavigationController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::sim {

/// How every process of the phone uses its passcode screen.
struct PasscodeOptions {
  std::int64_t limit = 0;
  host::LockoutRule lockout;
  /// Whether a process keeps a passcode of its own in memory, of any length.
  bool ownStorage = false;
  /// Told what a delegate hears and says.
  std::function<void(std::string line)> note;
};

/// A passcode screen as it stands.
struct ShownPasscodeScreen {
  /// "lock", "enable", "change", "turn-off" or "none".
  std::string flow;
  std::string title;
  std::string prompt;
  std::string info;
  /// Without the room at its end.
  std::string failure;
  std::size_t filled = 0;
  std::size_t boxes = 0;
  bool isFree = false;
  bool isHidden = false;
  bool isCovered = false;
  /// "digits", "letters" or "none".
  std::string keyboard;
};

/// One line for a timeline; empty for no flow.
std::string describe(const ShownPasscodeScreen& screen);

/// What an application does to have a passcode screen: a delegate, and a controller that its
/// settings flows come up in.
class PasscodeHost {
 public:
  /// Inside the process. `options` outlives the host.
  PasscodeHost(const PasscodeOptions& options, const std::shared_ptr<UIWindow>& content,
               bool hasNavigation);
  ~PasscodeHost();
  PasscodeHost(const PasscodeHost&) = delete;
  PasscodeHost& operator=(const PasscodeHost&) = delete;

  SNPasscodeViewController& screen() const { return *screen_; }
  host::PasscodeKeeper& keeper() const { return *keeper_; }
  /// Where settings flows come up.
  const std::shared_ptr<UIViewController>& page() const { return page_; }
  bool hasNavigation() const { return navigation_ != nullptr; }

  /// Takes over what the script has changed of them.
  void takeOptions();

  /// Before a settings flow.
  void prepare();

  /// The user's finger on the boxes.
  void tapEntry() const;
  ShownPasscodeScreen look() const;

 private:
  const PasscodeOptions& options_;
  std::shared_ptr<SNPasscodeViewController> screen_;
  std::shared_ptr<host::PasscodeKeeper> keeper_;
  std::shared_ptr<UIViewController> page_;
  std::shared_ptr<UINavigationController> navigation_;
  std::shared_ptr<UIWindow> content_;
};

}  // namespace sentrel::sim
