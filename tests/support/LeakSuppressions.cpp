/// What libraries keep until the process ends and a leak checker would call lost.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();

/// Those that were used are not told: programs' standard error is looked at by tests.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options();

const char* __lsan_default_options() {
  return "print_suppressions=0";
}

const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n"
         "leak:sd_bus_new\n"
         "leak:libSDL2\n"
         "leak:libdbus\n";
}
