// What Vl2Res.dll holds, in every language.
#include "text_library.h"

#include "vlcm/catalogue.h"

#include <set>
#include <vector>

namespace {

std::set<unsigned> listed_identifiers() {
    std::set<unsigned> ids;
    for (const StringRow& row : kStrings) EXPECT_TRUE(ids.insert(row.id).second) << "twice: " << row.label;
    return ids;
}

TEST_F(TextLibrary, HoldsSixLanguages) {
    ASSERT_NE(dll(), nullptr);
    std::set<LANGID> expected;
    for (const LanguageRow& row : kLanguages) expected.insert(row.block);
    std::set<LANGID> held;
    for (const auto& [language, texts] : languages()) held.insert(language);
    EXPECT_EQ(held, expected);
}

// A language with a gap would show nothing: Windows falls back by whole blocks.
TEST_F(TextLibrary, HoldsExactlyTheListedTextsInEveryLanguage) {
    const std::set<unsigned> expected = listed_identifiers();
    support::for_each_row(kLanguages, [&](const LanguageRow& language) {
        std::set<unsigned> ids;
        for (const auto& [id, text] : texts_of(language.block)) ids.insert(id);
        EXPECT_EQ(ids, expected);
    });
}

TEST_F(TextLibrary, HoldsTheTextsOfEachLanguageUnspoilt) {
    support::for_each_row(kLanguages, [&](const LanguageRow& language) {
        Texts texts = texts_of(language.block);
        EXPECT_EQ(texts[IDS_STATE_CONNECTED], language.connected);
        EXPECT_EQ(texts[IDS_DEVICE_UNKNOWN], language.unknown_device);
    });
}

TEST_F(TextLibrary, NamesEverythingThatTheCatalogueNames) {
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

struct RoomRow {
    const char* label;
    std::vector<unsigned> ids;
    size_t room;
    const char* rules;
};
// What the library itself loads, by number, and into what.
const RoomRow kRooms[] = {
    {"Send-To folder", {667}, 50, "file"},
    {"Send-To link", {2503}, 63, "file"},
    {"device without a name", {1101}, 255, "file"},
    {"unknown service", {1153}, 80, ""},
    {"unknown kind", {1200}, 260, ""},
    {"captions", {1211, 1213, 1215}, 100, ""},
    {"question before a service stops", {1212}, 200, ""},
    {"question before devices go", {1214}, 260, ""},
    {"refusal", {1216}, 200, "%s"},
    {"word for bytes", {1217}, 128, ""},
    {"states", {1813, 1814, 1842, 1843}, 100, ""},
    {"port format", {5022}, 20, "%d"},
};

const StringRow& row_of(unsigned id) {
    for (const StringRow& row : kStrings) {
        if (row.id == id) return row;
    }
    static const StringRow none = {0, "none", 0, "none"};
    return none;
}

TEST_F(TextLibrary, GivesNoMoreRoomThanTheLibraryHas) {
    support::for_each_row(kRooms, [](const RoomRow& expected) {
        for (const unsigned id : expected.ids) {
            EXPECT_EQ(row_of(id).id, id);
            EXPECT_LE(row_of(id).room, expected.room) << id;
            EXPECT_STREQ(row_of(id).rules, expected.rules) << id;
        }
    });
}

// The name of a service goes into 80 characters; its shortcut takes 70 of them and its port others.
TEST_F(TextLibrary, LeavesNoServiceNameToBeCut) {
    for (unsigned key = 0; key <= 0xFFFF; ++key) {
        const unsigned id = VlCm_GetServiceClsNameStringID(static_cast<unsigned short>(key));
        EXPECT_LE(row_of(id).room, 71U) << id;
    }
}

TEST_F(TextLibrary, FitsTheBuffersOfItsLoadersInEveryLanguage) {
    support::for_each_row(kLanguages, [&](const LanguageRow& language) {
        Texts texts = texts_of(language.block);
        for (const StringRow& row : kStrings) {
            BOOL spoilt = FALSE;
            const std::string bytes = in_code_page(texts[row.id], language.code_page, spoilt);
            EXPECT_FALSE(spoilt) << row.label;
            EXPECT_LT(bytes.size(), row.room) << row.label;
            EXPECT_LT(texts[row.id].size(), row.room) << row.label;
        }
    });
}

// The buffers into which the library puts two texts together.
TEST_F(TextLibrary, FitsTogetherWhereTextsAreJoined) {
    support::for_each_row(kLanguages, [&](const LanguageRow& language) {
        Texts texts = texts_of(language.block);
        const auto size = [&](int id) {
            BOOL spoilt = FALSE;
            return in_code_page(texts[static_cast<unsigned>(id)], language.code_page, spoilt).size();
        };
        const size_t port = size(IDS_PORT_FORMAT) - 2 + strlen("256");
        EXPECT_LT(size(IDS_NAME_SERIAL_PORT) + strlen(" ()") + port, 100U);
        for (const int state : {IDS_STATE_CONNECTED, IDS_STATE_IDLE}) {
            EXPECT_LT(size(state) + strlen(", ") + size(IDS_STATE_PAIRED), 200U);
        }
        for (const StringRow& row : kStrings) {
            if (row.room != 71) continue;  // no name of a service
            EXPECT_LT(size(static_cast<int>(row.id)) + strlen("()") + size(IDS_DEVICE_UNKNOWN), 256U);
        }
    });
}

std::wstring conversions_of(const std::wstring& text) {
    std::wstring found;
    for (size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at + 2)) {
        found += (found.empty() ? L"" : L" ") + text.substr(at, 2);
    }
    return found;
}

TEST_F(TextLibrary, HoldsTheSameConversionsInEveryLanguage) {
    support::for_each_row(kLanguages, [&](const LanguageRow& language) {
        Texts texts = texts_of(language.block);
        for (const StringRow& row : kStrings) {
            const std::string rules = row.rules;
            const std::string expected = rules == "file" ? "" : rules;
            EXPECT_EQ(conversions_of(texts[row.id]), std::wstring(expected.begin(), expected.end()))
                << row.label;
        }
    });
}

// The name exists as a file only when Windows takes it as it stands: no stream, no folder, no lost dot.
bool names_a_file(const std::wstring& name) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = folder + name + L".lnk";
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    WIN32_FIND_DATAW found = {};
    const HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) FindClose(search);
    CloseHandle(file);
    return name + L".lnk" == found.cFileName;
}

TEST_F(TextLibrary, NamesFilesByWhatAFileMayBeNamed) {
    support::for_each_row(kLanguages, [&](const LanguageRow& language) {
        Texts texts = texts_of(language.block);
        std::set<std::wstring> names;
        for (const unsigned id : {667U, 1101U, 2503U}) {
            EXPECT_TRUE(names_a_file(texts[id])) << id;
            EXPECT_EQ(texts[id].find_first_of(L"\\/:?*\"<>|."), std::wstring::npos) << id;
            EXPECT_TRUE(names.insert(texts[id]).second) << "one folder, one name: " << id;
        }
    });
}

TEST_F(TextLibrary, HoldsNoCode) {
    const auto base = reinterpret_cast<const char*>(dll());
    const auto dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    EXPECT_EQ(headers->OptionalHeader.AddressOfEntryPoint, 0U);
}

}  // namespace
