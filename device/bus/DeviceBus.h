#pragma once

#include <memory>
#include <optional>
#include <string>

#include "device/bus/PrivateBus.h"

namespace sentrel::bus {

/// What a program was told about where its bus is.
struct BusChoice {
  /// The device's root folder.
  std::string root;
  /// The address that the user named. Where it is empty, SENTREL_BUS names one; where that is empty
  /// too, the bus is that of the home-screen process on the same root.
  std::string address;
};

/// The bus for an application or a tool: the one that was named, else the one that the home-screen
/// process on this root has written down. None where there is neither. That the bus answers is not
/// tried out.
std::optional<std::string> findBus(const BusChoice& choice);

/// The bus for a home-screen process: the one that was named, else the one that another home-screen
/// process already runs on this root, else a new one, whose address it writes down under the root.
///
/// Of several that begin at once on one root, one starts the bus and the others join it. What it
/// started it ends, and takes its address away, when it goes. To be made on the main thread.
class HomeScreenBus {
 public:
  /// Throws BusError where no bus can be started or its address cannot be written down.
  explicit HomeScreenBus(const BusChoice& choice);
  ~HomeScreenBus();
  HomeScreenBus(const HomeScreenBus&) = delete;
  HomeScreenBus& operator=(const HomeScreenBus&) = delete;

  const std::string& address() const noexcept { return address_; }

 private:
  void startOrJoin();

  std::string root_;
  std::string address_;
  std::unique_ptr<PrivateBus> own_;
};

}  // namespace sentrel::bus
