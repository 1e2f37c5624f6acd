// UTF-8 texts shortened for display.
#pragma once

namespace vl::text {

// Shortens `text` in place to `char_limit` characters within `byte_limit` bytes, an ellipsis at the cut;
// a character of three bytes counts as `wide_weight`. Returns a byte position; see
// VlCm_LimitStringCharacterCount.
int limit_characters(char* text, int byte_limit, int char_limit, int wide_weight);

}  // namespace vl::text
