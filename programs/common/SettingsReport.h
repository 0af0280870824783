#pragma once

#include <string>

namespace sentrel::programs {

/// Says on standard error why the settings of the current process could not be read at its start,
/// if they could not, and that everything is locked until then.
void reportUnreadSettings(const char* program, const std::string& root);

}  // namespace sentrel::programs
