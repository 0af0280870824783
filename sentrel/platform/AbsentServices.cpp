#include "sentrel/platform/AbsentServices.h"

#include <utility>

namespace sentrel {
namespace {

using Queue = std::shared_ptr<MainQueue>;

/// In the home screen a radio that has joined nothing. Any other process holds no handles, and asks
/// the home screen: that one must not, for it would ask itself without end.
class NoWiFi final : public WiFi {
 public:
  explicit NoWiFi(bool isSpringBoard) : hasHandles_(isSpringBoard) {}

  bool hasManager() const override { return hasHandles_; }
  bool hasClient() const override { return hasHandles_; }
  std::optional<PropertyList::Array> knownNetworks() const override { return {}; }
  std::optional<PropertyList::Dictionary> currentNetwork() const override { return {}; }

 private:
  bool hasHandles_;
};

class NoSystemLog final : public SystemLog {
 public:
  void write(const std::string&) override {}
};

class NoLibraries final : public DynamicLibraries {
 public:
  std::shared_ptr<DynamicLibrary> open(const std::string&, Binding) override { return nullptr; }
  bool canOpenBundle(const std::string&) const override { return false; }
  bool loadBundle(const std::string&) override { return false; }
};

class NoSpawner final : public ProcessSpawner {
 public:
  bool spawn(const std::string&, const std::vector<std::string>&) override { return false; }
};

class NoAudioServices final : public AudioServices {
 public:
  void playSystemSoundWithVibration(std::uint32_t, const PropertyList::Dictionary&) override {}
};

class NoMessageChannel final : public MessageChannel {
 public:
  UserInfo sendMessageAndReceiveReply(const std::string&, const std::string&,
                                      const UserInfo&) override {
    return std::nullopt;
  }
};

/// To a service that is not there: with no connection at all, an asker would wait for ever.
class DeadConnection final : public XpcConnection {
 public:
  explicit DeadConnection(Queue queue) : queue_(std::move(queue)) {}

  void resume() override { isResumed_ = true; }

  void sendMessageWithReply(const PropertyList::Dictionary&, Reply reply) override {
    if (isResumed_ && reply) queue_->async([reply = std::move(reply)] { reply(std::nullopt); });
  }

 private:
  Queue queue_;
  bool isResumed_ = false;
};

class NoXpc final : public Xpc {
 public:
  explicit NoXpc(Queue queue) : queue_(std::move(queue)) {}

  std::shared_ptr<XpcConnection> createMachServiceConnection(const std::string&) override {
    return std::make_shared<DeadConnection>(queue_);
  }
  std::shared_ptr<NanoAudioControlConnection> connectToAudioControl(const std::string&,
                                                                    std::uint64_t) override {
    return nullptr;
  }

 private:
  Queue queue_;
};

/// Whoever asks for the owner is refused. It says that there is a sensor: a device that has none
/// lets everybody through unasked, and a port that was left out is no reason for that.
class RefusingContext final : public LAContext {
 public:
  explicit RefusingContext(Queue queue) : queue_(std::move(queue)) {}

  bool canEvaluateBiometricPolicy() override { return true; }
  BiometryType biometryType() const override { return BiometryType::touchID; }
  void setLocalizedFallbackTitle(const std::string&) override {}
  void evaluateBiometricPolicy(const std::string&, Reply reply) override {
    if (!reply) return;
    queue_->async([reply = std::move(reply)] {
      reply(false, PlatformError{"com.apple.LocalAuthentication", -6, "Nobody can be asked here."});
    });
  }

 private:
  Queue queue_;
};

class NoLocalAuthentication final : public LocalAuthentication {
 public:
  explicit NoLocalAuthentication(Queue queue) : queue_(std::move(queue)) {}

  std::shared_ptr<LAContext> makeContext() override {
    return std::make_shared<RefusingContext>(queue_);
  }

 private:
  Queue queue_;
};

/// Work that may run on any thread runs on the one that there is.
class QueueOnMain final : public OperationQueue {
 public:
  QueueOnMain(std::string name, Queue queue) : name_(std::move(name)), queue_(std::move(queue)) {}

  const std::string& name() const override { return name_; }
  void addOperation(std::function<void()> block) override { queue_->async(std::move(block)); }

 private:
  std::string name_;
  Queue queue_;
};

class QueuesOnMain final : public OperationQueues {
 public:
  explicit QueuesOnMain(Queue queue) : queue_(std::move(queue)) {}

  std::shared_ptr<OperationQueue> makeQueue(const std::string& name) override {
    return std::make_shared<QueueOnMain>(name, queue_);
  }

 private:
  Queue queue_;
};

template <class Absent, class Port, class... Arguments>
void standIn(std::shared_ptr<Port>& port, const Arguments&... arguments) {
  if (!port) port = std::make_shared<Absent>(arguments...);
}

}  // namespace

void addAbsentServices(Platform& platform) {
  standIn<NoWiFi>(platform.wifi,
                  platform.mainBundle->bundleIdentifier() == springBoardBundleIdentifier);
  standIn<NoSystemLog>(platform.systemLog);
  standIn<NoLibraries>(platform.libraries);
  standIn<NoSpawner>(platform.spawner);
  standIn<NoAudioServices>(platform.audioServices);
  standIn<NoMessageChannel>(platform.messageChannel);
  standIn<NoXpc>(platform.xpc, platform.mainQueue);
  standIn<NoLocalAuthentication>(platform.localAuthentication, platform.mainQueue);
  standIn<QueuesOnMain>(platform.operationQueues, platform.mainQueue);
}

}  // namespace sentrel
