#include "icons.h"

#include <stdlib.h>

namespace veltrin {

IconLibrary::IconLibrary()
    : module_(LoadLibraryExW(L"vlLangInDepRes.dll", nullptr,
                             LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {}

UniqueIcon IconLibrary::load(IconId icon, int size) const {
    for (const unsigned int id : {icon.id, icon.base}) {
        if (!module_ || icon.id == 0 || id == 0) continue;
        const HANDLE loaded =
            LoadImageW(module_.get(), MAKEINTRESOURCEW(id), IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
        if (loaded) return UniqueIcon(static_cast<HICON>(loaded));
    }
    return UniqueIcon();
}

int sharp_size(int size) {
    constexpr int kDrawn[] = {16, 20, 24, 32, 48};
    int best = kDrawn[0];
    for (const int drawn : kDrawn) {
        if (abs(drawn - size) < abs(best - size)) best = drawn;
    }
    return size >= 64 ? size : best;  // larger ones come from the drawing of 256 pixels
}

IconList::IconList(const IconLibrary& library, int size)
    : library_(library), size_(size), images_(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 16, 16)) {}

int IconList::index_of(IconId icon) {
    const auto found = places_.find(icon.id);
    if (found != places_.end()) return found->second;
    return places_[icon.id] = add(icon);
}

int IconList::add(IconId icon) const {
    const UniqueIcon loaded = library_.load(icon, size_);
    const int place = loaded ? ImageList_AddIcon(images_.get(), loaded.get()) : -1;
    return place < 0 ? I_IMAGENONE : place;
}

}  // namespace veltrin
