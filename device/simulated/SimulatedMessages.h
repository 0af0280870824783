#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "sentrel/Process.h"
#include "sentrel/platform/MessageChannel.h"

namespace sentrel::simulated {

/// One request as it was sent.
struct SentMessage {
  std::string sender;
  std::string name;
  UserInfo userInfo;
};

/// Carries requests to the process that answers them, and remembers what was sent.
class MessageHub {
 public:
  /// Lets `process` answer the channel. No responder or a dead process is no reply.
  void setResponder(const std::string& channel, std::weak_ptr<Process> process,
                    MessageResponder responder);

  UserInfo send(const std::string& sender, const std::string& channel, const std::string& message,
                const UserInfo& userInfo);

  const std::vector<SentMessage>& sent() const noexcept { return sent_; }
  void forgetSent() { sent_.clear(); }

 private:
  struct Registration {
    std::weak_ptr<Process> process;
    MessageResponder responder;
  };

  std::map<std::string, Registration> responders_;
  std::vector<SentMessage> sent_;
};

/// One process's end of the hub.
class SimulatedMessageChannel final : public MessageChannel {
 public:
  SimulatedMessageChannel(std::shared_ptr<MessageHub> hub, std::string sender)
      : hub_(std::move(hub)), sender_(std::move(sender)) {}

  UserInfo sendMessageAndReceiveReply(const std::string& channel, const std::string& message,
                                      const UserInfo& userInfo) override {
    return hub_->send(sender_, channel, message, userInfo);
  }

 private:
  std::shared_ptr<MessageHub> hub_;
  std::string sender_;
};

}  // namespace sentrel::simulated
