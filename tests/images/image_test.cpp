#include "image_test.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <windows.h>

namespace {

std::string narrow(const std::wstring& text, UINT code_page) {
    char bytes[1024] = "";
    WideCharToMultiByte(code_page, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

void remove_folder(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        DeleteFileW((folder + found.cFileName).c_str());
    } while (FindNextFileW(search, &found));
    FindClose(search);
    RemoveDirectoryW(folder.c_str());
}

// The first image of a kind loads decoder and converters, the first saved one the encoder: they keep what
// they opened.
void warm_up_gdiplus() {
    for (const char* name : {"plain.jpg", "plain.png", "plain.gif", "24bit.bmp", "plain.tif", "drawing.wmf",
                             "cmyk.jpg", "16bit.png", "animated.gif"}) {
        VlCm_CreateThumbFile((std::string(PICTURES) + name).c_str(), "warm_up.jpg");
        EXPECT_TRUE(DeleteFileA("warm_up.jpg")) << name;
    }
}

// Before the handles are counted.
struct WarmUp : ::testing::Environment {
    void SetUp() override {
        warm_up_gdiplus();
        const char* named = getenv("VLCM_TEST_CODE_PAGE");
        if (named != nullptr) ASSERT_EQ(GetACP(), strtoul(named, nullptr, 10));
    }
};
const auto* const kWarmUp = ::testing::AddGlobalTestEnvironment(new WarmUp);

}  // namespace

ImageTest::ImageTest() {
    EXPECT_NE(kWarmUp, nullptr);
    remove_folder(folder());
    CreateDirectoryW(folder().c_str(), nullptr);
    gdiplus_.emplace();
}

ImageTest::~ImageTest() {
    gdiplus_.reset();
    remove_folder(folder());
}

std::wstring ImageTest::copy_of(const std::string& name, const std::wstring& file) const {
    const std::string from = picture(name);
    std::wstring to = folder() + file;
    EXPECT_TRUE(CopyFileW(std::wstring(from.begin(), from.end()).c_str(), to.c_str(), FALSE)) << from;
    return to;
}

std::string utf8(const std::wstring& text) { return narrow(text, CP_UTF8); }
std::string ansi(const std::wstring& text) { return narrow(text, CP_ACP); }

std::wstring national_name(const std::wstring& extension) {
    constexpr UINT kWestern = 1252;
    return (GetACP() == kWestern ? L"größe" : L"机器") + extension;
}

uint64_t length_of(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    EXPECT_TRUE(GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) << path;
    return uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}
