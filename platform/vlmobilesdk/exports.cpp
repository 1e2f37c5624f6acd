// The exported walks. An enumeration holds the models as they were when it was started.
#include "../locks.h"
#include "VlMobileSDK.h"
#include "model_file.h"

#include <windows.h>

#include <string.h>

#include <map>
#include <memory>

namespace {

template <size_t room>
bool copy_text(char (&field)[room], const std::string& text) {
    if (text.size() >= room) return false;
    memcpy(field, text.c_str(), text.size() + 1);
    return true;
}

template <typename Entry>
bool fill(Entry& entry, const vlmobile::Model& model) {
    return copy_text(entry.manufacturer, model.manufacturer) && copy_text(entry.model1, model.names[0]) &&
           copy_text(entry.model2, model.names[1]);
}

// All open walks over one series. A handle that is none of them, or of the other series, is refused.
template <typename Entry>
class Walks {
public:
    explicit Walks(const char* series) : series_(series) {}

    // A text too long for its field makes the list invalid, as a damaged file does.
    void* start() {
        const auto models = vlmobile::read_models(vlmobile::model_file(), series_);
        if (!models) return nullptr;
        auto walk = std::make_unique<Walk>();
        for (const vlmobile::Model& model : *models) {
            if (!fill(walk->entries.emplace_back(), model)) return nullptr;
        }
        const locks::Exclusive held(lock_);
        void* const handle = walk.get();
        walks_.emplace(handle, std::move(walk));
        return handle;
    }

    uint32_t next(void* handle, void* entry) {
        const locks::Exclusive held(lock_);
        const auto found = walks_.find(handle);
        if (found == walks_.end() || entry == nullptr) return 0;
        Walk& walk = *found->second;
        if (walk.next == walk.entries.size()) return 0;
        memcpy(entry, &walk.entries[walk.next++], sizeof(Entry));
        return 1;
    }

    uint32_t end(void* handle) {
        const locks::Exclusive held(lock_);
        return walks_.erase(handle) == 1 ? 0 : ERROR_INVALID_HANDLE;
    }

private:
    struct Walk {
        std::vector<Entry> entries;
        size_t next = 0;
    };
    const char* series_;
    SRWLOCK lock_ = SRWLOCK_INIT;
    std::map<void*, std::unique_ptr<Walk>> walks_;
};

Walks<SymbianModelEntry> g_symbian("symbian");
Walks<S40ModelEntry> g_s40("s40");

}  // namespace

extern "C" void* MB_StartEnumSymbianModels(uint32_t /*flags*/) { return g_symbian.start(); }
extern "C" uint32_t MB_EnumSymbianModels(void* enumeration, void* entry) {
    return g_symbian.next(enumeration, entry);
}
extern "C" uint32_t MB_EndEnumSymbianModels(void* enumeration) { return g_symbian.end(enumeration); }

extern "C" void* MB_StartEnumModels_S40(uint32_t /*flags*/) { return g_s40.start(); }
extern "C" uint32_t MB_EnumModels_S40(void* enumeration, void* entry) {
    return g_s40.next(enumeration, entry);
}
extern "C" uint32_t MB_EndEnumModels_S40(void* enumeration) { return g_s40.end(enumeration); }
