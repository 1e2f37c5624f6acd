// Texts in the fields of contact records.
#pragma once

#include "frame/bounded_text.h"

namespace vl::mobile {

struct ContactText {
    const char* bytes;
    size_t length;
    [[nodiscard]] bool empty() const { return length == 0; }
};

// A field's text, at most `limit` bytes of it: a field that is full has no terminator.
template <size_t room>
ContactText text_of(const char (&field)[room], size_t limit = room) {
    return {field, bounded_length(field, limit < room ? limit : room)};
}

}  // namespace vl::mobile
