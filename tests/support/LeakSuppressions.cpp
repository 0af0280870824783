/// What libraries keep until the process ends and a leak checker would call lost.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n"
         "leak:sd_bus_new\n"
         "leak:libSDL2\n"
         "leak:libdbus\n";
}
