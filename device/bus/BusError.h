#pragma once

#include <stdexcept>

namespace sentrel::bus {

/// Something without which a program cannot take its place on the bus. The text is one clear line
/// for the person who started the program: what, where, what to do.
class BusError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace sentrel::bus
