// Faults and hooks of operations, as tests set them.
#pragma once

#include <cstdint>

namespace vlsim {

// The nth call of an operation from now returns `code`; 0: every call.
void add_fault(const char* name, uint32_t nth, uint32_t code);
// Another function answers the operation; null: its rule again.
void set_hook(const char* name, void* function);
void clear_faults();
// Looks again whether any call needs more than its rule.
void update_watched();

}  // namespace vlsim
