// The icons of vlLangInDepRes.dll, by identifier.
#pragma once

#include "gui_owners.h"

#include <map>

namespace veltrin {

// An icon for a state: `id` is the state's own icon, `base` that of the thing. Some states of some things
// have no icon of their own. Identifier 0: no icon.
struct IconId {
    unsigned int id = 0;
    unsigned int base = 0;
    bool operator==(const IconId&) const = default;
};

// The icon library. Where it is missing there are no icons, and nothing else is lost.
class IconLibrary {
public:
    IconLibrary();
    // In pixels; null when there is none, not for the base either.
    [[nodiscard]] UniqueIcon load(IconId icon, int size) const;

private:
    vl::UniqueModule module_;
};

// The size in which the library's icons are drawn sharply and which is next to `size`.
[[nodiscard]] int sharp_size(int size);

// Icons of one size for a list view; each is loaded once.
class IconList {
public:
    IconList(const IconLibrary& library, int size);
    [[nodiscard]] HIMAGELIST handle() const { return images_.get(); }
    // Its place in the list; I_IMAGENONE when there is no such icon.
    [[nodiscard]] int index_of(IconId icon);

private:
    [[nodiscard]] int add(IconId icon) const;

    const IconLibrary& library_;
    int size_;
    UniqueImageList images_;
    std::map<unsigned int, int> places_;
};

}  // namespace veltrin
