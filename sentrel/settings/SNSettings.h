#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "sentrel/platform/Platform.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/ProtectedItems.h"
#include "sentrel/settings/ProtectedServices.h"
#include "sentrel/settings/SettingsKeys.h"
#include "sentrel/settings/SettingsProperties.h"
#include "sentrel/settings/UnlockSessions.h"

namespace sentrel {

class Bridge;
class SNWiFiManager;

/// The user's choices in memory, the only writer of the settings file inside the library, and the
/// authority on what is protected now.
///
/// Values change by a whole refresh from the file (loadSettings, reloadSettings) and by the
/// operations that change memory and file together. A process learns of another's write by the
/// notification that every write posts; whoever observes it calls reloadSettings.
///
/// Nothing reports an error: a file that is missing or damaged gives the defaults, and is never
/// created or overwritten. A file of which nobody can tell what it holds, for want of a descriptor
/// or for a failing disk, changes nothing in memory; where there is nothing in memory yet,
/// everything is protected until it can be read. Main thread only, but for sharedSettings.
class SENTREL_API SNSettings final : public SettingsProperties {
 public:
  /// Loads the settings file. What is handed in outlives the settings.
  SNSettings(Platform& platform, Bridge& bridge, UnlockSessions& sessions,
             SNWiFiManager& wifiManager);
  SNSettings(const SNSettings&) = delete;
  SNSettings& operator=(const SNSettings&) = delete;

  /// The current process's settings.
  static SNSettings& sharedSettings();

  // --- Store -------------------------------------------------------------------------------

  /// False when it could not be told what the file holds, so that memory is as it was; to be tried
  /// again later.
  bool loadSettings();

  /// Fills every property from `file`. Folders and networks that are absent keep their values.
  void loadSettings(PropertyList::Dictionary file);

  bool reloadSettings() { return loadSettings(); }

  /// Whether memory is what the last load found. If not, the values may be old ones, and nothing
  /// is written: a list of old values would undo what others have changed.
  bool isUpToDate() const noexcept { return !isBehind_; }

  /// Stores `data` under `key` in the file, or removes the key when it is none, and posts the
  /// change if asked to. Memory is left as it is. False when there is no readable file, when others
  /// do not let go of it for two seconds, or when the write fails; nothing is posted then.
  bool updateSettingsData(std::string_view key, std::optional<PropertyList> data,
                          bool postNotification);

  /// Negates the file's YES or NO under `key`, as the integer 0 or 1. Anything else there, or
  /// nothing, is left alone. Memory follows at the next reload. Whether the file took it.
  bool toggleValue(std::string_view key);

  /// What the file holds under `key` now.
  std::optional<PropertyList> valueForKey(std::string_view key) const;

  // --- Texts with their fallbacks ----------------------------------------------------------

  std::string callerNameText() const;
  std::string callerLabelText() const;
  std::string blurEffectText() const;
  std::string sentrelLabelText() const;

  // --- Lists -------------------------------------------------------------------------------
  //
  // The system's own settings pane is always in protectedSettings, and its own switch never in
  // protectedFlipSwitches, whatever was loaded, set or written.

  const ProtectedItems& protectedApplications() const noexcept {
    return items(ItemSet::applications);
  }
  void setProtectedApplications(ProtectedItems value) {
    setItems(ItemSet::applications, std::move(value));
  }
  const ProtectedItems& protectedNotificationApps() const noexcept {
    return items(ItemSet::notificationApps);
  }
  void setProtectedNotificationApps(ProtectedItems value) {
    setItems(ItemSet::notificationApps, std::move(value));
  }
  const ProtectedItems& protectedSettings() const noexcept { return items(ItemSet::settings); }
  void setProtectedSettings(ProtectedItems value) { setItems(ItemSet::settings, std::move(value)); }
  const ProtectedItems& protectedFlipSwitches() const noexcept {
    return items(ItemSet::flipSwitches);
  }
  void setProtectedFlipSwitches(ProtectedItems value) {
    setItems(ItemSet::flipSwitches, std::move(value));
  }
  const ProtectedItems& protectedControlCenterItems() const noexcept {
    return items(ItemSet::controlCenterItems);
  }
  void setProtectedControlCenterItems(ProtectedItems value) {
    setItems(ItemSet::controlCenterItems, std::move(value));
  }

  /// Folder records in order, whatever the file holds in their place.
  const PropertyList::Array& enabledFolders() const noexcept { return enabledFolders_; }
  void setEnabledFolders(PropertyList::Array records);

  /// Names of trusted networks in order, duplicates included.
  const PropertyList::Array& wifiNetworks() const noexcept { return wifiNetworks_; }
  void setWifiNetworks(PropertyList::Array names) { wifiNetworks_ = std::move(names); }

