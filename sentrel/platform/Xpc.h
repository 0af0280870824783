#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// A message as the process that receives it holds it. Values come from outside and are untrusted.
class SENTREL_API XpcMessage {
 public:
  virtual ~XpcMessage() = default;

  virtual const PropertyList::Dictionary& content() const = 0;

  /// Sends the reply on the connection that the message came by. Only the first is sent, and on a
  /// broken connection none. Letting go of a message without a reply breaks off the asker's wait.
  virtual void reply(PropertyList::Dictionary reply) = 0;
};

/// A connection to a named service. What is sent before it is resumed is lost, and its reply never
/// runs; what happens to the connection is not reported. It stays open until the replies that are
/// waited for are there, whoever lets go of it.
class SENTREL_API XpcConnection {
 public:
  /// None stands for an error object: the service is not there, broke off or took too long.
  using Reply = std::function<void(const std::optional<PropertyList>& reply)>;

  virtual ~XpcConnection() = default;

  virtual void resume() = 0;

  /// `reply` runs once, on a later turn of the process's main queue.
  virtual void sendMessageWithReply(const PropertyList::Dictionary& message, Reply reply) = 0;
};

/// The service of the watch's audio control, and the option without which it does not listen.
inline constexpr std::string_view nanoAudioControlServiceName = "com.apple.NanoAudioControl";
inline constexpr std::uint64_t privilegedConnection = 4096;

/// A connection to the object by which the watch's audio service is controlled. Whatever fails is
/// not reported.
class SENTREL_API NanoAudioControlConnection {
 public:
  virtual ~NanoAudioControlConnection() = default;

  /// Nothing is heard before this, nor after invalidate().
  virtual void resume() = 0;

  /// From 0 to 1. Each call is a tap.
  virtual void setHapticIntensity(double intensity) = 0;

  virtual void invalidate() = 0;
};

/// Connections to the services of other processes. Main thread only.
class SENTREL_API Xpc {
 public:
  virtual ~Xpc() = default;

  /// Null where none can be made.
  virtual std::shared_ptr<XpcConnection> createMachServiceConnection(
      const std::string& serviceName) = 0;

  /// `options` is a set of connection flags. Null where none can be made.
  virtual std::shared_ptr<NanoAudioControlConnection> connectToAudioControl(
      const std::string& serviceName, std::uint64_t options) = 0;
};

}  // namespace sentrel
