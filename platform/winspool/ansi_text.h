// The spooler's narrow functions speak the ANSI code page, the document UTF-8.
#pragma once

#include <string>

namespace vlspool {

[[nodiscard]] std::string ansi_text(const std::string& utf8);
// A null text is empty.
[[nodiscard]] std::string utf8_text(const char* ansi);

}  // namespace vlspool
