// What vlLangInDepRes.dll holds, and where Windows finds it.
#include "support/suite_test.h"

#include "vlcm/catalogue.h"

#include <windows.h>

#include <shellapi.h>

#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr char kFile[] = "vlLangInDepRes.dll";
constexpr unsigned kAdapter = 26;
constexpr unsigned kGenericAccess = 285;
constexpr unsigned kStates = 5;

// The dots of a bitmap, four bytes each.
std::string dots_of(HBITMAP bitmap, int size) {
    BITMAPINFO layout = {};
    layout.bmiHeader = {sizeof(BITMAPINFOHEADER), size, size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::string dots(static_cast<size_t>(size * size * 4), '\0');
    const HDC screen = GetDC(nullptr);
    const int lines =
        GetDIBits(screen, bitmap, 0, static_cast<UINT>(size), dots.data(), &layout, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(lines, size);
    return dots;
}

// Colours and mask of an icon, which goes away; "" when there is none of this size.
std::string look_of(HICON icon, int size) {
    ICONINFO parts = {};
    if (icon == nullptr || GetIconInfo(icon, &parts) == FALSE) return "";
    BITMAP colours = {};
    GetObjectW(parts.hbmColor, sizeof colours, &colours);
    std::string look;
    if (colours.bmWidth == size && colours.bmHeight == size) {
        look = dots_of(parts.hbmColor, size) + dots_of(parts.hbmMask, size);
    }
    DeleteObject(parts.hbmColor);
    DeleteObject(parts.hbmMask);
    DestroyIcon(icon);
    return look;
}

class IconLibrary : public ::testing::Test {
protected:
    ~IconLibrary() override { FreeLibrary(dll_); }

    HMODULE dll() const { return dll_; }

    std::string look_by_identifier(unsigned id, int size) const {
        const HANDLE icon = LoadImageA(dll_, MAKEINTRESOURCEA(id), IMAGE_ICON, size, size, 0);
        return look_of(static_cast<HICON>(icon), size);
    }

    // The identifier of the image for each size (256 is kept as 0), as the icon's directory lists them.
    std::map<unsigned, WORD> images_of(unsigned id) const {
        const std::string directory = resource(RT_GROUP_ICON, id);
        std::map<unsigned, WORD> images;
        for (size_t at = 6; at + 14 <= directory.size(); at += 14) {
            WORD image = 0;
            memcpy(&image, &directory[at + 12], sizeof image);
            images[static_cast<unsigned char>(directory[at])] = image;
        }
        return images;
    }

    std::string resource(LPCSTR type, unsigned id) const {
        const HRSRC place = FindResourceA(dll_, MAKEINTRESOURCEA(id), type);
        if (place == nullptr) return "";
        const auto* bytes = static_cast<const char*>(LockResource(LoadResource(dll_, place)));
        return {bytes, SizeofResource(dll_, place)};
    }

private:
    HMODULE dll_ = LoadLibraryA(kFile);
};

// Every base icon that the library numbers: icon, place in the file.
std::map<unsigned, unsigned> numbered_icons() {
    std::map<unsigned, unsigned> rows = {{1, VlCm_GetIconIndexByID(1)}};
    for (unsigned id = 2; id <= 0xFFFF; ++id) {
        if (const unsigned index = VlCm_GetIconIndexByID(id); index != 0) rows[id] = index;
    }
    return rows;
}

// Every icon that the library can name: those with states in all of them, low-energy services as they are.
std::set<unsigned> named_icons() {
    std::set<unsigned> bases = {kAdapter, VlCm_GetLEDeviceIconID(0)};
    std::set<unsigned> named;
    for (unsigned key = 0; key <= 0xFFFF; ++key) {
        bases.insert({VlCm_GetSvcIconID(key), VlCm_GetDeviceIconID(key)});
        named.insert(VlCm_GetLESvcIconID(key));
    }
    bases.erase(0);  // a service without an icon
    for (const unsigned base : bases) {
        for (unsigned state = 0; state < kStates; ++state) named.insert(base + state);
    }
    // The numbering leaves one place between 285 and 298: connected.
    for (unsigned state = 2; state < kStates; ++state) named.erase(kGenericAccess + state);
    return named;
}

// An icon as Windows finds it by file and index, and its size.
std::string look_by_index(unsigned index, bool is_small, int& size) {
    size = GetSystemMetrics(is_small ? SM_CXSMICON : SM_CXICON);
    HICON icon = nullptr;
    // One at a time: of both at once the small one may be the large one made smaller.
    ExtractIconExA(kFile, static_cast<int>(index), is_small ? nullptr : &icon, is_small ? &icon : nullptr, 1);
    return look_of(icon, size);
}

// The dots are compared without showing them.
TEST_F(IconLibrary, ShowsEachNumberedIconAtItsIndex) {
    ASSERT_NE(dll(), nullptr);
    const std::map<unsigned, unsigned> rows = numbered_icons();
    ASSERT_EQ(rows.size(), 36U);
    for (const bool is_small : {false, true}) {
        std::set<std::string> looks;
        for (const auto& [id, index] : rows) {
            int size = 0;
            const std::string found = look_by_index(index, is_small, size);
            EXPECT_FALSE(found.empty()) << id;
            EXPECT_TRUE(found == look_by_identifier(id, size)) << id << " is not at " << index;
            EXPECT_TRUE(looks.insert(found).second) << "looks like another: " << id;
        }
    }
}

TEST_F(IconLibrary, ShowsTheUnknownDeviceAtTheIndexOfAnUnknownIcon) {
    int size = 0;
    const std::string found = look_by_index(VlCm_GetIconIndexByID(999), false, size);
    EXPECT_TRUE(found == look_by_identifier(VlCm_GetDeviceIconID(0x1F00), size));
}

TEST_F(IconLibrary, HoldsEveryIconThatTheLibraryNamesInEverySize) {
    const std::set<unsigned> named = named_icons();
    EXPECT_GT(named.size(), 150U);
    for (const unsigned id : named) {
        const std::map<unsigned, WORD> images = images_of(id);
        for (const unsigned size : {16U, 20U, 24U, 32U, 48U, 0U}) EXPECT_EQ(images.count(size), 1U) << id;
        EXPECT_EQ(images.size(), 6U) << id;
        for (const int size : {16, 20, 24, 32, 48}) {
            EXPECT_FALSE(look_by_identifier(id, size).empty()) << id << " at " << size;
        }
    }
}

TEST_F(IconLibrary, KeepsTheLargeImagesPacked) {
    for (const unsigned id : named_icons()) {
        std::map<unsigned, WORD> images = images_of(id);
        EXPECT_EQ(resource(RT_ICON, images[0]).substr(0, 4), "\x89PNG") << id;
    }
}

TEST_F(IconLibrary, ShowsEveryNamedIconDifferently) {
    for (const int size : {16, 32}) {
        std::map<std::string, unsigned> looks;
        for (const unsigned id : named_icons()) {
            const auto [other, is_new] = looks.insert({look_by_identifier(id, size), id});
            EXPECT_TRUE(is_new) << id << " looks like " << other->second << " at " << size;
        }
    }
}

// One more, and the loudspeaker is not where its index says.
TEST_F(IconLibrary, HasNoPlaceForTheOtherStatesOfGenericAccess) {
    for (unsigned state = 2; state < kStates; ++state) {
        EXPECT_TRUE(look_by_identifier(kGenericAccess + state, 32).empty()) << state;
    }
    EXPECT_EQ(VlCm_GetIconIndexByID(298), VlCm_GetIconIndexByID(kGenericAccess) + 2);
}

TEST_F(IconLibrary, HoldsNoCode) {
    const auto* base = reinterpret_cast<const char*>(dll());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    EXPECT_EQ(headers->OptionalHeader.AddressOfEntryPoint, 0U);
}

}  // namespace
