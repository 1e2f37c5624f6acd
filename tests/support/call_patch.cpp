#include "support/call_patch.h"

#include <gtest/gtest.h>
#include <stdio.h>
#include <stdlib.h>

namespace support {

void report_missing_import(const char* function) {
    ADD_FAILURE() << "the library does not import " << function << ": this patch is never called";
}

void report_no_free_slot(const char* function) {
    fprintf(stderr, "too many live patches of the type of %s\n", function);
    abort();
}

SleepPatch::SleepPatch(HMODULE module) : patch_("Sleep", Sleep, module) {
    patch_.answer([this](DWORD) {
        if (action_) action_(patch_.count());
    });
}

std::vector<DWORD> SleepPatch::lengths() const {
    std::vector<DWORD> lengths;
    for (const auto& [length] : patch_.calls()) lengths.push_back(length);
    return lengths;
}

DWORD SleepPatch::total() const {
    DWORD sum = 0;
    for (const DWORD length : lengths()) sum += length;
    return sum;
}

}  // namespace support
