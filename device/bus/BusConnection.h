#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "device/bus/BusError.h"
#include "device/loop/RunLoop.h"
#include "sentrel/platform/MessageChannel.h"
#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::bus {

/// The name under which the home-screen process is found on the bus.
inline constexpr const char* springBoardService = "com.quorvin.sentrel.SpringBoard";

/// The two kinds of notification that cross the bus.
enum class BusNotificationKind { darwin, distributed };

/// One process's connection to the bus, driven by its loop::RunLoop. BusMessageChannel and
/// BusNotificationCenter are what the library sees of it.
///
/// Everything that comes in is handed to the main queue in the order in which it came, and runs
/// there. All of it is untrusted: what is malformed, too deep or too large is refused and changes
/// nothing. The end of the bus ends nothing else: it is reported once, and from then on nothing is
/// answered, delivered or posted.
///
/// Make and destroy it on the thread that runs the loop; its operations may be called from any
/// thread. A request of another thread makes the loop wait until it is over.
class BusConnection {
 public:
  struct Options {
    /// Where the bus is; none makes a connection that is lost from the start.
    std::optional<std::string> address;
    /// How long a request waits for its reply.
    Seconds replyTimeout{2};
    /// Called on the main queue, once, with the reason, when the bus is not or no longer there.
    std::function<void(const std::string& reason)> onLost;
  };

  /// Never throws on account of the bus: see isConnected().
  BusConnection(const std::shared_ptr<loop::RunLoop>& loop, Options options);
  ~BusConnection();
  BusConnection(const BusConnection&) = delete;
  BusConnection& operator=(const BusConnection&) = delete;

  bool isConnected() const;

  /// Takes the name `service` and answers what is asked there on `channel`, on the main queue, with
  /// what `responder` returns. A responder that throws answers its caller none.
  /// Throws BusError when another process has the name or the bus does not give it.
  void serve(const std::string& service, const std::string& channel, MessageResponder responder);

  /// Answers one question; the outer none stands for no answer. On the loop's thread, in vain once
  /// the bus is lost.
  using Answer = std::function<void(const std::optional<UserInfo>& answer)>;

  /// What answers a question now or later. It calls `answer` exactly once.
  using AsyncResponder = std::function<void(const std::string& message, const UserInfo& userInfo,
                                            const Answer& answer)>;

  /// Serves likewise, with answers that may come on later turns.
  void serveAsync(const std::string& service, const std::string& channel, AsyncResponder responder);

  /// Asks whoever serves `service` and waits for the reply, no longer than the time-out. None when
  /// nobody serves it, when the reply is none, malformed or late, and when `userInfo` cannot be
  /// sent. A question to this very process takes no way over the bus; asked on the loop's thread,
  /// it is answered on the spot or not at all.
  UserInfo request(const std::string& service, const std::string& channel,
                   const std::string& message, const UserInfo& userInfo);

  using ReplyHandler = std::function<void(const UserInfo& reply)>;

  /// Asks the same without waiting: `reply` runs once, on a later turn of the main queue. It does
  /// not run any more when this connection is gone.
  void requestAsync(const std::string& service, const std::string& channel,
                    const std::string& message, const UserInfo& userInfo, ReplyHandler reply);

  /// To every process on the bus that observes the name, this one included. What cannot be sent
  /// (no bus, text that is no UTF-8, too large) is lost.
  void post(BusNotificationKind kind, const Notification& notification);

  Observation addObserver(BusNotificationKind kind, const std::string& name,
                          NotificationCenter::Observer observer);

  /// Waits, no longer than the time-out, until the bus has taken everything posted here before, and
  /// until everything that others posted before is queued on the main queue.
  void catchUp();

 private:
  class Link;

  std::shared_ptr<Link> link_;
};

}  // namespace sentrel::bus
