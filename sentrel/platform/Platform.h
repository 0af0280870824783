#pragma once

#include <memory>

#include "sentrel/platform/ApplicationServices.h"
#include "sentrel/platform/Applications.h"
#include "sentrel/platform/AudioServices.h"
#include "sentrel/platform/Biometrics.h"
#include "sentrel/platform/CaseMapping.h"
#include "sentrel/platform/Clock.h"
#include "sentrel/platform/Cryptography.h"
#include "sentrel/platform/DynamicLibraries.h"
#include "sentrel/platform/FSSwitchPanel.h"
#include "sentrel/platform/FileSystem.h"
#include "sentrel/platform/HomeScreen.h"
#include "sentrel/platform/LocalAuthentication.h"
#include "sentrel/platform/LockScreen.h"
#include "sentrel/platform/MainBundle.h"
#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/ManagedConfiguration.h"
#include "sentrel/platform/MessageChannel.h"
#include "sentrel/platform/NotificationCenter.h"
#include "sentrel/platform/OperationQueue.h"
#include "sentrel/platform/PKGlyphViewClass.h"
#include "sentrel/platform/PresenceDetection.h"
#include "sentrel/platform/ProcessSpawner.h"
#include "sentrel/platform/PropertyListFiles.h"
#include "sentrel/platform/QVUtils.h"
#include "sentrel/platform/SBNotificationCenterController.h"
#include "sentrel/platform/Screen.h"
#include "sentrel/platform/SharingDaemon.h"
#include "sentrel/platform/SystemFacts.h"
#include "sentrel/platform/SystemLog.h"
#include "sentrel/platform/TextMeasuring.h"
#include "sentrel/platform/WiFi.h"
#include "sentrel/platform/Xpc.h"

namespace sentrel {

/// Everything that one process asks of its device. Whoever makes a Process fills it in.
///
/// The members of the first group are always present once a Process has been made of it, which
/// fills in those that can do nothing and refuses to do without the others. One of the second
/// stands for a class that not every system has, and is null on those.
struct Platform {
  std::shared_ptr<MainBundle> mainBundle;
  std::shared_ptr<Clock> clock;
  std::shared_ptr<MainQueue> mainQueue;
  std::shared_ptr<FileSystem> files;
  std::shared_ptr<PropertyListFiles> propertyListFiles;
  std::shared_ptr<Cryptography> cryptography;
  std::shared_ptr<CaseMapping> caseMapping;
  std::shared_ptr<NotificationCenter> darwinCenter;
  std::shared_ptr<NotificationCenter> distributedCenter;
  std::shared_ptr<NotificationCenter> localCenter;
  std::shared_ptr<MessageChannel> messageChannel;
  std::shared_ptr<WiFi> wifi;
  std::shared_ptr<SystemFacts> system;
  std::shared_ptr<SystemLog> systemLog;
  std::shared_ptr<DynamicLibraries> libraries;
  std::shared_ptr<ProcessSpawner> spawner;
  std::shared_ptr<OperationQueues> operationQueues;
  std::shared_ptr<LocalAuthentication> localAuthentication;
  std::shared_ptr<Xpc> xpc;
  std::shared_ptr<AudioServices> audioServices;

  /// Null in a process that has no user interface.
  std::shared_ptr<Screen> screen;
  std::shared_ptr<TextMeasuring> textMeasuring;

  std::shared_ptr<QVUtils> qvUtils;
  std::shared_ptr<SpringBoardApplication> springBoard;
  std::shared_ptr<SBApplicationController> applicationController;
  std::shared_ptr<SBIconController> iconController;
  std::shared_ptr<SBLockScreenManager> lockScreenManager;
  std::shared_ptr<SBUIBiometricResource> biometricResource;
  std::shared_ptr<SBUIBiometricEventMonitor> biometricEventMonitor;
  std::shared_ptr<BiometricKitManager> biometricKit;
  std::shared_ptr<BKUserProtectedConfiguration> protectedConfiguration;
  std::shared_ptr<BKDeviceManager> deviceManager;
  std::shared_ptr<MCPasscodeManager> passcodeManager;
  std::shared_ptr<MCProfileConnection> profileConnection;
  std::shared_ptr<BackBoardServices> backBoard;
  std::shared_ptr<FBSOpenApplicationService> openApplicationService;
  std::shared_ptr<FSSwitchPanel> switchPanel;
  std::shared_ptr<SBNotificationCenterController> notificationCenterController;
  std::shared_ptr<const PKGlyphViewClass> glyphViewClass;

  /// In the sharing daemon only.
  std::shared_ptr<SDPairedDeviceAgent> pairedDeviceAgent;
  std::shared_ptr<SDStatusMonitor> statusMonitor;
};

}  // namespace sentrel
