#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/types.h>
#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/bus/BusConnection.h"
#include "device/bus/PrivateBus.h"
#include "device/loop/RunLoop.h"

namespace sentrel::bus {

/// Long enough for the slowest machine: only a failing test waits this long.
inline constexpr std::chrono::seconds patience{30};

/// A reply time-out for requests that are not going to be answered.
inline constexpr Seconds shortTimeout{0.1};

inline constexpr const char* testChannel = "com.quorvin.test";

/// Runs `loop` until `condition` holds, which is looked at before every wait. False after patience.
bool runUntil(loop::RunLoop& loop, std::function<bool()> condition);

/// Sets an environment variable for as long as it lives.
class Environment {
 public:
  Environment(const char* name, const std::string& value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    setenv(name, value.c_str(), 1);
  }
  ~Environment() {
    if (before_)
      setenv(name_, before_->c_str(), 1);
    else
      unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> before_;
};

/// A process that runs `body` and then ends, or is killed when this object goes.
///
/// Construction returns once the body has called `ready`, with the text that it said.
class ChildProcess {
 public:
  using Ready = std::function<void(const std::string& text)>;

  explicit ChildProcess(const std::function<void(const Ready& ready)>& body);
  ~ChildProcess() { end(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// What the body said; empty if it ended without a word.
  const std::string& said() const noexcept { return said_; }

  /// Kills the process if it still runs.
  void end();

 private:
  pid_t process_;
  std::string said_;
};

/// A process on the bus at `address` whose connection `serve` sets up.
class Server : public ChildProcess {
 public:
  Server(const std::string& address, const std::function<void(BusConnection&)>& serve);
};

/// A connection without our code, to send and answer what our code never would.
class RawBus {
 public:
  explicit RawBus(const std::string& address);
  ~RawBus() { sd_bus_flush_close_unref(bus_); }
  RawBus(const RawBus&) = delete;
  RawBus& operator=(const RawBus&) = delete;

  sd_bus* get() const noexcept { return bus_; }

 private:
  sd_bus* bus_ = nullptr;
};

/// Remembers who has a name on a bus, and goes only when his connection is gone: the bus notices
/// the end of a process later than whoever waits for it does, and gives the name to nobody until
/// then.
class Tenant {
 public:
  Tenant(std::string address, const std::string& service);
  ~Tenant();
  Tenant(const Tenant&) = delete;
  Tenant& operator=(const Tenant&) = delete;

 private:
  std::string address_;
  /// The connection's own name; empty for none.
  std::string name_;
};

/// A server of the home-screen's name with our own code.
class Responder : public Server {
 public:
  using Answer =
      std::function<UserInfo(BusConnection&, const std::string& message, const UserInfo&)>;

  Responder(const std::string& address, const Answer& answer);
  ~Responder() { end(); }

 private:
  Tenant tenant_;
};

/// A process that serves a name without our code, and does `react` to every question.
class RawResponder : public ChildProcess {
 public:
  using React = std::function<void(sd_bus_message* question)>;

  RawResponder(const std::string& address, const React& react,
               const std::string& service = springBoardService);
  ~RawResponder() { end(); }

 private:
  Tenant tenant_;
};

/// A reply filled in by `fill`.
RawResponder::React replyWith(std::function<void(sd_bus_message*)> fill);

/// A private bus and this process's loop.
class PrivateBusAndLoop {
 protected:
  std::unique_ptr<BusConnection> connect(Seconds replyTimeout = patience) {
    BusConnection::Options options;
    options.address = bus_.address();
    options.replyTimeout = replyTimeout;
    options.onLost = [this](const std::string& reason) { losses_.push_back(reason); };
    return std::make_unique<BusConnection>(loop_, std::move(options));
  }

  PrivateBus bus_;
  std::shared_ptr<loop::RunLoop> loop_ = std::make_shared<loop::RunLoop>();
  std::vector<std::string> losses_;
};

class BusTest : public ::testing::Test, protected PrivateBusAndLoop {};

}  // namespace sentrel::bus
