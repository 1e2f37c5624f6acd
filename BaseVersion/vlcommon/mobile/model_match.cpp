// Looking a phone's model up in the mobile SDK's lists.
#include "field_text.h"
#include "frame/stack_walk.h"
#include "frame/unique_mobile.h"
#include "vlcm/phone_models.h"

#include <mbstring.h>

namespace vl::mobile {
namespace {

const unsigned char* bytes(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

// Texts of the Symbian list are compared by characters of the ANSI code page, as the runtime knows them.
struct Symbian {
    using Entry = SymbianModelEntry;
    static SymbianModelEnum start() { return SymbianModelEnum(MB_StartEnumSymbianModels(0)); }
    static uint32_t next(void* enumeration, Entry* entry) { return MB_EnumSymbianModels(enumeration, entry); }
    static bool contains(const char* text, const char* part) {
        return _mbsstr(bytes(text), bytes(part)) != nullptr;
    }
    static bool is_same(const char* a, const char* b) { return _mbsicmp(bytes(a), bytes(b)) == 0; }
};

// Those of the Series 40 list by bytes.
struct S40 {
    using Entry = S40ModelEntry;
    static S40ModelEnum start() { return S40ModelEnum(MB_StartEnumModels_S40(0)); }
    static uint32_t next(void* enumeration, Entry* entry) { return MB_EnumModels_S40(enumeration, entry); }
    static bool contains(const char* text, const char* part) { return strstr(text, part) != nullptr; }
    static bool is_same(const char* a, const char* b) { return _stricmp(a, b) == 0; }
};

using ModelName = FieldText<64>;

// A name that is not given equals nothing, not even another that is not given.
template <typename Series>
bool is_same_name(const ModelName& a, const ModelName& b) {
    return !a.empty() && !b.empty() && Series::is_same(a.text(), b.text());
}

template <typename Series>
bool is_model(const typename Series::Entry& entry, const VlDeviceModel& model) {
    if (!Series::contains(FieldText(entry.manufacturer).text(), FieldText(model.manu).text())) return false;
    const ModelName listed[] = {ModelName(entry.model1), ModelName(entry.model2)};
    const ModelName wanted[] = {ModelName(model.model1), ModelName(model.model2)};
    return is_same_name<Series>(listed[0], wanted[0]) || is_same_name<Series>(listed[0], wanted[1]) ||
           is_same_name<Series>(listed[1], wanted[0]) || is_same_name<Series>(listed[1], wanted[1]);
}

template <typename Series>
Found<typename Series::Entry> find_model(const VlDeviceModel& model) {
    using Entry = typename Series::Entry;
    return walk<Entry>(Series::start(), Series::next, [&model](uint32_t /*more*/, const Entry& entry) {
        return is_model<Series>(entry, model);
    });
}

}  // namespace
}  // namespace vl::mobile

using namespace vl;

extern "C" BOOL VlCm_IsMatchSymbianModelExist(const VlDeviceModel* model, SymbianModelEntry* entry) {
    if (model == nullptr) return FALSE;
    const auto found = mobile::find_model<mobile::Symbian>(*model);
    if (found.handle == 0) return FALSE;
    if (entry != nullptr) *entry = found.record;
    return TRUE;
}

extern "C" BOOL VlCm_IsMatchS40ModelExist(const VlDeviceModel* model) {
    return model != nullptr && mobile::find_model<mobile::S40>(*model).handle != 0;
}
