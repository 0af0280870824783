#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "device/simulated/SimulatedWatch.h"
#include "device/simulated/VirtualTimeline.h"
#include "sentrel/Process.h"
#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/Xpc.h"

namespace sentrel::simulated {

/// One message as it was sent, on a connection of its number.
struct SentXpcMessage {
  std::string sender;
  std::string service;
  std::size_t connection;
  PropertyList::Dictionary content;
};

/// Carries messages to the services of a device's processes, and remembers what was sent.
///
/// A service is absent until a process serves it, and again when that process has ended. How one
/// fails is up to its handler: it lets go of a message to break off, keeps it to hang, and replies
/// as often and as late as it likes.
class XpcHub {
 public:
  /// Runs inside the serving process, on a later turn than the message was sent.
  using Handler = std::function<void(const std::shared_ptr<XpcMessage>& message)>;

  XpcHub(std::shared_ptr<VirtualTimeline> timeline, std::shared_ptr<SimulatedWatch> watch)
      : timeline_(std::move(timeline)), watch_(std::move(watch)) {}

  void serve(const std::string& service, std::weak_ptr<Process> process, Handler handler) {
    services_.insert_or_assign(service, Registration{std::move(process), std::move(handler)});
  }
  void remove(const std::string& service) { services_.erase(service); }

  /// Whether connections can be made at all, to the audio control as well.
  void setRefusesConnections(bool value) noexcept { refusesConnections_ = value; }

  /// How long an asker waits for a service that hangs.
  void setReplyTimeout(Seconds timeout) noexcept { replyTimeout_ = timeout; }

  /// Every message sent since the last time it was forgotten.
  const std::vector<SentXpcMessage>& sent() const noexcept { return sent_; }
  void forgetSent() { sent_.clear(); }

 private:
  friend class SimulatedXpc;
  friend class SimulatedXpcConnection;

  class Message;
  struct Registration {
    std::weak_ptr<Process> process;
    Handler handler;
  };

  void send(SentXpcMessage message, std::weak_ptr<MainQueue> asker, XpcConnection::Reply reply);

  std::shared_ptr<VirtualTimeline> timeline_;
  std::shared_ptr<SimulatedWatch> watch_;
  std::map<std::string, Registration> services_;
  std::vector<SentXpcMessage> sent_;
  Seconds replyTimeout_{2};
  std::size_t connections_ = 0;
  bool refusesConnections_ = false;
};

/// One process's end of the hub.
class SimulatedXpc final : public Xpc {
 public:
  SimulatedXpc(std::shared_ptr<XpcHub> hub, std::weak_ptr<MainQueue> queue, std::string sender)
      : hub_(std::move(hub)), queue_(std::move(queue)), sender_(std::move(sender)) {}

  std::shared_ptr<XpcConnection> createMachServiceConnection(
      const std::string& serviceName) override;
  std::shared_ptr<NanoAudioControlConnection> connectToAudioControl(const std::string& serviceName,
                                                                    std::uint64_t options) override;

 private:
  std::shared_ptr<XpcHub> hub_;
  std::weak_ptr<MainQueue> queue_;
  std::string sender_;
};

}  // namespace sentrel::simulated
