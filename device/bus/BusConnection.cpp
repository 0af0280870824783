#include "device/bus/BusConnection.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <future>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include "device/bus/BusCodec.h"
#include "device/bus/BusProtocol.h"
#include "device/loop/ObserverTable.h"

namespace sentrel::bus {
namespace {

std::uint64_t microseconds(Seconds time) {
  constexpr Seconds shortest{1e-6};  // 0 would mean the default of the engine
  constexpr Seconds longest{1e6};
  const Seconds bounded = time > shortest ? std::min(time, longest) : shortest;
  return static_cast<std::uint64_t>(bounded.count() * 1e6);
}

bool meansLoss(const sdbus::Error& error) {
  const auto& name = error.getName();
  return name == "System.Error.ENOTCONN" || name == "System.Error.ECONNRESET" ||
         name == "System.Error.EPIPE";
}

bool meansTaken(const sdbus::Error& error) {
  const auto& name = error.getName();
  return name == "System.Error.EEXIST" || name == "org.freedesktop.DBus.Error.FileExists";
}

}  // namespace

/// The connection itself. Blocks that wait on the main queue hold it weakly.
///
/// Every use of the bus is under `mutex_`, incoming messages included, and no code of anyone else
/// runs under it.
class BusConnection::Link final : public loop::RunLoop::Source,
                                  public std::enable_shared_from_this<Link> {
 public:
  Link(std::shared_ptr<loop::RunLoop> loop, Options options)
      : loop_(std::move(loop)), options_(std::move(options)), darwin_(loop_), distributed_(loop_) {}

  void connect();
  bool isConnected();

  void serve(const std::string& service, const std::string& channel, MessageResponder responder);
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
  std::optional<UserInfo> compute(const std::string& channel, const std::string& message,
                                  const UserInfo& userInfo) noexcept;
  void reply(std::uint64_t number, const std::optional<UserInfo>& computed);
  void receiveNotification(sdbus::Message& signal);
  void subscribe();

  bool servesHere(const std::string& service);
  UserInfo askHere(const std::string& channel, const std::string& message,
                   const UserInfo& userInfo);
  UserInfo ask(const std::string& service, const std::string& channel, const std::string& message,
               const UserInfo& userInfo);
  void askAsync(const std::string& service, const std::string& channel, const std::string& message,
                const UserInfo& userInfo, ReplyHandler reply);
  sdbus::IProxy& proxyTo(const std::string& service);
  std::optional<sdbus::MethodCall> makeQuestion(const std::string& service,
                                                const std::string& channel,
                                                const std::string& message,
                                                const UserInfo& userInfo);
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
  loop::ObserverTable darwin_;
  loop::ObserverTable distributed_;

  std::mutex mutex_;
  std::string lossReason_;
  std::set<std::string> services_;
  std::map<std::string, MessageResponder, std::less<>> responders_;

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

void BusConnection::Link::connect() {
  std::lock_guard lock(mutex_);
  if (!options_.address) return lose("there is no bus");
  try {
    bus_ = sdbus::createSessionBusConnectionWithAddress(*options_.address);
    bus_->setMethodCallTimeout(microseconds(options_.replyTimeout));
    object_ = sdbus::createObject(*bus_, protocol::objectPath);
    object_->registerMethod(protocol::messagesInterface, protocol::askMethod,
                            protocol::askSignature, protocol::answerSignature,
                            [this](sdbus::MethodCall call) { receiveQuestion(std::move(call)); });
    object_->finishRegistration();
  } catch (const sdbus::Error& error) {
    lose(error.getMessage());
  }
}

bool BusConnection::Link::isConnected() {
  std::lock_guard lock(mutex_);
  return bus_ != nullptr;
}

// --- Driving -------------------------------------------------------------------------------------

loop::RunLoop::Source::Wish BusConnection::Link::prepare() {
  std::lock_guard lock(mutex_);
  if (!bus_) return {};
  try {
    const auto data = bus_->getEventLoopPollData();
    Wish wish{data.fd, data.events, std::nullopt};
    if (const auto timeout = data.getRelativeTimeout()) wish.timeout = *timeout;
    return wish;
  } catch (const sdbus::Error& error) {
    lose(error.getMessage());
    return {};
  }
}

void BusConnection::Link::dispatch() {
  std::lock_guard lock(mutex_);
  if (!bus_) return;
  try {
    bus_->processPendingRequest();
  } catch (const sdbus::Error& error) {
    lose(error.getMessage());
  }
}

/// After another thread has used the bus, something may have come in that the loop's wait does not
/// see, or be left to go out.
void BusConnection::Link::wakeLoop() {
  if (!isLoopThread()) loop_->wake();
}

void BusConnection::Link::note(const sdbus::Error& error) {
  if (meansLoss(error)) lose(error.getMessage());
}

void BusConnection::Link::lose(const std::string& reason) {
  if (!lossReason_.empty()) return;
  lossReason_ = reason.empty() ? "the bus is gone" : reason;
  unanswered_.clear();
  subscription_.reset();
  proxies_.clear();
  object_.reset();
  bus_.reset();
  while (!waiting_.empty())
    endWait(waiting_.begin()->first, std::nullopt);
  if (!options_.onLost) return;
  loop_->async([report = std::move(options_.onLost), text = lossReason_] { report(text); });
}

// --- Answering -----------------------------------------------------------------------------------

void BusConnection::Link::serve(const std::string& service, const std::string& channel,
                                MessageResponder responder) {
  std::lock_guard lock(mutex_);
  if (!bus_) throw BusError("cannot serve " + service + " on the bus: " + lossReason_);
  try {
    if (!services_.contains(service)) bus_->requestName(service);
  } catch (const sdbus::Error& error) {
    if (meansTaken(error))
      throw BusError("another process already has the name " + service + " on this bus");
    throw BusError("the bus does not give the name " + service + ": " + error.getMessage());
  }
  services_.insert(service);
  responders_.insert_or_assign(channel, std::move(responder));
  wakeLoop();
}

void BusConnection::Link::receiveQuestion(sdbus::MethodCall call) {
  try {
    std::string channel;
    std::string message;
    call >> channel >> message;
    auto userInfo = readUserInfo(call);
    if (!userInfo) {
      const sdbus::Error error(protocol::malformedError, "no user info within bounds");
      return call.createErrorReply(error).send();
    }
    const std::uint64_t number = questions_++;
    unanswered_.emplace(number, std::move(call));
    loop_->async([link = weak_from_this(), number, channel = std::move(channel),
                  message = std::move(message), userInfo = std::move(*userInfo)] {
      if (const auto alive = link.lock())
        alive->reply(number, alive->compute(channel, message, userInfo));
    });
  } catch (const std::exception&) {
    // The caller is gone, or its question is not even readable: nobody waits for an answer.
  }
}

/// The outer none: there is nothing to answer with.
std::optional<UserInfo> BusConnection::Link::compute(const std::string& channel,
                                                     const std::string& message,
                                                     const UserInfo& userInfo) noexcept {
  try {
    MessageResponder responder;
    {
      std::lock_guard lock(mutex_);
      const auto found = responders_.find(channel);
      if (found == responders_.end()) return std::nullopt;
      responder = found->second;
    }
    return responder(message, userInfo);
  } catch (...) {
    return std::nullopt;
  }
}

void BusConnection::Link::reply(std::uint64_t number, const std::optional<UserInfo>& computed) {
  std::lock_guard lock(mutex_);
  const auto call = unanswered_.extract(number);
  if (!call) return;  // the bus was lost meanwhile
  try {
    if (computed) {
      auto answer = call.mapped().createReply();
      if (appendUserInfo(answer, *computed)) return answer.send();
    }
    call.mapped().createErrorReply(sdbus::Error(protocol::failedError, "no answer")).send();
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

// --- Asking --------------------------------------------------------------------------------------

UserInfo BusConnection::Link::request(const std::string& service, const std::string& channel,
                                      const std::string& message, const UserInfo& userInfo) {
  if (servesHere(service)) return askHere(channel, message, userInfo);
  UserInfo answer = ask(service, channel, message, userInfo);
  wakeLoop();
  return answer;
}

bool BusConnection::Link::servesHere(const std::string& service) {
  std::lock_guard lock(mutex_);
  return bus_ && services_.contains(service);
}

/// The bus would refuse to carry a question from a connection to itself.
UserInfo BusConnection::Link::askHere(const std::string& channel, const std::string& message,
                                      const UserInfo& userInfo) {
  if (isLoopThread()) return compute(channel, message, userInfo).value_or(std::nullopt);
  const auto answer = std::make_shared<std::promise<UserInfo>>();
  auto future = answer->get_future();
  loop_->async([link = weak_from_this(), answer, channel, message, userInfo] {
    const auto alive = link.lock();
    answer->set_value(alive ? alive->compute(channel, message, userInfo).value_or(std::nullopt)
                            : std::nullopt);
  });
  const auto wait = std::chrono::microseconds(microseconds(options_.replyTimeout));
  return future.wait_for(wait) == std::future_status::ready ? future.get() : std::nullopt;
}

UserInfo BusConnection::Link::ask(const std::string& service, const std::string& channel,
                                  const std::string& message, const UserInfo& userInfo) {
  std::lock_guard lock(mutex_);
  if (!bus_) return std::nullopt;
  try {
    auto call = makeQuestion(service, channel, message, userInfo);
    if (!call) return std::nullopt;
    auto answer = call->send(microseconds(options_.replyTimeout));
    return readUserInfo(answer).value_or(std::nullopt);
  } catch (const sdbus::Error& error) {
    note(error);
    return std::nullopt;
  }
}

sdbus::IProxy& BusConnection::Link::proxyTo(const std::string& service) {
  auto& proxy = proxies_[service];
  if (!proxy) proxy = sdbus::createProxy(*bus_, service, protocol::objectPath);
  return *proxy;
}

/// None where it cannot be sent as it is.
std::optional<sdbus::MethodCall> BusConnection::Link::makeQuestion(const std::string& service,
                                                                   const std::string& channel,
                                                                   const std::string& message,
                                                                   const UserInfo& userInfo) {
  static const std::string interface = protocol::messagesInterface;
  static const std::string method = protocol::askMethod;
  if (!isWholeText(channel) || !isWholeText(message)) return std::nullopt;
  auto call = proxyTo(service).createMethodCall(interface, method);
  call << channel << message;
  if (!appendUserInfo(call, userInfo)) return std::nullopt;
  return call;
}

void BusConnection::Link::requestAsync(const std::string& service, const std::string& channel,
                                       const std::string& message, const UserInfo& userInfo,
                                       ReplyHandler reply) {
  if (!servesHere(service)) {
    askAsync(service, channel, message, userInfo, std::move(reply));
    return wakeLoop();
  }
  loop_->async([link = weak_from_this(), channel, message, userInfo, reply = std::move(reply)] {
    if (const auto alive = link.lock()) reply(alive->askHere(channel, message, userInfo));
  });
}

void BusConnection::Link::askAsync(const std::string& service, const std::string& channel,
                                   const std::string& message, const UserInfo& userInfo,
                                   ReplyHandler reply) {
  std::lock_guard lock(mutex_);
  const std::uint64_t number = asked_++;
  waiting_.emplace(number, std::move(reply));
  if (!bus_) return endWait(number, std::nullopt);
  try {
    const auto call = makeQuestion(service, channel, message, userInfo);
    if (!call) return endWait(number, std::nullopt);
    // What comes of it is heard inside dispatch(), under the mutex.
    const auto hear = [this, number](sdbus::MethodReply& answer, const sdbus::Error* error) {
      endWait(number, error ? std::nullopt : readUserInfo(answer).value_or(std::nullopt));
    };
    proxyTo(service).callMethod(*call, hear, microseconds(options_.replyTimeout));
  } catch (const sdbus::Error& error) {
    note(error);
    endWait(number, std::nullopt);
  }
}

void BusConnection::Link::endWait(std::uint64_t number, UserInfo answer) {
  auto waiting = waiting_.extract(number);
  if (!waiting) return;
  loop_->async(
      [reply = std::move(waiting.mapped()), answer = std::move(answer)] { reply(answer); });
}

// --- Notifications -------------------------------------------------------------------------------

void BusConnection::Link::post(BusNotificationKind kind, const Notification& notification) {
  if (kind == BusNotificationKind::darwin)
    send(protocol::darwinSignal, {notification.name, std::nullopt});
  else
    send(protocol::distributedSignal, notification);
  wakeLoop();
}

void BusConnection::Link::send(const char* signal, const Notification& notification) {
  if (!isWholeText(notification.name)) return;
  std::lock_guard lock(mutex_);
  if (!bus_) return;
  try {
    auto message = object_->createSignal(protocol::notificationsInterface, signal);
    message << notification.name;
    if (appendUserInfo(message, notification.userInfo)) message.send();
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

Observation BusConnection::Link::addObserver(BusNotificationKind kind, const std::string& name,
                                             NotificationCenter::Observer observer) {
  subscribe();
  wakeLoop();
  return observers(kind).add(name, std::move(observer));
}

/// Only a process that observes something is woken by notifications.
void BusConnection::Link::subscribe() {
  std::lock_guard lock(mutex_);
  if (!bus_ || subscription_) return;
  try {
    const std::string rule =
        std::string("type='signal',interface='") + protocol::notificationsInterface + "'";
    subscription_ =
        bus_->addMatch(rule, [this](sdbus::Message& signal) { receiveNotification(signal); });
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

void BusConnection::Link::receiveNotification(sdbus::Message& signal) {
  try {
    const std::string kind = signal.getMemberName();
    Notification notification;
    signal >> notification.name;
    auto userInfo = readUserInfo(signal);
    if (!userInfo) return;
    notification.userInfo = std::move(*userInfo);
    if (kind == protocol::darwinSignal)
      darwin_.deliver({std::move(notification.name), std::nullopt});
    else if (kind == protocol::distributedSignal)
      distributed_.deliver(std::move(notification));
  } catch (const std::exception&) {
    // Not one of ours.
  }
}

/// The bus handles what it gets in order, so its answer to a question of ours comes behind whatever
/// was posted before.
void BusConnection::Link::catchUp() {
  std::lock_guard lock(mutex_);
  if (!bus_) return;
  try {
    const auto daemon = sdbus::createProxy(*bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus");
    auto call = daemon->createMethodCall("org.freedesktop.DBus", "GetId");
    call.send(microseconds(options_.replyTimeout));
    while (bus_ && bus_->processPendingRequest()) {
    }
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

// --- The handle ----------------------------------------------------------------------------------

BusConnection::BusConnection(std::shared_ptr<loop::RunLoop> loop, Options options)
    : link_(std::make_shared<Link>(loop, std::move(options))) {
  link_->connect();
  loop->add(link_);
}

BusConnection::~BusConnection() = default;

bool BusConnection::isConnected() const {
  return link_->isConnected();
}

void BusConnection::serve(const std::string& service, const std::string& channel,
                          MessageResponder responder) {
  link_->serve(service, channel, std::move(responder));
}

UserInfo BusConnection::request(const std::string& service, const std::string& channel,
                                const std::string& message, const UserInfo& userInfo) {
  return link_->request(service, channel, message, userInfo);
}

void BusConnection::requestAsync(const std::string& service, const std::string& channel,
                                 const std::string& message, const UserInfo& userInfo,
                                 ReplyHandler reply) {
  link_->requestAsync(service, channel, message, userInfo, std::move(reply));
}

void BusConnection::post(BusNotificationKind kind, const Notification& notification) {
  link_->post(kind, notification);
}

Observation BusConnection::addObserver(BusNotificationKind kind, const std::string& name,
                                       NotificationCenter::Observer observer) {
  return link_->addObserver(kind, name, std::move(observer));
}

void BusConnection::catchUp() {
  link_->catchUp();
}

}  // namespace sentrel::bus
