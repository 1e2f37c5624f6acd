// Owners for COM memory, interfaces and apartments.
#pragma once

#include "unique.h"

#include <objbase.h>

namespace vl {

struct TaskMemoryTraits : NullIsNone<void*> {
    static void close(void* block) { CoTaskMemFree(block); }
};
template <typename Interface>
struct InterfaceTraits : NullIsNone<Interface*> {
    static void close(Interface* object) { object->Release(); }
};

using UniqueTaskMemory = Unique<TaskMemoryTraits>;
template <typename Interface>
using UniqueInterface = Unique<InterfaceTraits<Interface>>;

// Joins the thread's COM apartment; leaves it again only when joining succeeded, so that a thread
// which stands in the other kind of apartment is left as it was.
class ComApartment {
public:
    ComApartment() : result_(CoInitialize(nullptr)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    HRESULT result_;
};

}  // namespace vl
