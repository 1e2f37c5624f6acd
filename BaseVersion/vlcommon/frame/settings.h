// Settings files: their paths and one-line reads.
#pragma once

#include "bounded_text.h"

#include <stdint.h>

namespace vl::settings {

// The path of the common settings file "vlcs.ini".
PathBuffer common_file();
// The path of the personal settings file "vlps.ini"; makes folder and file when missing.
PathBuffer personal_file();
// The installation folder followed by `rest`; opens the scope of VlCm_GetInstallDir.
PathBuffer install_path(const char* rest);

// Reads a text through the stack; what cannot be read is empty. Returns the stack's answer, 0 for none.
uint32_t read_text(const char* section, const char* key, const char* fallback, char* text, uint32_t size,
                   const char* file);

// Reads a number through the stack; the stack's answer is unsigned, the settings' numbers are not.
int read_number(const char* section, const char* key, int fallback, const PathBuffer& file);

}  // namespace vl::settings
