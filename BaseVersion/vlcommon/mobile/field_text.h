// The text of a record's field of fixed size, which need not be terminated.
#pragma once

#include "frame/bounded_text.h"

namespace vl::mobile {

// Cut to leave one byte for a terminator, then terminated twice: the runtime's multibyte functions take
// the byte behind a lead byte for its second half, the terminator too.
template <size_t size>
class FieldText {
public:
    explicit FieldText(const char (&field)[size]) { memcpy(text_, field, bounded_length(field, size - 1)); }
    [[nodiscard]] const char* text() const { return text_; }
    [[nodiscard]] bool empty() const { return text_[0] == 0; }

private:
    char text_[size + 1] = {};
};

}  // namespace vl::mobile
