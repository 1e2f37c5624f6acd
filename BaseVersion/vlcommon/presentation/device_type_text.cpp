// What kind of device a class of device is, in words.
#include "language_library.h"
#include "vlcm/display_names.h"

namespace vl::presentation {
namespace {

constexpr uint32_t kUnknownClassId = 1101;
constexpr uint32_t kUnknownKindId = 1200;
constexpr size_t kWorkSize = 260;

template <typename Char>
BOOL device_type_text(uint32_t device_class, Char* buffer, uint32_t size) {
    if (buffer == nullptr || size == 0) return FALSE;
    const LanguageLibrary texts;
    if (!texts) return FALSE;
    const uint32_t major_id = VlCm_GetDevMajorClsNameID(device_class);
    const uint32_t minor_id = VlCm_GetDevMinorClsNameID(device_class);
    Char major[kWorkSize] = {};
    Char minor[kWorkSize] = {};
    bool known = major_id != kUnknownClassId && minor_id != kUnknownClassId;
    if (known) {
        texts.load(major_id, major);
        texts.load(minor_id, minor);
        known = text::length_of(minor) < size;
    }
    if (known) {
        memcpy(buffer, minor, (text::length_of(minor) + 1) * sizeof(Char));
    } else {
        buffer[0] = 0;
        texts.load(kUnknownKindId, buffer, size);
    }
    return TRUE;
}

}  // namespace
}  // namespace vl::presentation

extern "C" BOOL VlCm_GetDevTypeStrByDevCls(uint32_t deviceClass, char* buffer, uint32_t size) {
    return vl::presentation::device_type_text(deviceClass, buffer, size);
}

extern "C" BOOL VlCm_GetDevTypeStrByDevClsW(uint32_t deviceClass, wchar_t* buffer, uint32_t size) {
    return vl::presentation::device_type_text(deviceClass, buffer, size);
}
