#include "host/PasscodeLockout.h"

#include <algorithm>

namespace sentrel::host {
namespace {

constexpr const char* attemptsKey = "passcodeAttempts";
constexpr const char* lastAttemptKey = "passcodeLastAttempt";

}  // namespace

std::int64_t PasscodeLockout::attempts() const {
  return PropertyList(record_.number(attemptsKey).value_or(0)).integerValue();
}

Seconds PasscodeLockout::remaining() {
  if (rule_.attempts <= 0 || attempts() < rule_.attempts) return Seconds(0);
  const double present = now();
  const double last = record_.number(lastAttemptKey).value_or(present + 1);
  // In the future, or nowhere: the clock or the file was tampered with.
  if (!(last <= present)) record_.store(lastAttemptKey, present);
  const Seconds passed(last <= present ? present - last : 0);
  return std::max(rule_.wait - passed, Seconds(0));
}

bool PasscodeLockout::beginAttempt() {
  if (rule_.attempts <= 0) return true;
  if (remaining() > Seconds(0)) return false;
  // The time first: a crash between the two leaves a longer wait, not a shorter one.
  record_.store(lastAttemptKey, now());
  record_.store(attemptsKey, std::min(attempts(), rule_.attempts) + 1);
  return true;
}

void PasscodeLockout::forgetAttempts() {
  if (attempts() != 0) record_.store(attemptsKey, 0);
}

}  // namespace sentrel::host
