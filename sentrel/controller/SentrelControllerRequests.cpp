#include "sentrel/authui/SNWindow.h"
#include "sentrel/bridge/Ask.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/ServiceNames.h"

namespace sentrel {
namespace {

std::optional<SessionKey> keyOf(const SentrelController::Text& text) {
  return text ? std::optional<SessionKey>(*text) : std::nullopt;
}

/// The same key on every success.
auto always(std::optional<SessionKey> key) {
  return [key = std::move(key)] { return key; };
}

}  // namespace

/// Hands the outcome on to `completion`, and then records a session under `key` on success.
SentrelController::Completion SentrelController::recording(
    Completion completion, std::function<std::optional<SessionKey>()> key) {
  return [weak = weak_from_this(), completion = std::move(completion), key = std::move(key)](
             bool authenticated, bool allowed) {
    if (completion) completion(authenticated, allowed);
    if (!authenticated) return;
    if (const auto self = weak.lock()) self->updateLastAuthenticationTime(key());
  };
}

void SentrelController::allowUnasked(const Completion& completion) {
  deferred_.askedFor(DeferredActions::ended, platform_.mainQueue->turn());
  if (completion) completion(/*authenticated=*/false, /*allowed=*/true);
}

void SentrelController::requiresAuthentication(const std::string& bundleIdentifier,
                                               const Presenter& delegate, Completion completion) {
  if (!settings_.isAppProtected(bundleIdentifier)) return allowUnasked(completion);
  showAuthenticationViewController(bridge_.appName(bundleIdentifier),
                                   bridge_.authenticationMessage(), delegate,
                                   recording(std::move(completion), always(bundleIdentifier)));
}

void SentrelController::requiresAuthenticationForSystemService(const std::string& service,
                                                               const Presenter& delegate,
                                                               Completion completion) {
  if (!settings_.isSystemServiceProtected(service)) return allowUnasked(completion);
  showAuthenticationViewController(bridge_.appName(service), bridge_.authenticationMessage(),
                                   delegate, recording(std::move(completion), always(service)));
}

void SentrelController::requiresAuthenticationForFolder(const std::shared_ptr<SBFolder>& folder,
                                                        const Presenter& delegate,
                                                        Completion completion) {
  if (!folder || !settings_.isFolderProtected(*folder)) return allowUnasked(completion);
  showAuthenticationViewController(
      folder->displayName(), bridge_.authenticationMessage(), delegate,
      recording(std::move(completion), [&bridge = bridge_, folder]() -> std::optional<SessionKey> {
        return SessionKey::record(bridge.folderRecord(*folder));
      }));
}

void SentrelController::requiresAuthenticationForItem(const Text& title, const Text& message,
                                                      const Presenter& delegate,
                                                      Completion completion) {
  showAuthenticationViewController(title, message, delegate, std::move(completion));
}

/// A service is known by its localised name, which is its prompt's title too.
void SentrelController::promptForService(std::string_view service, const Presenter& delegate,
                                         Completion completion) {
  const std::string title(bridge_.localizedString(service));
  requiresAuthenticationForItem(title, bridge_.authenticationMessage(), delegate,
                                recording(std::move(completion), always(title)));
}

void SentrelController::requiresAuthenticationForReboot(const Presenter& delegate,
                                                        Completion completion) {
  promptForService(service_names::reboot, delegate, std::move(completion));
}

void SentrelController::requiresAuthenticationForRespring(const Presenter& delegate,
                                                          Completion completion) {
  promptForService(service_names::respring, delegate, std::move(completion));
}

void SentrelController::requiresAuthenticationForAppArrangement(const Presenter& delegate,
                                                                Completion completion) {
  promptForService(service_names::appArrangement, delegate, std::move(completion));
}

void SentrelController::requiresAuthenticationForAppDeletion(const Presenter& delegate,
                                                             Completion completion) {
  promptForService(service_names::appDelete, delegate, std::move(completion));
}

void SentrelController::requiresAuthenticationForAppSwitcher(const Presenter& delegate,
                                                             Completion completion) {
  promptForService(service_names::appSwitcher, delegate, std::move(completion));
}

void SentrelController::requiresAuthenticationForFlipSwitch(const std::string& switchIdentifier,
                                                            const Presenter& delegate,
                                                            Completion completion) {
  const auto& panel = platform_.switchPanel;
  requiresAuthenticationForItem(
      panel ? panel->titleForSwitchIdentifier(switchIdentifier) : std::nullopt,
      bridge_.authenticationMessage(), delegate,
      recording(std::move(completion), always(switchIdentifier)));
}

void SentrelController::requiresAuthenticationForSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier, const Presenter& delegate,
    Completion completion) {
  requiresAuthenticationForItem(
      specifier ? specifier->name() : std::nullopt, bridge_.authenticationMessage(), delegate,
      recording(std::move(completion),
                always(keyOf(specifier ? specifier->identifier() : std::nullopt))));
}

void SentrelController::requiresAuthenticationForSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier, const Text& title, const Presenter& delegate,
    Completion completion) {
  auto key = specifier ? std::optional(SessionKey::object(specifier)) : std::nullopt;
  requiresAuthenticationForItem(title, bridge_.authenticationMessage(), delegate,
                                recording(std::move(completion), always(std::move(key))));
}

void SentrelController::requiresAuthenticationForPhotos(const Presenter& delegate,
                                                        Completion completion) {
  if (bridge_.isSpringBoard() || bridge_.isIOS11())
    return promptForService(service_names::photos, delegate, std::move(completion));
  deferred_.askedFor(DeferredActions::ended, platform_.mainQueue->turn());
  completionHandler_ = std::move(completion);
  ask<messages::HandleAuthentication>(bridge_,
                                      {std::string(bridge_.localizedString(service_names::photos)),
                                       bridge_.authenticationMessage().value_or("")});
}

void SentrelController::requiresAuthenticationForLockscreenNotifications(const Presenter& delegate,
                                                                         Completion completion) {
  promptForService(service_names::notifications, delegate, std::move(completion));
}

void SentrelController::requiresAuthentication(const Text& title, const Text& message,
                                               const Presenter& delegate, Completion completion) {
  requiresAuthenticationForItem(title, message, delegate,
                                recording(std::move(completion), always(keyOf(title))));
}

void SentrelController::requiresAuthentication(const Text& title, const Text& message,
                                               Completion completion) {
  platform_.mainQueue->async(
      whileAlive([number = takeNumber(), title, message,
                  completion = std::move(completion)](SentrelController& self) {
        const auto window = self.overlayWindow_();
        window->setHidden(/*hidden=*/false);
        const auto recorded = self.recording(completion, always(keyOf(title)));
        self.beginLater({.number = number,
                         .title = title,
                         .message = message,
                         .presenter = window->rootViewController()},
                        [recorded, window](bool authenticated, bool allowed) {
                          recorded(authenticated, allowed);
                          window->closeWindow();
                        });
      }));
}

}  // namespace sentrel
