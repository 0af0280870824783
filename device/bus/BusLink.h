#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "device/bus/BusConnection.h"
#include "device/loop/ObserverTable.h"

namespace sentrel::bus {

/// The connection itself. Blocks that wait on the main queue hold it weakly.
///
/// Every use of the bus is under `mutex_`, incoming messages included, and no code of anyone else
/// runs under it.
class BusConnection::Link final : public loop::RunLoop::Source,
                                  public std::enable_shared_from_this<Link> {
 public:
  Link(std::shared_ptr<loop::RunLoop> loop, Options options);

  void connect();
  bool isConnected();

  void serve(const std::string& service, const std::string& channel, AsyncResponder responder);
  UserInfo request(const std::string& service, const std::string& channel,
                   const std::string& message, const UserInfo& userInfo);
  void requestAsync(const std::string& service, const std::string& channel,
                    const std::string& message, const UserInfo& userInfo, ReplyHandler reply);
  void post(BusNotificationKind kind, const Notification& notification);
  Observation addObserver(BusNotificationKind kind, const std::string& name,
                          NotificationCenter::Observer observer);
  void catchUp();

  Wish prepare() override;
  void dispatch() override;

 private:
  void receiveQuestion(sdbus::MethodCall call);
  void respond(const std::string& channel, const std::string& message, const UserInfo& userInfo,
               const Answer& answer) noexcept;
  void reply(std::uint64_t number, const std::optional<UserInfo>& answer);
  void receiveNotification(sdbus::Message& signal);
  void deliver(loop::ObserverTable& observers, Notification notification);
  void subscribe();

  bool servesHere(const std::string& service);
  UserInfo askHere(const std::string& channel, const std::string& message,
                   const UserInfo& userInfo);
  void askHereAsync(const std::string& channel, const std::string& message,
                    const UserInfo& userInfo, ReplyHandler reply);
  UserInfo ask(const std::string& service, const std::string& channel, const std::string& message,
               const UserInfo& userInfo);
  void askAsync(const std::string& service, const std::string& channel, const std::string& message,
                const UserInfo& userInfo, ReplyHandler reply);
  sdbus::IProxy& proxyTo(const std::string& service);
  std::optional<sdbus::MethodCall> makeQuestion(const std::string& service,
                                                const std::string& channel,
                                                const std::string& message,
                                                const UserInfo& userInfo);
  std::uint64_t startWait(ReplyHandler reply);
  void hear(std::uint64_t number, const UserInfo& answer);
  void endWait(std::uint64_t number, UserInfo answer);
  void send(const char* signal, const Notification& notification);
  loop::ObserverTable& observers(BusNotificationKind kind) {
    return kind == BusNotificationKind::darwin ? darwin_ : distributed_;
  }

  void note(const sdbus::Error& error);
  void lose(const std::string& reason);
  void wakeLoop();
  bool isLoopThread() const { return std::this_thread::get_id() == loopThread_; }

  const std::shared_ptr<loop::RunLoop> loop_;
  const std::thread::id loopThread_ = std::this_thread::get_id();
  Options options_;
  const std::uint64_t replyTimeout_;  ///< in microseconds, as the engine wants it
  loop::ObserverTable darwin_;
  loop::ObserverTable distributed_;

  std::mutex mutex_;
  std::string lossReason_;
  std::set<std::string> services_;
  std::map<std::string, AsyncResponder, std::less<>> responders_;

  // Null once the bus is lost. What hangs on the bus goes before it.
  std::unique_ptr<sdbus::IConnection> bus_;
  std::unique_ptr<sdbus::IObject> object_;
  std::map<std::string, std::unique_ptr<sdbus::IProxy>> proxies_;
  sdbus::Slot subscription_;
  std::map<std::uint64_t, sdbus::MethodCall> unanswered_;
  std::uint64_t questions_ = 0;

  // Who waits for a reply without blocking.
  std::map<std::uint64_t, ReplyHandler> waiting_;
  std::uint64_t asked_ = 0;
};

}  // namespace sentrel::bus
