// What the sanitizers are to pass over in libraries that are not built with them.

#define SENTREL_FOR_SANITIZERS extern "C" __attribute__((visibility("default")))

SENTREL_FOR_SANITIZERS const char* __lsan_default_suppressions();
SENTREL_FOR_SANITIZERS const char* __lsan_default_options();
SENTREL_FOR_SANITIZERS const char* __tsan_default_suppressions();
SENTREL_FOR_SANITIZERS const char* __tsan_default_options();

/// What libraries keep until the process ends and a leak checker would call lost.
const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n"
         "leak:sd_bus_new\n"
         "leak:libSDL2\n"
         "leak:libdbus\n";
}

/// Pango looks for fonts on a thread of its own, and waits for it by locks that cannot be seen from
/// outside; what it made by then GLib frees.
const char* __tsan_default_suppressions() {
  return "race:libpangoft2\n"
         "race:libglib-2.0\n"
         "race:libfontconfig\n";
}

/// What was passed over is not told: tests look at programs' standard error.
const char* __lsan_default_options() {
  return "print_suppressions=0";
}

const char* __tsan_default_options() {
  return "print_suppressions=0";
}
