// Vl2Res.dll as a resource library: its texts by language, read from the blocks themselves.
#pragma once

#include "string_ids.h"

#include "support/suite_test.h"

#include <windows.h>

#include <map>
#include <string>

struct StringRow {
    unsigned id;
    const char* label;
    size_t room;        // of the smallest buffer, with the terminator
    const char* rules;  // "file", or the conversions of a format
};
inline const StringRow kStrings[] = {
#include "string_rows.inc"
};

struct LanguageRow {
    const char* label;
    LANGID block;
    UINT code_page;
    const wchar_t* connected;  // the texts of two identifiers, with what an encoding could spoil
    const wchar_t* unknown_device;
};
inline const LanguageRow kLanguages[] = {
    {"en", MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), 1252, L"Connected", L"Unknown device"},
    {"de", MAKELANGID(LANG_GERMAN, SUBLANG_NEUTRAL), 1252, L"Verbunden", L"Unbekanntes Ger\u00e4t"},
    {"fr", MAKELANGID(LANG_FRENCH, SUBLANG_NEUTRAL), 1252, L"Connect\u00e9", L"Appareil inconnu"},
    {"es", MAKELANGID(LANG_SPANISH, SUBLANG_NEUTRAL), 1252, L"Conectado", L"Dispositivo desconocido"},
    {"zh", MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED), 936, L"\u5df2\u8fde\u63a5",
     L"\u672a\u77e5\u8bbe\u5907"},
    {"ja", MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT), 932, L"\u63a5\u7d9a\u6e08\u307f",
     L"\u4e0d\u660e\u306a\u30c7\u30d0\u30a4\u30b9"},
};

using Texts = std::map<unsigned, std::wstring>;

class TextLibrary : public ::testing::Test {
protected:
    ~TextLibrary() override { FreeLibrary(dll_); }

    HMODULE dll() const { return dll_; }
    // The texts of each language: strings lie in blocks of 16, each a length and as many characters.
    std::map<LANGID, Texts> languages() const {
        std::map<LANGID, Texts> found;
        EnumResourceNamesW(dll_, MAKEINTRESOURCEW(6), each_block, reinterpret_cast<LONG_PTR>(&found));
        return found;
    }
    Texts texts_of(LANGID language) const { return languages()[language]; }

private:
    static BOOL CALLBACK each_block(HMODULE dll, LPCWSTR type, LPWSTR block, LONG_PTR found) {
        return EnumResourceLanguagesW(dll, type, block, each_language, found);
    }
    static BOOL CALLBACK each_language(HMODULE dll, LPCWSTR type, LPCWSTR block, WORD language,
                                       LONG_PTR found) {
        auto& texts = (*reinterpret_cast<std::map<LANGID, Texts>*>(found))[language];
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

    HMODULE dll_ = LoadLibraryA("Vl2Res.dll");
};

// A text as the A functions give it under a code page; `spoilt` tells that a character is missing there.
inline std::string in_code_page(const std::wstring& text, UINT code_page, BOOL& spoilt) {
    char bytes[1024];
    const int length =
        WideCharToMultiByte(code_page, WC_NO_BEST_FIT_CHARS, text.c_str(), static_cast<int>(text.size()),
                            bytes, sizeof bytes, nullptr, &spoilt);
    return std::string(bytes, static_cast<size_t>(length));
}
