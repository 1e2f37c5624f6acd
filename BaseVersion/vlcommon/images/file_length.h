// Lengths of files.
#pragma once

#include "frame/unique_stream.h"

#include <io.h>
#include <stdint.h>

namespace vl::images {

// Writes the low 32 bits of the length and closes the file; one that did not open leaves `length`.
inline void tell_length(FILE* opened, uint32_t* length) {
    const UniqueStream file(opened);
    if (!file) return;
    const int64_t bytes = _filelengthi64(_fileno(file.get()));
    if (bytes >= 0) *length = static_cast<uint32_t>(bytes);
}

}  // namespace vl::images