  // --- Writers of the protected items ------------------------------------------------------
  //
  // Each changes the set in memory and then writes the whole set to the file, also when the item
  // was there already or never was. The result is whether the file took it; memory has changed in
  // any case.

  bool addToProtectedApps(std::string_view bundleIdentifier);
  bool removeFromProtectedApps(std::string_view bundleIdentifier);

  /// Spelled so on purpose, like the file's keys.
  bool addToNoticationCenterApps(std::string_view bundleIdentifier);
  bool removeFromNoticationCenterApps(std::string_view bundleIdentifier);

  bool addToSettingsSpecifiers(std::string_view paneName);
  bool removeFromSettingsSpecifiers(std::string_view paneName);
  bool addToFlipSwitches(std::string_view switchIdentifier);
  bool removeFromFlipSwitches(std::string_view switchIdentifier);
  bool addToControlCenterItems(std::string_view itemIdentifier);
  bool removeFromControlCenterItems(std::string_view itemIdentifier);

  // --- Questions: does this need authentication now? ---------------------------------------
  //
  // With `ignoreAllOther` the answer is whether the item is configured as protected, whatever the
  // main switch, the network and the open sessions say. Nothing is allocated for an answer in the
  // home-screen process while no network is joined, unless a question's own comment says otherwise.

  /// The process's own application.
  bool isAppProtected() const;
  bool isAppProtected(std::string_view bundleIdentifier, bool ignoreAllOther = false) const;

  /// No identifier is never protected.
  bool isNotificationsAppProtected(std::optional<std::string_view> bundleIdentifier,
                                   bool ignoreAllOther = false) const {
    return bundleIdentifier &&
           isMember(ItemSet::notificationApps, *bundleIdentifier, ignoreAllOther);
  }

  /// A pane of the Settings application, by the name shown there. The system's own pane needs
  /// authentication always, whether the system is on or not and whatever else would open it.
  bool isSpecifierProtected(std::string_view paneName, bool ignoreAllOther = false) const;

  /// Without the switches' extension on the device, no switch needs authentication. The file system
  /// is asked until it is found, and again after each load of the settings.
  bool isFlipSwitchProtected(std::string_view switchIdentifier, bool ignoreAllOther = false) const;

  bool isControlCenterItemProtected(std::string_view itemIdentifier,
                                    bool ignoreAllOther = false) const;

  /// Whether the service belongs to a protected application: begins with its identifier, in any
  /// case of letters. Allocates when a service is asked about for the first time.
  bool isSystemServiceProtected(std::string_view service, bool ignoreAllOther = false) const;

  bool isAppArrangementProtected() const;
  bool isAppSwitcherProtected() const;
  bool isRespringProtected() const;
  bool isRebootProtected() const;

  /// By its own flag, or as an application.
  bool isPhotosProtected() const;

  /// The caller's name is hidden whatever sessions are open; the two companions hold only with it.
  bool isCallerIDProtected() const;
  bool isCallerIDProtectedRemoveFromLockScreen() const;
  bool isHideCallerInfoOnAttentionAway() const;

  /// Whether the paired watch may stand in for a match, while the system is on.
  bool isUnlockWithAppleWatch() const noexcept;

  /// Whether the joined network is one of the trusted ones.
  bool isCurrentlyConnectedToTrustedNetwork() const;

  // --- Folders -----------------------------------------------------------------------------
  //
  // A folder is known by its content: a record holds its name and its icons. The writers write the
  // whole list to the file; the result is whether the file took it.

  /// The first stored record that is the folder `record`: it has the same name, and each of its
  /// icons is still in there. -1 when there is none.
  std::int64_t matchedFolderDataIndex(const PropertyList& record) const;

  /// Stores `record`, in the place of the stored one that it matches or at the end.
  bool addToFolders(PropertyList record);

  /// Only for a folder that is stored: throws std::out_of_range for any other, and changes nothing.
  bool removeFromFolders(const PropertyList& record);

  /// In the stored record that `record` matches, appends the icon `newData` or removes every icon
  /// equal to it. Without a match nothing is written.
  bool updateFoldersData(const PropertyList& record, bool add,
                         const std::optional<PropertyList>& newData);

  /// Puts `newRecord` in the place of the stored record that `record` matches. Without a match
  /// nothing is written.
  bool updateFoldersData(const PropertyList& record, PropertyList newRecord);
  bool updateFoldersData(const PropertyList& record, bool add) = delete;

  bool resetAllFolders();

  /// Whether the folder is stored. A session counts only for this very record.
  bool hasFolder(const PropertyList& record, bool ignoreAllOther = false) const;

  /// Whether opening the folder needs authentication. Unless all folders are protected, sessions,
  /// main switch and network count with `ignoreAllOther` as well: the question for its record is
  /// asked without.
  bool isFolderProtected(const SBFolder& folder, bool ignoreAllOther = false) const;

