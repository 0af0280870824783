#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "device/simulated/Journal.h"
#include "sentrel/platform/DynamicLibraries.h"
#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/OperationQueue.h"
#include "sentrel/platform/ProcessSpawner.h"
#include "sentrel/platform/SystemLog.h"

namespace sentrel::simulated {

/// The optional libraries of a device: at first there are none. Opening and closing go to the
/// journal.
class SimulatedLibraries final : public DynamicLibraries {
 public:
  using Symbols = std::map<std::string, void*>;

  explicit SimulatedLibraries(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  void install(const std::string& path, Symbols symbols) {
    libraries_.insert_or_assign(path, std::move(symbols));
  }

  void remove(const std::string& path) { libraries_.erase(path); }

  /// `onLoad` runs in the process that loads the bundle, each time; one without cannot be loaded.
  void installBundle(const std::string& path, std::function<void()> onLoad) {
    bundles_.insert_or_assign(path, std::move(onLoad));
  }
  void removeBundle(const std::string& path) { bundles_.erase(path); }

  std::shared_ptr<DynamicLibrary> open(const std::string& path, Binding binding) override;
  bool canOpenBundle(const std::string& path) const override { return bundles_.contains(path); }
  bool loadBundle(const std::string& path) override;

 private:
  std::shared_ptr<Journal> journal_;
  std::map<std::string, Symbols> libraries_;
  std::map<std::string, std::function<void()>> bundles_;
};

/// Starts nothing, and notes what was to be started in the journal.
class SimulatedSpawner final : public ProcessSpawner {
 public:
  explicit SimulatedSpawner(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  bool spawn(const std::string& path, const std::vector<std::string>& arguments) override;

 private:
  std::shared_ptr<Journal> journal_;
};

class SimulatedSystemLog final : public SystemLog {
 public:
  void write(const std::string& line) override { lines_.push_back(line); }

  const std::vector<std::string>& lines() const noexcept { return lines_; }

 private:
  std::vector<std::string> lines_;
};

/// Queues that run their work on a main queue.
class SimulatedOperationQueues final : public OperationQueues {
 public:
  explicit SimulatedOperationQueues(std::weak_ptr<MainQueue> mainQueue)
      : mainQueue_(std::move(mainQueue)) {}

  std::shared_ptr<OperationQueue> makeQueue(const std::string& name) override;

 private:
  std::weak_ptr<MainQueue> mainQueue_;
};

}  // namespace sentrel::simulated
