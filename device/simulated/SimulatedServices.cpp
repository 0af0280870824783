#include "device/simulated/SimulatedServices.h"

#include <utility>

namespace sentrel::simulated {
namespace {

class OpenLibrary final : public DynamicLibrary {
 public:
  OpenLibrary(std::shared_ptr<Journal> journal, std::string path,
              SimulatedLibraries::Symbols symbols)
      : journal_(std::move(journal)), path_(std::move(path)), symbols_(std::move(symbols)) {}

  ~OpenLibrary() override { journal_->record("close " + path_); }

  void* symbol(const std::string& name) const override {
    const auto found = symbols_.find(name);
    return found == symbols_.end() ? nullptr : found->second;
  }

 private:
  std::shared_ptr<Journal> journal_;
  std::string path_;
  SimulatedLibraries::Symbols symbols_;
};

class Queue final : public OperationQueue {
 public:
  Queue(std::string name, std::weak_ptr<MainQueue> mainQueue)
      : name_(std::move(name)), mainQueue_(std::move(mainQueue)) {}

  const std::string& name() const override { return name_; }

  void addOperation(std::function<void()> block) override {
    if (const auto queue = mainQueue_.lock()) queue->async(std::move(block));
  }

 private:
  std::string name_;
  std::weak_ptr<MainQueue> mainQueue_;
};

}  // namespace

std::shared_ptr<DynamicLibrary> SimulatedLibraries::open(const std::string& path, Binding binding) {
  const auto library = libraries_.find(path);
  if (library == libraries_.end()) return nullptr;
  journal_->record("open " + path + (binding == Binding::now ? " now" : " lazily"));
  return std::make_shared<OpenLibrary>(journal_, path, library->second);
}

bool SimulatedLibraries::loadBundle(const std::string& path) {
  const auto bundle = bundles_.find(path);
  if (bundle == bundles_.end() || !bundle->second) return false;
  bundle->second();
  return true;
}

bool SimulatedSpawner::spawn(const std::string& path, const std::vector<std::string>& arguments) {
  std::string line = "spawn " + path + " with";
  for (const std::string& argument : arguments)
    line += " [" + argument + "]";
  journal_->record(std::move(line));
  return true;
}

std::shared_ptr<OperationQueue> SimulatedOperationQueues::makeQueue(const std::string& name) {
  return std::make_shared<Queue>(name, mainQueue_);
}

}  // namespace sentrel::simulated
