#include "device/bus/BusXpc.h"

#include <optional>
#include <utility>

#include "device/bus/BusProtocol.h"

namespace sentrel::bus {
namespace {

std::string busNameOf(const std::string& serviceName) {
  return protocol::machServicePrefix + serviceName;
}

class Connection final : public XpcConnection {
 public:
  Connection(std::shared_ptr<BusConnection> connection, std::string serviceName)
      : connection_(std::move(connection)), serviceName_(std::move(serviceName)) {}

  void resume() override { isResumed_ = true; }

  void sendMessageWithReply(const PropertyList::Dictionary& message, Reply reply) override {
    if (!isResumed_) return;
    connection_->requestAsync(busNameOf(serviceName_), serviceName_, protocol::xpcMessage, message,
                              [reply = std::move(reply)](const UserInfo& answer) {
                                reply(answer ? std::optional<PropertyList>(*answer) : std::nullopt);
                              });
  }

 private:
  std::shared_ptr<BusConnection> connection_;
  std::string serviceName_;
  bool isResumed_ = false;
};

class AudioControl final : public NanoAudioControlConnection {
 public:
  AudioControl(std::shared_ptr<BusConnection> connection, std::string serviceName)
      : connection_(std::move(connection)), serviceName_(std::move(serviceName)) {}

  void resume() override { isOpen_ = !isInvalid_; }

  void setHapticIntensity(double intensity) override {
    if (!isOpen_) return;
    connection_->requestAsync(busNameOf(serviceName_), serviceName_,
                              protocol::hapticIntensityMessage,
                              PropertyList::Dictionary{{protocol::hapticIntensityKey, intensity}},
                              [](const UserInfo&) {});
  }

  void invalidate() override {
    isOpen_ = false;
    isInvalid_ = true;
  }

 private:
  std::shared_ptr<BusConnection> connection_;
  std::string serviceName_;
  bool isOpen_ = false;
  bool isInvalid_ = false;
};

/// A message, for as long as its receiver keeps it.
class Message final : public XpcMessage {
 public:
  Message(PropertyList::Dictionary content, BusConnection::Answer answer)
      : content_(std::move(content)), answer_(std::move(answer)) {}
  ~Message() override { endWait(std::nullopt); }

  const PropertyList::Dictionary& content() const override { return content_; }

  void reply(PropertyList::Dictionary reply) override { endWait(UserInfo(std::move(reply))); }

 private:
  void endWait(const std::optional<UserInfo>& outcome) {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(outcome);
  }

  PropertyList::Dictionary content_;
  BusConnection::Answer answer_;
};

}  // namespace

std::shared_ptr<XpcConnection> BusXpc::createMachServiceConnection(const std::string& serviceName) {
  if (!connection_->isConnected()) return nullptr;
  return std::make_shared<Connection>(connection_, serviceName);
}

std::shared_ptr<NanoAudioControlConnection> BusXpc::connectToAudioControl(
    const std::string& serviceName, std::uint64_t /*options*/) {
  if (!connection_->isConnected()) return nullptr;
  return std::make_shared<AudioControl>(connection_, serviceName);
}

void serveMachService(BusConnection& connection, const std::string& serviceName,
                      std::function<void(const std::shared_ptr<XpcMessage>&)> handler) {
  connection.serveAsync(
      busNameOf(serviceName), serviceName,
      [handler = std::move(handler)](const std::string& message, const UserInfo& userInfo,
                                     const BusConnection::Answer& answer) {
        if (message != protocol::xpcMessage || !userInfo) return answer(std::nullopt);
        handler(std::make_shared<Message>(*userInfo, answer));
      });
}

void serveAudioControl(BusConnection& connection, const std::string& serviceName,
                       std::function<void(double intensity)> tap) {
  connection.serve(
      busNameOf(serviceName), serviceName,
      [tap = std::move(tap)](const std::string& message, const UserInfo& userInfo) -> UserInfo {
        if (message != protocol::hapticIntensityMessage || !userInfo) return std::nullopt;
        const auto* intensity = find<double>(*userInfo, protocol::hapticIntensityKey);
        if (intensity && *intensity >= 0 && *intensity <= 1) tap(*intensity);
        return std::nullopt;
      });
}

}  // namespace sentrel::bus
