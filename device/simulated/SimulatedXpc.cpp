#include "device/simulated/SimulatedXpc.h"

#include <optional>
#include <utility>

#include "device/common/UserInfoLimits.h"

namespace sentrel::simulated {

/// A message on its way, and the asker who waits for its reply: the first thing that ends the wait
/// is what the asker hears.
class XpcHub::Message final : public XpcMessage, public std::enable_shared_from_this<Message> {
 public:
  Message(PropertyList::Dictionary content, std::weak_ptr<MainQueue> asker,
          XpcConnection::Reply reply)
      : content_(std::move(content)), asker_(std::move(asker)), reply_(std::move(reply)) {}

  ~Message() override { endWait(std::nullopt); }

  const PropertyList::Dictionary& content() const override { return content_; }

  void reply(PropertyList::Dictionary reply) override { endWait(outcomeOf(std::move(reply))); }

  void startTimeout(Seconds timeout) {
    const auto queue = asker_.lock();
    if (!reply_ || !queue) return;
    queue->after(timeout, [message = weak_from_this()] {
      if (const auto kept = message.lock()) kept->endWait(std::nullopt);
    });
  }

 private:
  static std::optional<PropertyList> outcomeOf(UserInfo reply) {
    if (!isCarriable(reply)) return std::nullopt;
    return std::move(*reply);
  }

  void endWait(std::optional<PropertyList> outcome) {
    auto waiting = std::exchange(reply_, nullptr);
    const auto queue = asker_.lock();
    if (!waiting || !queue) return;
    queue->async(
        [waiting = std::move(waiting), outcome = std::move(outcome)] { waiting(outcome); });
  }

  PropertyList::Dictionary content_;
  std::weak_ptr<MainQueue> asker_;
  XpcConnection::Reply reply_;
};

void XpcHub::send(SentXpcMessage sent, std::weak_ptr<MainQueue> asker, XpcConnection::Reply reply) {
  sent_.push_back(sent);
  auto message =
      std::make_shared<Message>(std::move(sent.content), std::move(asker), std::move(reply));
  const auto service = services_.find(sent.service);
  if (service == services_.end() || !isCarriable(message->content())) return;
  timeline_->after(Seconds(0), [registration = service->second, timeout = replyTimeout_,
                                message = std::move(message)] {
    const auto process = registration.process.lock();
    if (!process) return;
    Process::Scope scope(*process);
    try {
      registration.handler(message);
    } catch (...) {
      // Ends in its own process, and with it the wait unless the message was kept.
    }
    message->startTimeout(timeout);
  });
}

class SimulatedXpcConnection final : public XpcConnection {
 public:
  SimulatedXpcConnection(std::shared_ptr<XpcHub> hub, std::weak_ptr<MainQueue> queue,
                         SentXpcMessage envelope)
      : hub_(std::move(hub)), queue_(std::move(queue)), envelope_(std::move(envelope)) {}

  void resume() override { isResumed_ = true; }

  void sendMessageWithReply(const PropertyList::Dictionary& message, Reply reply) override {
    if (!isResumed_) return;
    SentXpcMessage sent = envelope_;
    sent.content = message;
    hub_->send(std::move(sent), queue_, std::move(reply));
  }

 private:
  std::shared_ptr<XpcHub> hub_;
  std::weak_ptr<MainQueue> queue_;
  SentXpcMessage envelope_;
  bool isResumed_ = false;
};

std::shared_ptr<XpcConnection> SimulatedXpc::createMachServiceConnection(
    const std::string& serviceName) {
  if (hub_->refusesConnections_) return nullptr;
  return std::make_shared<SimulatedXpcConnection>(
      hub_, queue_, SentXpcMessage{sender_, serviceName, ++hub_->connections_, {}});
}

std::shared_ptr<NanoAudioControlConnection> SimulatedXpc::connectToAudioControl(
    const std::string& serviceName, std::uint64_t options) {
  if (hub_->refusesConnections_) return nullptr;
  return makeAudioControlConnection(hub_->watch_, serviceName, options);
}

}  // namespace sentrel::simulated
