#pragma once

#include <memory>

#include "sentrel/platform/CaseMapping.h"
#include "sentrel/platform/Clock.h"
#include "sentrel/platform/Cryptography.h"
#include "sentrel/platform/FileSystem.h"
#include "sentrel/platform/MainBundle.h"
#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/MessageChannel.h"
#include "sentrel/platform/NotificationCenter.h"
#include "sentrel/platform/PropertyListFiles.h"
#include "sentrel/platform/WiFi.h"

namespace sentrel {

/// Everything that one process asks of its device. Whoever makes a Process fills it in.
///
/// The members of the first group are always present. A member of the second stands for a class
/// that a running system may lack, and is null where it does.
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
};

}  // namespace sentrel
