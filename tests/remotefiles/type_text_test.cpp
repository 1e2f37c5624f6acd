// What kind of file a remote file is, as the shell names it.
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "twin.h"
#include "vlcm/remote_files.h"

#include <shellapi.h>

namespace {

constexpr uint32_t kTypeBytes = 80;

class TypeText : public support::SuiteTest {
protected:
    TypeText() {
        shell_.answer([this](LPCWSTR name, DWORD attributes, SHFILEINFOW* info, UINT size, UINT flags) {
            EXPECT_EQ(size, sizeof *info);
            EXPECT_EQ(flags, UINT{SHGFI_TYPENAME | SHGFI_USEFILEATTRIBUTES});
            name_ = name;
            attributes_ = attributes;
            if (real_) return shell_.real(name, attributes, info, size, flags);
            std::copy_n(type_.c_str(), type_.size() + 1, info->szTypeName);
            return DWORD_PTR{1};
        });
    }
    static Outcome<char> ask(const char* name, uint32_t attributes, uint32_t size) {
        return outcome_of<char>(
            [=](char* buffer, uint32_t room) {
                return VlCm_GetFTPFileDescription(name, attributes, buffer, room);
            },
            size, kTypeBytes);
    }
    // The kind when the shell says `type`.
    Outcome<char> ask_for(const std::wstring& type, uint32_t size = kTypeBytes) {
        type_ = type;
        return ask("a.txt", 0, size);
    }