  /// The stored record by which the folder that the application lies in is protected, or, for want
  /// of one while all folders are protected, what SNUtils::protectedFolderData() tells about it.
  /// None when the application's folder needs no authentication.
  std::optional<PropertyList> isFolderProtectedForApp(
      std::optional<std::string_view> bundleIdentifier, bool ignoreAllOther = false) const;

  // --- Passcode ----------------------------------------------------------------------------
  //
  // The passcode in memory changes only when the file is loaded again. Whoever is handed a plain
  // text wipes it.

  /// The stored form of a plain text; none for text that is not UTF-8 and when the cipher fails.
  std::optional<std::string> encryptString(std::string_view plain) const;

  /// The plain text of a stored form; none for anything that encryptString() cannot have made
  /// under the same key.
  std::optional<std::string> decryptString(std::string_view stored) const;

  /// Puts the enciphered passcode into the file; whether the file took it. No passcode, or one that
  /// is not UTF-8, changes nothing. If the cipher fails, the stored passcode is removed.
  bool savePasscode(std::optional<std::string_view> plain);

  /// Whether the file took it.
  bool removePasscode();

  /// Whether `candidate` is exactly the passcode in memory. The time this takes tells nothing about
  /// where they differ. Without a passcode, or with one that cannot be read, nothing is.
  bool validatePasscode(std::string_view candidate) const;

  // --- Trusted networks --------------------------------------------------------------------

  /// Appends `name`, also when it is there already.
  bool addToWiFiNetwork(std::string_view name);

  /// Removes every entry equal to `name`.
  bool removeFromWiFiNetwork(std::string_view name);

  /// Writes the whole list to the file; whether the file took it.
  bool updateSettingsWithNetworkData();

  bool hasWiFiNetwork(std::string_view name) const;

 private:
  const ProtectedItems& items(ItemSet set) const noexcept {
    return itemSets_[static_cast<std::size_t>(set)];
  }
  ProtectedItems& items(ItemSet set) noexcept { return itemSets_[static_cast<std::size_t>(set)]; }
  /// Always, while nobody knows what the set holds.
  bool holds(ItemSet set, std::string_view item) const noexcept {
    return isUnknown_ || items(set).contains(item);
  }

  void setItems(ItemSet set, ProtectedItems value);
  bool addItem(ItemSet set, std::string_view item);
  bool removeItem(ItemSet set, std::string_view item);
  bool writeItems(ItemSet set);

  /// Restores what always holds for a set, and what is derived from it.
  void itemsChanged(ItemSet set);

  /// Whether the system is on and no trusted network is joined.
  bool isProtectionActive() const;

  /// Whether an open session covers the item.
  bool isInSession(const SessionItem& item) const;
  bool isServiceInSession(std::string_view serviceName) const;

  /// Whether the item's own set is to be consulted: protection is active and no open session
  /// covers the item.
  bool passesGate(const SessionItem& item) const;

  /// The same for a switch, which also needs the switches' extension on the device.
  bool passesSwitchGate(const SessionItem& item) const;

  /// The same for one of the system's own services.
  bool passesServiceGate(std::string_view serviceName) const;

  bool isFlipSwitchInstalled() const;
  bool isTrusted(const std::optional<PropertyList::Dictionary>& network) const;
  bool isMember(ItemSet set, std::string_view item, bool ignoreAllOther) const;

  /// What looks into the folders is forgotten first.
  PropertyList::Array& foldersToChange();
  bool replaceFolder(std::int64_t index, PropertyList newRecord);
  bool writeFolders();
  const PropertyList* lastFolderWith(std::string_view bundleIdentifier) const;

  /// `stored` is taken apart.
  template <class T>
  void load(T SettingsValues::*field, PropertyList* stored, const SettingsDefault& fallback);
  void load(ItemSet set, PropertyList* stored, const SettingsDefault& fallback);
  void load(SettingsList list, PropertyList* stored, const SettingsDefault& fallback);

  /// `text`, or in the user's language what stands for it.
  std::string shown(const std::optional<std::string>& text, std::string_view key) const;

  Platform& platform_;
  Bridge& bridge_;
  UnlockSessions& sessions_;
  SNWiFiManager& wifiManager_;

  /// Until the file was read for the first time.
  bool isUnknown_ = true;
  bool isBehind_ = true;
  std::array<ProtectedItems, itemSetCount> itemSets_;

  /// The name of the system's own settings pane, as it was when that set was last filled.
  std::string ownSettingsPane_;

  /// That it was found since the settings were loaded. One that is missing is looked for each time:
  /// once it is there, its switches do not stay open.
  mutable bool flipSwitchInstalled_ = false;
  mutable ProtectedServices protectedServices_;
  PropertyList::Array enabledFolders_;

  /// None until it is needed and from each change of the folders on.
  mutable std::optional<RecordsByApplication> lastFolders_;
  PropertyList::Array wifiNetworks_;
};

}  // namespace sentrel
