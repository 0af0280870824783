#include "device/storage/GLibCaseMapping.h"

#include <glib.h>

#include <memory>
#include <span>

#include "device/storage/Utf8.h"

namespace sentrel::storage {
namespace {

using Mapping = gchar* (*)(const gchar*, gssize);

struct Letter {
  std::string_view from;
  std::string_view to;
};

/// GLib treats these letters otherwise in a program that runs in Turkish, Azeri or Lithuanian.
/// Mapped beforehand, they come out the same everywhere.
constexpr Letter lowerLetters[] = {
    {"I", "i"}, {"J", "j"}, {"\u0130", "i\u0307"}, {"Į", "į"}, {"Ì", "ì"}, {"Í", "í"}, {"Ĩ", "ĩ"}};
constexpr Letter upperLetters[] = {{"i", "I"}};

std::string replaced(std::string_view text, std::span<const Letter> letters) {
  std::string result;
  result.reserve(text.size() + 1);
  while (!text.empty()) {
    Letter next{text.substr(0, 1), text.substr(0, 1)};
    for (const Letter& letter : letters)
      if (text.starts_with(letter.from)) next = letter;
    result += next.to;
    text.remove_prefix(next.from.size());
  }
  return result;
}

std::string mapped(std::string_view original, std::span<const Letter> letters, Mapping mapping) {
  if (qualityOf(original) == TextQuality::notUtf8) return std::string(original);
  const std::string prepared = replaced(original, letters);
  std::string_view rest = prepared;
  std::string result;
  // GLib stops at a zero byte, so each piece between them goes on its own.
  for (;;) {
    const std::string_view piece = rest.substr(0, rest.find('\0'));
    const std::unique_ptr<gchar, decltype(&g_free)> made(
        mapping(piece.data(), static_cast<gssize>(piece.size())), &g_free);
    result += made.get();
    if (piece.size() == rest.size()) return result;
    result += '\0';
    rest.remove_prefix(piece.size() + 1);
  }
}

}  // namespace

std::string GLibCaseMapping::lowercased(std::string_view text) const {
  return mapped(text, lowerLetters, &g_utf8_strdown);
}

std::string GLibCaseMapping::uppercased(std::string_view text) const {
  return mapped(text, upperLetters, &g_utf8_strup);
}

}  // namespace sentrel::storage
