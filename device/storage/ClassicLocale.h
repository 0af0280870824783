#pragma once

#include <locale.h>

namespace sentrel::storage {

/// While it lives, the calling thread runs in the "C" locale. The C functions beneath libplist
/// follow the program's locale: with a decimal comma, 0.5 would be read as 0.
class ClassicLocale {
 public:
  ClassicLocale() : previous_(uselocale(classic())) {}
  ~ClassicLocale() { uselocale(previous_); }

  ClassicLocale(const ClassicLocale&) = delete;
  ClassicLocale& operator=(const ClassicLocale&) = delete;

 private:
  static locale_t classic() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }

  locale_t previous_;
};

}  // namespace sentrel::storage
