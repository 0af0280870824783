#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sentrel/platform/MessageChannel.h"

namespace sentrel {

/// The channel that every request to the home-screen process goes through.
inline constexpr std::string_view messageChannelName = "com.quorvin.sentrel";

/// What is said either way stands under this key alone.
inline constexpr std::string_view messageDataKey = "SentrelServiceMessageData";

/// Every request that a process may send to the home-screen process: the name it travels under,
/// the types of what goes and what comes back, and how the sender's log calls the latter (empty: it
/// is not logged). A label with two places takes the argument first.
namespace messages {

/// The argument of a request that has none, and the reply of one whose reply nobody reads.
struct Nothing {};

/// What the Photos request asks the home-screen process to show.
struct AuthenticationPrompt {
  std::string title;
  std::string message;
};

struct AppName {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.name";
  static constexpr std::string_view label = "appName->response: %@";
  using Argument = std::string;
  using Reply = std::optional<std::string>;
};

struct IsTouchIDSupported {
  static constexpr std::string_view name = "com.quorvin.sentrel.isTouchIDSupported";
  static constexpr std::string_view label = "isBioMetricsSupported->response: %@";
  using Argument = Nothing;
  using Reply = bool;
};

struct IsPasscodeSet {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.isPassCodeSet";
  static constexpr std::string_view label = "isUnlockingDisabled->response: %@";
  using Argument = Nothing;
  using Reply = bool;
};

struct ParentFolderProtected {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.parent.folder.protected";
  static constexpr std::string_view label = "isFolderProtected for '%@' -> response: %@";
  using Argument = std::string;
  using Reply = std::optional<PropertyList::Dictionary>;
};

struct HasParentFolder {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.has.parent.folder";
  static constexpr std::string_view label = "hasAParentFolder->response: %@";
  using Argument = std::string;
  using Reply = bool;
};

struct IsSystemApplication {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.systemApplication";
  static constexpr std::string_view label = "isSystemApplication->response: %@";
  using Argument = std::string;
  using Reply = bool;
};

struct IsApplication {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.application";
  static constexpr std::string_view label = "isApplication->response: %@";
  using Argument = std::string;
  using Reply = bool;
};

struct IsHiddenApplication {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.hiddenApplication";
  static constexpr std::string_view label = "isHiddenApp->response: %@";
  using Argument = std::string;
  using Reply = bool;
};

struct IsDeviceLocked {
  static constexpr std::string_view name = "com.quorvin.sentrel.device.locked";
  static constexpr std::string_view label = "isDeviceLocked->response: %@";
  using Argument = Nothing;
  using Reply = bool;
};

struct IsDarkModeEnabled {
  static constexpr std::string_view name = "com.quorvin.sentrel.device.darkmode.enabled";
  static constexpr std::string_view label{};
  using Argument = Nothing;
  using Reply = bool;
};

/// The argument is the sender's own bundle identifier.
struct IsFingerOn {
  static constexpr std::string_view name = "com.quorvin.sentrel.isFingerOn";
  static constexpr std::string_view label{};
  using Argument = std::string;
  using Reply = bool;
};

struct SuspendFrontMostApp {
  static constexpr std::string_view name = "com.quorvin.sentrel.suspend.front.most.app";
  static constexpr std::string_view label{};
  using Argument = Nothing;
  using Reply = Nothing;
};

/// The argument is the sender's bundle identifier, " < - > " and the text.
struct LogMessage {
  static constexpr std::string_view name = "com.quorvin.sentrel.log.message";
  static constexpr std::string_view label{};
  using Argument = std::string;
  using Reply = Nothing;
};

struct KnownNetworks {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.knownNetWorks";
  static constexpr std::string_view label{};
  using Argument = Nothing;
  using Reply = std::optional<PropertyList::Array>;
};

struct CurrentNetwork {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.lastConnectedNetWork";
  static constexpr std::string_view label{};
  using Argument = Nothing;
  using Reply = std::optional<PropertyList::Dictionary>;
};

struct HandleAuthentication {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.handle.authentication";
  static constexpr std::string_view label{};
  using Argument = AuthenticationPrompt;
  using Reply = Nothing;
};

/// Shares its name with IsAlertShowing: this one always carries an item.
struct LastUnlocked {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.lastUnlocked";
  static constexpr std::string_view label{};
  using Argument = PropertyList;
  using Reply = bool;
};

/// Shares its name with LastUnlocked and is told from it by the missing user info.
struct IsAlertShowing {
  static constexpr std::string_view name = LastUnlocked::name;
  static constexpr std::string_view label{};
  using Argument = Nothing;
  using Reply = bool;
};

struct Unlocked {
  static constexpr std::string_view name = "com.quorvin.sentrel.app.unlocked";
  static constexpr std::string_view label{};
  using Argument = PropertyList;
  using Reply = Nothing;
};

}  // namespace messages
}  // namespace sentrel