    bool real_ = false;
    std::wstring name_, type_ = L"Kind";
    DWORD attributes_ = 0;
    support::CallPatch<DWORD_PTR(LPCWSTR, DWORD, SHFILEINFOW*, UINT, UINT)> shell_{"SHGetFileInfoW",
                                                                                   SHGetFileInfoW};
};

TEST_F(TypeText, NeedsANameAndABufferWithRoom) {
    char buffer[kTypeBytes] = "x";
    EXPECT_EQ(VlCm_GetFTPFileDescription(nullptr, 0, buffer, sizeof buffer), 0u);
    EXPECT_EQ(VlCm_GetFTPFileDescription("a.txt", 0, nullptr, sizeof buffer), 0u);
    EXPECT_EQ(VlCm_GetFTPFileDescription("a.txt", 0, buffer, 0), 0u);
    EXPECT_STREQ(buffer, "x");
    EXPECT_EQ(shell_.count(), 0u);
}

TEST_F(TypeText, IsAskedForAFileOrAFolder) {
    const struct {
        const char* label;
        uint32_t attributes;
        DWORD expected;
    } rows[] = {
        {"none", 0, FILE_ATTRIBUTE_NORMAL},
        {"normal", FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_NORMAL},
        {"hidden, read-only", 0x3, FILE_ATTRIBUTE_NORMAL},
        {"all but the folder's bit", 0xFFFFFFEF, FILE_ATTRIBUTE_NORMAL},
        {"folder", 0x10, FILE_ATTRIBUTE_DIRECTORY},
        {"hidden folder", 0x12, FILE_ATTRIBUTE_DIRECTORY},
        {"all", 0xFFFFFFFF, FILE_ATTRIBUTE_DIRECTORY},
    };
    support::for_each_row(rows, [&](const auto& row) {
        EXPECT_EQ(ask("photo.jpg", row.attributes, kTypeBytes).text, "Kind");
        EXPECT_EQ(attributes_, row.expected);
        EXPECT_EQ(name_, L"photo.jpg");
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(TypeText, IsAskedForByTheUtf8Name) {
    ask("Gr\xC3\xBC\xC3\x9F"
        "e \xE5\xAD\x97 \xF0\x9F\x98\x80.txt",
        0, kTypeBytes);
    EXPECT_EQ(name_,
              L"Gr\xFC\xDF"
              L"e \x5B57 \xD83D\xDE00.txt");
}

TEST_F(TypeText, IsAskedForWithANameCutTo259Characters) {
    const std::string tail = ".txt";
    for (const size_t length : {258u, 259u, 260u, 300u, 2000u}) {
        const std::string name = std::string(length - tail.size(), 'n') + tail;
        ask(name.c_str(), 0, kTypeBytes);
        const std::string cut = name.substr(0, 259);
        EXPECT_EQ(name_, std::wstring(cut.begin(), cut.end())) << length;
    }
    std::string wide_name;
    for (int i = 0; i < 300; ++i) wide_name += "\xE5\xAD\x97";  // three bytes, one character
    ask(wide_name.c_str(), 0, kTypeBytes);
    EXPECT_EQ(name_, std::wstring(259, L'\x5B57'));
}

TEST_F(TypeText, SurvivesNamesThatAreNotUtf8) {
    for (const char* name : {"", "a\xE5\xAD", "\xF0\x9F", "\x80\x80\x80", "a\xFF.txt", "\xC3"}) {
        EXPECT_EQ(ask(name, 0, kTypeBytes).text, "Kind");
        EXPECT_LE(name_.size(), strlen(name));
    }
    const std::string tail(2000, '\x80');
    EXPECT_EQ(ask(tail.c_str(), 0, kTypeBytes).text, "Kind");
    EXPECT_EQ(name_.size(), 259u);
}

TEST_F(TypeText, MustBeShorterThanTheSize) {
    const auto fits = ask_for(L"Text file", 10);
    EXPECT_EQ(fits.result, 9u);
    EXPECT_EQ(fits.text, "Text file");
    EXPECT_TRUE(fits.rest_untouched);
    for (const uint32_t size : {9u, 8u, 1u}) {
        const auto refused = ask_for(L"Text file", size);
        EXPECT_EQ(refused.result, 0u) << size;
        EXPECT_TRUE(refused.untouched) << size;
    }
    EXPECT_EQ(ask_for(L"Text file", 0xFFFFFFFF).result, 9u);
}

// The size is compared with the characters; what is written is bytes.
TEST_F(TypeText, HasUpTo80BytesWhateverTheSize) {
    const auto found = ask_for(std::wstring(20, L'\x5B57'), 21);
    EXPECT_EQ(found.result, 20u);
    EXPECT_EQ(found.text.size(), 60u);
    EXPECT_TRUE(found.rest_untouched);
}

TEST_F(TypeText, IsCutAtAWholeCharacter) {
    const std::wstring pair = L"\xD83D\xDE00";
    std::wstring pairs;
    for (int i = 0; i < 30; ++i) pairs += pair;
    const struct {
        const char* label;
        std::wstring type;
        size_t bytes;
    } rows[] = {
        {"79 of one byte", std::wstring(79, L'k'), 79},
        {"39 of two bytes", std::wstring(39, L'\xFC'), 78},
        {"40 of two bytes", std::wstring(40, L'\xFC'), 78},
        {"one and 39 of two bytes", L"k" + std::wstring(39, L'\xFC'), 79},
        {"26 of three bytes", std::wstring(26, L'\x5B57'), 78},
        {"79 of three bytes", std::wstring(79, L'\x5B57'), 78},
        {"one and 30 of three bytes", L"k" + std::wstring(30, L'\x5B57'), 79},
        {"30 pairs", pairs, 76},
    };
    support::for_each_row(rows, [&](const auto& row) {
        const auto found = ask_for(row.type, 1000);
        EXPECT_EQ(found.result, row.type.size()) << "the whole length";
        EXPECT_EQ(found.text.size(), row.bytes);
        wchar_t back[kTypeBytes] = L"";
        EXPECT_GT(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, found.text.c_str(), -1, back, 80), 0);
        EXPECT_EQ(back, row.type.substr(0, wcslen(back)));
    });
}

TEST_F(TypeText, IsEmptyWhenTheShellDoesNotTell) {
    shell_.answer([](LPCWSTR, DWORD, SHFILEINFOW* info, UINT, UINT) {
        wcscpy(info->szTypeName, L"half");
        return DWORD_PTR{0};
    });
    const auto found = ask("a.txt", 0, kTypeBytes);
    EXPECT_EQ(found.result, 0u);
    EXPECT_FALSE(found.untouched);
    EXPECT_EQ(found.text, "");
}

TEST_F(TypeText, IsThatOfTheShell) {
    real_ = true;
    for (const DWORD kind : {DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{FILE_ATTRIBUTE_DIRECTORY}}) {
        SHFILEINFOW info{};
        ASSERT_NE(
            SHGetFileInfoW(L"a.txt", kind, &info, sizeof info, SHGFI_TYPENAME | SHGFI_USEFILEATTRIBUTES), 0u);
        const std::wstring expected = info.szTypeName;
        EXPECT_FALSE(expected.empty());
        EXPECT_EQ(ask("a.txt", kind, kTypeBytes).text, std::string(expected.begin(), expected.end()));
    }
}

}  // namespace
