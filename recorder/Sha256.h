// SHA-256, by which a library is known again: the same digits as `sha256sum` gives.
#pragma once

#include <string>
#include <string_view>

namespace Recorder {

/// 64 hexadecimal digits.
std::string Sha256(std::string_view bytes);

}  // namespace Recorder
