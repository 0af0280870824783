#pragma once

#include <functional>
#include <memory>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// A queue of work beside the main queue. It drops nothing before its owner lets it go.
class SENTREL_API OperationQueue {
 public:
  virtual ~OperationQueue() = default;

  virtual const std::string& name() const = 0;

  /// Runs `block` later, on any thread.
  virtual void addOperation(std::function<void()> block) = 0;
};

/// Makes queues.
class SENTREL_API OperationQueues {
 public:
  virtual ~OperationQueues() = default;

  virtual std::shared_ptr<OperationQueue> makeQueue(const std::string& name) = 0;
};

}  // namespace sentrel
