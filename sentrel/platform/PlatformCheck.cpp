#include "sentrel/platform/PlatformCheck.h"

#include <string>

#include "sentrel/platform/AbsentServices.h"

namespace sentrel {
namespace {

struct Port {
  const char* name;
  const char* purpose;
  bool (*isMissing)(const Platform& platform);
};

template <auto port>
bool lacks(const Platform& platform) {
  return !(platform.*port);
}

/// Whoever the process is, if it is not known for the home screen it asks the home screen.
bool lacksWayToAsk(const Platform& platform) {
  const bool isSpringBoard =
      platform.mainBundle && platform.mainBundle->bundleIdentifier() == springBoardBundleIdentifier;
  return !isSpringBoard && !platform.messageChannel;
}

bool lacksTextSizes(const Platform& platform) {
  return platform.screen && !platform.textMeasuring;
}

constexpr Port neededPorts[] = {
    {"mainBundle", "tells which process this is", lacks<&Platform::mainBundle>},
    {"clock", "ends timed sessions and moves what is animated", lacks<&Platform::clock>},
    {"mainQueue", "runs everything that comes later", lacks<&Platform::mainQueue>},
    {"files", "tells which extensions are installed", lacks<&Platform::files>},
    {"propertyListFiles", "holds the user's settings", lacks<&Platform::propertyListFiles>},
    {"cryptography", "deciphers the passcode", lacks<&Platform::cryptography>},
    {"caseMapping", "compares names whatever their case", lacks<&Platform::caseMapping>},
    {"darwinCenter", "tells of changed settings and of results", lacks<&Platform::darwinCenter>},
    {"distributedCenter", "carries the sensor's events to applications",
     lacks<&Platform::distributedCenter>},
    {"localCenter", "tells of the keyboard and of touches", lacks<&Platform::localCenter>},
    {"messageChannel", "asks the home screen for open sessions", lacksWayToAsk},
    {"system", "tells the system's version", lacks<&Platform::system>},
    {"textMeasuring", "lays out what the screen shows", lacksTextSizes},
};

std::string missingPorts(const Platform& platform) {
  std::string missing;
  for (const Port& port : neededPorts)
    if (port.isMissing(platform))
      missing += (missing.empty() ? "" : ", ") + std::string(port.name) + " (" + port.purpose + ")";
  return missing;
}

}  // namespace

Platform checkedPlatform(Platform platform) {
  const std::string missing = missingPorts(platform);
  if (!missing.empty()) throw IncompletePlatform("the platform lacks " + missing);
  addAbsentServices(platform);
  return platform;
}

}  // namespace sentrel
