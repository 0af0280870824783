#include "host/SettingsReloader.h"

#include <algorithm>
#include <utility>

#include "sentrel/Process.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::host {
namespace {

constexpr Seconds firstPause{1};
constexpr Seconds longestPause{60};

}  // namespace

/// What is under way; nothing of it once its owner is gone.
class SettingsReloader::Reloading : public std::enable_shared_from_this<Reloading> {
 public:
  /// At once, for a question may stand right behind the notice. What is told of in the rest of the
  /// turn waits for its end.
  void reload() {
    if (isReloaded_) {
      isDue_ = true;
      return;
    }
    isReloaded_ = true;
    queue().async([weak = weak_from_this()] {
      if (const auto self = weak.lock()) self->endTurn();
    });
    load();
  }

  void comeBack() {
    if (isComingBack_) return;
    isComingBack_ = true;
    queue().after(pause_, [weak = weak_from_this()] {
      if (const auto self = weak.lock()) self->retry();
    });
    pause_ = std::min(2 * pause_, longestPause);
  }

 private:
  static MainQueue& queue() { return *Process::current().platform().mainQueue; }

  void endTurn() {
    isReloaded_ = false;
    if (std::exchange(isDue_, false)) reload();
  }

  void load() {
    if (SNSettings::sharedSettings().reloadSettings())
      pause_ = firstPause;
    else
      comeBack();
  }

  void retry() {
    isComingBack_ = false;
    if (!SNSettings::sharedSettings().isUpToDate()) reload();
  }

  bool isReloaded_ = false;
  bool isDue_ = false;
  bool isComingBack_ = false;
  Seconds pause_ = firstPause;
};

SettingsReloader::SettingsReloader()
    : reloading_(std::make_shared<Reloading>()),
      observation_(Process::current().platform().darwinCenter->addObserver(
          std::string(notifications::settingsChanged),
          [reloading = reloading_](const Notification&) { reloading->reload(); })) {
  if (!SNSettings::sharedSettings().isUpToDate()) reloading_->comeBack();
}

void SettingsReloader::reload() const {
  reloading_->reload();
}

}  // namespace sentrel::host
