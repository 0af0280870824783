#include <cstdio>

#include "device/real/RealPlatform.h"
#include "sentrel/Process.h"
#include "sentrel/settings/SNSettings.h"

int main(int count, char** words) {
  if (count != 3) return std::fputs("usage: ask ROOT BUNDLE-ID\n", stderr), 2;
  sentrel::real::RealPlatform real({.bundleIdentifier = "com.apple.springboard", .root = words[1]});
  sentrel::Process process(real.platform());
  sentrel::Process::setMain(&process);
  const bool isProtected = sentrel::SNSettings::sharedSettings().isAppProtected(words[2]);
  std::puts(isProtected ? "protected" : "open");
  return isProtected ? 1 : 0;
}
