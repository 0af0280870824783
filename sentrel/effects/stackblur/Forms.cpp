#include "sentrel/effects/stackblur/Forms.h"

#include <vector>

namespace sentrel::stackblur {
namespace {

std::vector<Form> supportedForms() {
  std::vector<Form> supported;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) supported.push_back({"avx2", prepareAvx2});
  supported.push_back({"sse2", prepareSse2});
#endif
  supported.push_back({"portable", preparePortable});
  return supported;
}

}  // namespace

PreparedBlur::~PreparedBlur() = default;

std::span<const Form> forms() {
  static const std::vector<Form> supported = supportedForms();
  return supported;
}

}  // namespace sentrel::stackblur
