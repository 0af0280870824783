#pragma once

namespace sentrel::torture {

/// Which of the system's calls are counted.
enum Kinds : unsigned { files = 1, memory = 2 };

enum class Mode {
  once,     ///< that call fails
  lasting,  ///< and so does every later one
  kill,     ///< the process is killed there; a write has written half by then
};

/// From now on the `at`-th call of these kinds, counted from 1, fails with `error`; none does
/// where `at` is 0. Error 0 stands for a reading that ends early and a write that takes half.
void arm(unsigned kinds, long at, int error, Mode mode);

/// No call fails any more; how many there were.
long disarm();

}  // namespace sentrel::torture
