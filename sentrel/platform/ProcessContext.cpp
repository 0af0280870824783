#include "sentrel/platform/ProcessContext.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "sentrel/platform/PlatformCheck.h"

namespace sentrel {
namespace {

std::atomic<ProcessContext*> mainContext = nullptr;

// Every call of a shared operation reads this. With the model for what is there when the program
// starts, that is one load, also for a library; one pointer fits the room that is left for those
// loaded later.
constinit thread_local ProcessContext* scopedContext __attribute__((tls_model("initial-exec"))) =
    nullptr;

}  // namespace

ProcessContext::ProcessContext(Platform platform)
    : platform_(checkedPlatform(std::move(platform))) {}

ProcessContext::~ProcessContext() {
  ProcessContext* self = this;
  mainContext.compare_exchange_strong(self, nullptr);
}

ProcessContext& ProcessContext::current() {
  if (scopedContext) return *scopedContext;
  if (ProcessContext* context = mainContext.load(std::memory_order_acquire)) return *context;
  std::fputs("sentrel: the library was used before a Process was made for it\n", stderr);
  std::abort();
}

void ProcessContext::setMain(ProcessContext* context) noexcept {
  mainContext.store(context, std::memory_order_release);
}

ProcessContext::Scope::Scope(ProcessContext& context) noexcept
    : previous_(std::exchange(scopedContext, &context)) {}

ProcessContext::Scope::~Scope() {
  scopedContext = previous_;
}

}  // namespace sentrel
