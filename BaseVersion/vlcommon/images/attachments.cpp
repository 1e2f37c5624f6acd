// What a message says of its attachments.
#include "file_length.h"
#include "frame/bounded_text.h"
#include "frame/trace.h"
#include "vlcm/images.h"

#include <string.h>
#include <sys/stat.h>
#include <time.h>

namespace vl::images {
namespace {

struct AttachmentType {
    const char* part;  // of the name, anywhere in it
    const char* mime_type;
};
// The first part that is found decides. A name without any leaves the type as it is.
constexpr AttachmentType kTypes[] = {
    {".txt", "text/plain"},
    {".wav", "audio/basic"},
};

void tell_type(const char* name, char* mime_type) {
    for (const AttachmentType& type : kTypes) {
        if (strstr(name, type.part) == nullptr) continue;
        memcpy(mime_type, type.mime_type, strlen(type.mime_type) + 1);
        return;
    }
}

// When the file was made, in local time: the "Z" promises UTC, but receivers expect it as it is.
void tell_time(const char* path, char* text) {
    struct _stat64i32 status;
    if (_stat64i32(path, &status) != 0) return;
    const tm* local = _localtime64(&status.st_ctime);
    if (local == nullptr) return;
    format_bounded(text, sizeof "YYYYMMDDThhmmssZ", "%04d%02d%02dT%02d%02d%02dZ", local->tm_year + 1900,
                   local->tm_mon + 1, local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec);
}

// A long name runs on into the time, which is written later.
void tell_properties(const char* path, const char* name, VlAttachmentProperty* property) {
    tell_length(fopen(path, "r"), &property->size);
    strcpy(property->name, name);  // NOLINT(clang-analyzer-security.insecureAPI.strcpy): required
    tell_type(name, property->mimeType);
    tell_time(path, property->time);
}

}  // namespace
}  // namespace vl::images

using namespace vl;

extern "C" void VlCm_GetAttType(const char* name, char* mimeType) {
    TraceScope scope("GetAttType", Module::kImage);
    if (name != nullptr && mimeType != nullptr) images::tell_type(name, mimeType);
}

extern "C" void VlCm_GetAttachmentType(const char* name, char* mimeType) {
    TraceScope scope("GetAttachmentType", Module::kImage);
    if (name != nullptr && mimeType != nullptr) images::tell_type(name, mimeType);
}

extern "C" void VlCm_GetAttachmentProp(const char* path, const char* name, VlAttachmentProperty* property) {
    TraceScope scope("GetAttachmentProp", Module::kImage);
    if (path == nullptr || name == nullptr || property == nullptr) return;
    images::tell_properties(path, name, property);
}
