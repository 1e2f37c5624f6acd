// The language in which a user sees the texts: that of Windows, English when there is none. The ctest
// entries run this program once for each language.
#include "text_library.h"

#include "vlcm/display_names.h"

#include <cstdlib>

namespace {

class LanguageChoice : public TextLibrary {
protected:
    void SetUp() override {
        const char* named = getenv("VLCM_TEST_LANGUAGE");
        ASSERT_NE(named, nullptr) << "run by ctest, which sets the language of Windows";
        for (const LanguageRow& row : kLanguages) {
            if (strcmp(row.label, named) == 0) language_ = &row;
        }
        ASSERT_NE(language_, nullptr) << named;
    }
    const LanguageRow& language() const { return *language_; }

private:
    const LanguageRow* language_ = nullptr;
};

TEST_F(LanguageChoice, RunsUnderTheCodePageOfTheLanguage) {
    const char* code_page = getenv("VLCM_TEST_CODE_PAGE");
    ASSERT_NE(code_page, nullptr);
    EXPECT_EQ(GetACP(), static_cast<UINT>(atoi(code_page)));
}

TEST_F(LanguageChoice, LoadsEveryTextInTheLanguageOfWindows) {
    Texts texts = texts_of(language().block);
    support::for_each_row(kStrings, [&](const StringRow& row) {
        wchar_t wide[512] = L"";
        EXPECT_GT(LoadStringW(dll(), row.id, wide, 512), 0);
        EXPECT_EQ(wide, texts[row.id]);
    });
}

// A buffer of exactly the stated room takes the whole text, in bytes of the code page of Windows.
TEST_F(LanguageChoice, LoadsEveryNarrowTextWhole) {
    Texts texts = texts_of(language().block);
    support::for_each_row(kStrings, [&](const StringRow& row) {
        char narrow[512] = "";
        EXPECT_GT(LoadStringA(dll(), row.id, narrow, static_cast<int>(row.room)), 0);
        BOOL spoilt = FALSE;
        EXPECT_EQ(narrow, in_code_page(texts[row.id], CP_ACP, spoilt));
        EXPECT_FALSE(spoilt);
    });
}

TEST_F(LanguageChoice, ShowsThroughTheLibrary) {
    wchar_t wide[100] = L"";
    ASSERT_EQ(VlCm_GetDevTypeStrByDevClsW(0x020C, wide, 100), 1);
    Texts texts = texts_of(language().block);
    EXPECT_EQ(wide, texts[IDS_DEVICE_SMARTPHONE]);
}

}  // namespace
