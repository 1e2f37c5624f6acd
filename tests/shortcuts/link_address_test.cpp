// The device that a Send-To link points at.
#include "fake_link.h"
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/new_thread.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"

#include <shlguid.h>
#include <string.h>

#include <functional>

using namespace shortcuts_test;

namespace {

using Address = std::vector<uint8_t>;

constexpr uint8_t kUntouchedByte = 0xCD;
const Address kUntouched(6, kUntouchedByte);
const Address kPhone{0x01, 0x5E, 0x2D, 0x38, 0xC1, 0xA4};  // A4:C1:38:2D:5E:01
const Address kZero(6, 0);
constexpr char kPhoneArguments[] = "-DEV_ADDR=A4:C1:38:2D:5E:01";

struct Answer {
    BOOL result;
    Address address;
    bool operator==(const Answer&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Answer& answer) {
    return out << answer.result << ' ' << ::testing::PrintToString(answer.address);
}

Answer ask(const char* path) {
    uint8_t address[8];
    memset(address, kUntouchedByte, sizeof address);
    Answer answer{VlCm_GetBtAddrByShcParam(path, address), {}};
    answer.address.assign(address, address + 6);
    EXPECT_EQ(address[6], kUntouchedByte);
    EXPECT_EQ(address[7], kUntouchedByte);
    return answer;
}

std::string utf8(const std::wstring& text) {
    char bytes[1024] = "";
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

// Link files made by the shell's own object, taken away at the end.
class LinkFolder {
public:
    LinkFolder() {
        wchar_t folder[MAX_PATH] = L"";
        GetTempPathW(MAX_PATH, folder);
        folder_ = std::wstring(folder) + L"link_address_test";
        CreateDirectoryW(folder_.c_str(), nullptr);
    }
    ~LinkFolder() {
        for (const std::wstring& file : files_) DeleteFileW(file.c_str());
        RemoveDirectoryW(folder_.c_str());
    }
    LinkFolder(const LinkFolder&) = delete;
    LinkFolder& operator=(const LinkFolder&) = delete;

    std::string add(const std::wstring& name, const char* arguments) {
        const std::wstring path = path_of(name);
        files_.push_back(path);
        EXPECT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
        void* made = nullptr;
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
        auto* const link = static_cast<IShellLinkA*>(made);
        link->SetPath("C:\\windows\\notepad.exe");
        link->SetArguments(arguments);
        void* found = nullptr;
        link->QueryInterface(IID_IPersistFile, &found);
        auto* const file = static_cast<IPersistFile*>(found);
        EXPECT_EQ(file->Save(path.c_str(), TRUE), S_OK);
        file->Release();
        link->Release();
        CoUninitialize();
        return utf8(path);
    }
    std::string add_text(const std::wstring& name, const std::string& bytes) {
        const std::wstring path = path_of(name);
        files_.push_back(path);
        FILE* const file = _wfopen(path.c_str(), L"wb");
        if (file != nullptr) fwrite(bytes.data(), 1, bytes.size(), file), fclose(file);
        return utf8(path);
    }
    [[nodiscard]] std::wstring path_of(const std::wstring& name) const { return folder_ + L"\\" + name; }

private:
    std::wstring folder_;
    std::vector<std::wstring> files_;
};

class LinkAddress : public support::SuiteTest {
protected:
    // The first link object of a process makes the system keep a key open: it is no leak.
    static void SetUpTestSuite() { LinkFolder().add(L"warm-up.lnk", ""); }

    // Hands a link of the test's own to the library.
    void use(FakeLink& link) {
        create_.answer([&link](REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID* object) {
            *object = static_cast<IShellLinkA*>(&link);
            return S_OK;
        });
    }

    LinkFolder folder_;
    support::CallPatch<HRESULT(LPVOID)> join_{"CoInitialize", CoInitialize};
    support::CallPatch<HRESULT(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)> create_{"CoCreateInstance",
                                                                                     CoCreateInstance};
    support::CallPatch<void()> leave_{"CoUninitialize", CoUninitialize};
};

}  // namespace

TEST_F(LinkAddress, StandsBehindTheFirstTenCharactersOfTheArguments) {
    const std::string path = folder_.add(L"phone.lnk", kPhoneArguments);
    EXPECT_EQ(ask(path.c_str()), (Answer{TRUE, kPhone}));
    EXPECT_EQ(join_.count(), 1u);
    EXPECT_EQ(std::get<0>(join_.calls()[0]), nullptr);
    EXPECT_EQ(create_.count(), 1u);
    EXPECT_EQ(leave_.count(), 1u);
}

TEST_F(LinkAddress, OfEachArgumentsText) {
    const struct {
        const char* label;
        const char* arguments;
        Answer expected;
    } rows[] = {
        {"none", "", {FALSE, kUntouched}},
        {"other prefix", "0123456789A4:C1:38:2D:5E:01", {TRUE, kPhone}},
        {"one character", "x", {TRUE, kZero}},
        {"nine characters", "-DEV_ADDR", {TRUE, kZero}},
        {"prefix alone", "-DEV_ADDR=", {TRUE, kZero}},
        {"half an address", "-DEV_ADDR=A4:C1:38", {TRUE, {0, 0, 0, 0x38, 0xC1, 0xA4}}},
        {"lower case and more", "-DEV_ADDR=a4:c1:38:2d:5e:01 -X", {TRUE, kPhone}},
    };
    support::for_each_row(rows, [this](const auto& row) {
        const std::string path = folder_.add(L"row.lnk", row.arguments);
        EXPECT_EQ(ask(path.c_str()), row.expected);
    });
}

TEST_F(LinkAddress, PathIsUtf8) {
    for (const wchar_t* name : {L"Gr\u00f6\u00dfe.lnk", L"\u7167\u76f8\u6a5f.lnk",
                                L"\u041d\u043e\u0443\u0442\u0431\u0443\u043a.lnk"}) {
        const std::string path = folder_.add(name, kPhoneArguments);
        EXPECT_EQ(ask(path.c_str()), (Answer{TRUE, kPhone})) << path;
    }
}

TEST_F(LinkAddress, OfAFileThatCannotBeLoadedIsNone) {
    EXPECT_EQ(ask(nullptr), (Answer{FALSE, kUntouched}));
    EXPECT_EQ(ask(""), (Answer{FALSE, kUntouched}));
    EXPECT_EQ(ask(utf8(folder_.path_of(L"missing.lnk")).c_str()), (Answer{FALSE, kUntouched}));
    const std::string text = folder_.add_text(L"text.lnk", "-DEV_ADDR=A4:C1:38:2D:5E:01");
    EXPECT_EQ(ask(text.c_str()), (Answer{FALSE, kUntouched}));
    EXPECT_EQ(leave_.count(), 4u);
}

TEST_F(LinkAddress, WithoutAnOutputIsNotWritten) {
    const std::string full = folder_.add(L"full.lnk", kPhoneArguments);
    const std::string empty = folder_.add(L"empty.lnk", "");
    EXPECT_EQ(VlCm_GetBtAddrByShcParam(full.c_str(), nullptr), TRUE);
    EXPECT_EQ(VlCm_GetBtAddrByShcParam(empty.c_str(), nullptr), FALSE);
    create_.fail_from(1, E_OUTOFMEMORY);
    EXPECT_EQ(VlCm_GetBtAddrByShcParam(full.c_str(), nullptr), TRUE);
}

TEST_F(LinkAddress, WithoutTheShellsObjectIsAYesThatWritesNothing) {
    const std::string path = folder_.add(L"phone.lnk", kPhoneArguments);
    for (const HRESULT result : {REGDB_E_CLASSNOTREG, E_OUTOFMEMORY, E_NOINTERFACE}) {
        create_.fail_from(1, result);
        EXPECT_EQ(ask(path.c_str()), (Answer{TRUE, kUntouched}));
    }
    EXPECT_EQ(leave_.count(), 3u);
}

TEST_F(LinkAddress, ObjectIsTheShellsLinkInThisProcess) {
    create_.answer([](REFCLSID id, LPUNKNOWN outer, DWORD context, REFIID interface_id, LPVOID*) {
        EXPECT_TRUE(id == CLSID_ShellLink);
        EXPECT_EQ(outer, nullptr);
        EXPECT_EQ(context, DWORD{CLSCTX_INPROC_SERVER});
        EXPECT_TRUE(interface_id == IID_IShellLinkA);
        return E_FAIL;
    });
    EXPECT_EQ(ask("x"), (Answer{TRUE, kUntouched}));
    EXPECT_EQ(create_.count(), 1u);
}

TEST_F(LinkAddress, ObjectIsLoadedReadAndReleasedInThisOrder) {
    FakeLink link;
    link.arguments = kPhoneArguments;
    use(link);
    EXPECT_EQ(ask("C:\\Gr\xC3\xB6\xC3\x9F"
                  "e.lnk"),
              (Answer{TRUE, kPhone}));
    EXPECT_EQ(link.calls,
              (Lines{"ask for the file", "load, mode 0", "release", "arguments, 260", "release"}));
    EXPECT_EQ(link.loaded, L"C:\\Gr\u00f6\u00dfe.lnk");
    EXPECT_TRUE(link.zeroed);
    EXPECT_EQ(link.references, 0);
}

TEST_F(LinkAddress, EmptyArgumentsReleaseTheObjectToo) {
    FakeLink link;
    use(link);
    EXPECT_EQ(ask("x"), (Answer{FALSE, kUntouched}));
    EXPECT_EQ(link.references, 0);
    EXPECT_EQ(leave_.count(), 1u);
}

TEST_F(LinkAddress, AnObjectWithoutAFileIsAskedForItsArgumentsAllTheSame) {
    FakeLink link;
    link.query_result = E_NOINTERFACE;
    link.arguments = kPhoneArguments;
    use(link);
    EXPECT_EQ(ask("x"), (Answer{TRUE, kPhone}));
    EXPECT_EQ(link.calls, (Lines{"ask for the file", "arguments, 260", "release"}));
    EXPECT_EQ(link.references, 0);
}

TEST_F(LinkAddress, ResultOfTheLoadIsNotLookedAt) {
    FakeLink link;
    link.load_result = E_FAIL;
    link.arguments = kPhoneArguments;
    use(link);
    EXPECT_EQ(ask("x"), (Answer{TRUE, kPhone}));
    EXPECT_EQ(link.references, 0);
}

TEST_F(LinkAddress, ArgumentsThatCannotBeReadAreEmpty) {
    FakeLink link;
    link.arguments_result = E_FAIL;
    link.arguments = kPhoneArguments;
    use(link);
    EXPECT_EQ(ask("x"), (Answer{FALSE, kUntouched}));
    EXPECT_EQ(link.references, 0);
}

TEST_F(LinkAddress, LongArgumentsAreCutAtTheBuffer) {
    FakeLink link;
    link.arguments = kPhoneArguments + std::string(600, 'x');
    use(link);
    EXPECT_EQ(ask("x"), (Answer{TRUE, kPhone}));
}

TEST_F(LinkAddress, APathThatDoesNotFitIsLoadedAsNone) {
    FakeLink link;
    use(link);
    ask(std::string(259, 'a').c_str());
    EXPECT_EQ(link.loaded, std::wstring(259, L'a'));
    link.references = 1;
    ask(std::string(260, 'a').c_str());
    EXPECT_NE(link.loaded, std::wstring(260, L'a'));
    EXPECT_LT(link.loaded.size(), 260u);
}

TEST_F(LinkAddress, ApartmentIsLeftAfterJoiningAndAfterJoiningAgain) {
    const std::string path = folder_.add(L"phone.lnk", kPhoneArguments);
    support::on_new_thread([&] {
        EXPECT_EQ(ask(path.c_str()), (Answer{TRUE, kPhone}));  // S_OK
        EXPECT_EQ(leave_.count(), 1u);
        EXPECT_EQ(CoInitialize(nullptr), S_OK);                // it left nothing behind
        EXPECT_EQ(ask(path.c_str()), (Answer{TRUE, kPhone}));  // S_FALSE
        EXPECT_EQ(leave_.count(), 2u);
        EXPECT_EQ(CoInitialize(nullptr), S_FALSE);  // still joined
        CoUninitialize();
        CoUninitialize();
        EXPECT_EQ(CoInitialize(nullptr), S_OK);  // and balanced
        CoUninitialize();
    });
}

TEST_F(LinkAddress, OtherApartmentOfTheThreadIsNotLeft) {
    const std::string full = folder_.add(L"phone.lnk", kPhoneArguments);
    const std::string empty = folder_.add(L"empty.lnk", "");
    support::on_new_thread([&] {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        EXPECT_EQ(ask(full.c_str()), (Answer{TRUE, kPhone}));
        EXPECT_EQ(ask(empty.c_str()), (Answer{FALSE, kUntouched}));
        create_.fail_from(1, E_FAIL);
        EXPECT_EQ(ask(full.c_str()), (Answer{TRUE, kUntouched}));
        EXPECT_EQ(join_.count(), 3u);
        EXPECT_EQ(leave_.count(), 0u);
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);  // still in it
        CoUninitialize();
        CoUninitialize();
        EXPECT_EQ(CoInitialize(nullptr), S_OK);
        CoUninitialize();
    });
}

TEST_F(LinkAddress, AThreadThatCannotJoinLeavesNothing) {
    FakeLink link;
    link.arguments = kPhoneArguments;
    use(link);
    for (const HRESULT result : {E_OUTOFMEMORY, E_INVALIDARG, E_UNEXPECTED, RPC_E_CHANGED_MODE}) {
        join_.fail_from(1, result);
        link.references = 1;
        EXPECT_EQ(ask("x"), (Answer{TRUE, kPhone}));
        EXPECT_EQ(link.references, 0);
    }
    EXPECT_EQ(leave_.count(), 0u);
}

TEST_F(LinkAddress, IsNeitherTracedNorAskedOfTheStack) {
    ask(folder_.add(L"phone.lnk", kPhoneArguments).c_str());
    ask(nullptr);
    create_.fail_from(1, E_FAIL);
    ask("x");
    EXPECT_TRUE(support::trace_log().empty());
    EXPECT_TRUE(support::sdk_calls().empty());
}
