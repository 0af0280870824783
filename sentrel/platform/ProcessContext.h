#pragma once

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Platform.h"

namespace sentrel {

/// Where a call is made: in which process, and with which platform. The ground that every layer
/// stands on; what is built on it, a Process, is no business of the layers below.
class SENTREL_API ProcessContext {
 public:
  ProcessContext(const ProcessContext&) = delete;
  ProcessContext& operator=(const ProcessContext&) = delete;

  /// The one that the calling thread is in: the innermost Scope's, else the main one. Ends the
  /// program with a clear line when there is neither.
  static ProcessContext& current();

  /// Makes `context` the one that every thread is in unless a Scope says otherwise; null for none.
  static void setMain(ProcessContext* context) noexcept;

  /// Puts the calling thread inside a process for as long as the scope lives.
  class SENTREL_API Scope {
   public:
    explicit Scope(ProcessContext& context) noexcept;
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    ProcessContext* previous_;
  };

  Platform& platform() noexcept { return platform_; }

 protected:
  /// Only a Process is made of it. Throws what checkedPlatform() throws for a platform that lacks a
  /// port.
  explicit ProcessContext(Platform platform);
  ~ProcessContext();

 private:
  Platform platform_;
};

}  // namespace sentrel
