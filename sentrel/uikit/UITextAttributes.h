#pragma once

namespace sentrel {

enum class NSTextAlignment { left = 0, center = 1, right = 2 };

enum class NSLineBreakMode { byWordWrapping = 0, byTruncatingTail = 4 };

}  // namespace sentrel
