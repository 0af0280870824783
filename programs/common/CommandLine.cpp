#include "programs/common/CommandLine.h"

#include <getopt.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "programs/common/ExitCode.h"

namespace sentrel::programs {
namespace {

constexpr const char* commonUsage =
    "\noptions:\n"
    "  --root DIR      the device's root folder (else SENTREL_ROOT)\n"
    "  --bus ADDRESS   the message bus (else SENTREL_BUS, else that of the home-screen\n"
    "                  process on the same root)\n"
    "  --help          this text\n"
    "\nexit codes: 0 done, 1 the answer is no or a check found faults, 2 wrong usage,\n"
    "3 could not\n";

constexpr option options[] = {{"root", required_argument, nullptr, 'r'},
                              {"bus", required_argument, nullptr, 'b'},
                              {"help", no_argument, nullptr, 'h'},
                              {nullptr, 0, nullptr, 0}};

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

[[noreturn]] void printUsageAndExit(const std::string& usage) {
  std::fputs(usage.c_str(), stdout);
  std::fputs(commonUsage, stdout);
  std::exit(exitDone);
}

CommandLine parseCommandLine(int argc, char** argv, const std::string& usage) {
  CommandLine line;
  line.root = environment("SENTREL_ROOT");
  opterr = 0;
  for (int choice; (choice = getopt_long(argc, argv, "+:", options, nullptr)) != -1;) {
    switch (choice) {
      case 'r':
        line.root = optarg;
        break;
      case 'b':
        line.bus = optarg;
        break;
      case 'h':
        printUsageAndExit(usage);
      case ':':
        throw UsageError(std::string(argv[optind - 1]) + " needs a value");
      default:
        throw UsageError(std::string("unknown option ") + argv[optind - 1]);
    }
  }
  line.arguments.assign(argv + optind, argv + argc);
  if (line.root.empty())
    throw UsageError("no device root: name one with --root DIR or in SENTREL_ROOT");
  if (!std::filesystem::is_directory(line.root))
    throw ProgramError("the device root " + line.root + " is no folder");
  return line;
}

}  // namespace

int runProgram(const char* name, const std::string& usage, int argc, char** argv,
               int (*body)(const CommandLine&)) {
  try {
    return body(parseCommandLine(argc, argv, usage));
  } catch (const UsageError& error) {
    std::fprintf(stderr, "%s: %s (try --help)\n", name, error.what());
    return exitUsage;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", name, error.what());
    return exitCouldNot;
  }
}

}  // namespace sentrel::programs
