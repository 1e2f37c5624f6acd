// The texts of Vl2Res.dll, in every language that it holds.
#include "string_ids.h"

#include "support/suite_test.h"
#include "vlcm/catalogue.h"

#include <windows.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

struct StringRow {
    unsigned id;
    const char* label;
};
const StringRow kStrings[] = {
#include "string_rows.inc"
};

using Texts = std::map<unsigned, std::wstring>;

class LanguageLibrary : public ::testing::Test {
protected:
    ~LanguageLibrary() override { FreeLibrary(dll_); }

    std::string narrow(unsigned id) const {
        char text[512] = "";
        LoadStringA(dll_, id, text, sizeof text);
        return text;
    }
    // The texts of each language: strings lie in blocks of 16, each a length and as many characters.
    std::map<WORD, Texts> languages() const {
        std::map<WORD, Texts> found;
        EnumResourceNamesW(dll_, MAKEINTRESOURCEW(6), each_block, reinterpret_cast<LONG_PTR>(&found));
        return found;
    }

    HMODULE dll_ = LoadLibraryA("Vl2Res.dll");

private:
    static BOOL CALLBACK each_block(HMODULE dll, LPCWSTR type, LPWSTR block, LONG_PTR found) {
        return EnumResourceLanguagesW(dll, type, block, each_language, found);
    }
    static BOOL CALLBACK each_language(HMODULE dll, LPCWSTR type, LPCWSTR block, WORD language,
                                       LONG_PTR found) {
        auto& texts = (*reinterpret_cast<std::map<WORD, Texts>*>(found))[language];
        const HRSRC resource = FindResourceExW(dll, type, block, language);
        auto at = static_cast<const wchar_t*>(LockResource(LoadResource(dll, resource)));
        const auto first = (static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(block)) - 1) * 16;
        for (unsigned i = 0; i < 16; ++i) {
            const size_t length = *at++;
            if (length != 0) texts[first + i] = std::wstring(at, length);
            at += length;
        }
        return TRUE;
    }
};

std::set<unsigned> listed_identifiers() {
    std::set<unsigned> ids;
    for (const StringRow& row : kStrings) EXPECT_TRUE(ids.insert(row.id).second) << "twice: " << row.label;
    return ids;
}

TEST_F(LanguageLibrary, LoadsATextForEveryIdentifier) {
    ASSERT_NE(dll_, nullptr);
    support::for_each_row(kStrings, [this](const StringRow& row) {
        wchar_t wide[512] = L"";
        EXPECT_GT(LoadStringW(dll_, row.id, wide, 512), 0);
        EXPECT_FALSE(narrow(row.id).empty());
    });
}

TEST_F(LanguageLibrary, HoldsEnglish) {
    EXPECT_EQ(languages().count(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)), 1U);
}

// A language with a gap would show nothing: Windows falls back by whole blocks.
TEST_F(LanguageLibrary, HoldsExactlyTheListedTextsInEveryLanguage) {
    const std::set<unsigned> expected = listed_identifiers();
    for (const auto& [language, texts] : languages()) {
        std::set<unsigned> ids;
        for (const auto& [id, text] : texts) ids.insert(id);
        EXPECT_EQ(ids, expected) << "language " << std::hex << language;
    }
}

TEST_F(LanguageLibrary, NamesEverythingThatTheCatalogueNames) {
    const std::set<unsigned> listed = listed_identifiers();
    std::set<unsigned> named = {0};
    for (unsigned key = 0; key <= 0xFFFF; ++key) {
        const auto service = static_cast<unsigned short>(key);
        named.insert({VlCm_GetServiceClsNameStringID(service), VlCm_GetLocSvcDesStrID(service),
                      VlCm_GetRmtSvcDesStrID(service), VlCm_GetDevMajorClsNameID(key),
                      VlCm_GetDevMinorClsNameID(key)});
    }
    named.erase(0);  // no text
    EXPECT_GT(named.size(), 100U);
    for (const unsigned id : named) EXPECT_EQ(listed.count(id), 1U) << id;
}

TEST_F(LanguageLibrary, NamesWhatTheLibraryLoadsByNumber) {
    const std::set<unsigned> listed = listed_identifiers();
    for (const int id : {667, 1101, 1153, 1200, 1211, 1212, 1213, 1214, 1215, 1216, 1217, 1813, 1814, 1842,
                         1843, 2503, 5022}) {
        EXPECT_EQ(listed.count(static_cast<unsigned>(id)), 1U) << id;
    }
}

std::wstring conversions_of(const std::wstring& text) {
    std::wstring found;
    for (size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at + 2)) {
        found += text.substr(at, 2);
    }
    return found;
}

TEST_F(LanguageLibrary, HoldsTheConversionsThatTheFormatsNeedAndNoOthers) {
    for (const auto& [language, texts] : languages()) {
        for (const auto& [id, text] : texts) {
            const wchar_t* expected = id == 5022 ? L"%d" : id == 1216 ? L"%s" : L"";
            EXPECT_EQ(conversions_of(text), expected) << id << ", language " << std::hex << language;
        }
    }
}

// Loaders cut what is longer than their buffers, terminator included.
TEST_F(LanguageLibrary, FitsTheBuffersOfItsLoaders) {
    const std::map<unsigned, size_t> rooms = {{667, 50},   {2503, 63},  {5022, 20},  {1211, 100},
                                              {1212, 200}, {1213, 100}, {1214, 260}, {1215, 100},
                                              {1216, 200}, {1217, 128}};
    for (const auto& [language, texts] : languages()) {
        for (const auto& [id, text] : texts) {
            const auto room = rooms.find(id);
            // Narrow forms of other scripts take up to two bytes a character.
            const size_t bytes = text.size() * (PRIMARYLANGID(language) == LANG_ENGLISH ? 1 : 2);
            EXPECT_LT(bytes, room == rooms.end() ? 80 : room->second)
                << id << ", language " << std::hex << language;
        }
    }
}

TEST_F(LanguageLibrary, NamesFilesOnlyByWhatAFileMayBeNamed) {
    for (const auto& [language, texts] : languages()) {
        for (const unsigned id : {667U, 1101U, 2503U}) {
            EXPECT_TRUE(texts.at(id).find_first_of(L"\\/:?*\"<>|.") == std::wstring::npos)
                << id << ", language " << std::hex << language;
        }
    }
}

TEST_F(LanguageLibrary, HoldsNoCode) {
    const auto base = reinterpret_cast<const char*>(dll_);
    const auto dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    EXPECT_EQ(headers->OptionalHeader.AddressOfEntryPoint, 0U);
}

}  // namespace
