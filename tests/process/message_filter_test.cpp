// The message filter of Vista and later.
#include "process_test.h"

using namespace process_test;

namespace {

std::string file_name(const std::string& path) { return lower_case(path.substr(path.rfind('\\') + 1)); }

std::string module_name(HMODULE module) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, MAX_PATH);
    return file_name(path);
}

// What the system would be asked is written down: "filter MESSAGE FLAG".
Lines g_asked;
BOOL g_answer = TRUE;
BOOL WINAPI change_filter(UINT message, DWORD flag) {
    g_asked.push_back("filter " + std::to_string(message) + " " + std::to_string(flag));
    return g_answer;
}

class ChangeMsgFiter : public ProcessTest {
protected:
    ChangeMsgFiter() {
        g_asked.clear();
        g_answer = TRUE;
        version_.answer([this](OSVERSIONINFOA* version) {
            version->dwMajorVersion = major_;
            return TRUE;
        });
        loading_.answer([this](const char* path, HANDLE file, DWORD flags) {
            g_asked.push_back("load " + file_name(path));
            return loading_.real(path, file, flags);
        });
        modules_.answer([this](const char* name) {
            g_asked.push_back("module " + std::string(name));
            return modules_.real(name);
        });
        functions_.answer([this](HMODULE module, const char* name) {
            g_asked.push_back(module_name(module) + " " + name);
            return missing_ ? nullptr : reinterpret_cast<FARPROC>(reinterpret_cast<void*>(change_filter));
        });
    }
    static Lines asked() {
        Lines lines;
        lines.swap(g_asked);
        return lines;
    }

    DWORD major_ = 6;
    bool missing_ = false;
    support::CallPatch<BOOL(OSVERSIONINFOA*)> version_{"GetVersionExA", GetVersionExA};
    support::CallPatch<HMODULE(const char*, HANDLE, DWORD)> loading_{"LoadLibraryExA", LoadLibraryExA};
    support::CallPatch<HMODULE(const char*)> modules_{"GetModuleHandleA", GetModuleHandleA};
    support::CallPatch<FARPROC(HMODULE, const char*)> functions_{"GetProcAddress", GetProcAddress};
    const Lines kResolve = {"load user32.dll", "module User32.dll", "user32.dll ChangeWindowMessageFilter"};
};

TEST_F(ChangeMsgFiter, AddsForAnyValueButZero) {
    constexpr struct {
        BOOL add;
        const char* call;
    } kRows[] = {{1, "filter 74 1"}, {2, "filter 74 1"}, {-1, "filter 74 1"}, {0, "filter 74 2"}};
    for (const auto& row : kRows) {
        EXPECT_EQ(VlCm_ChangeMsgFiter(74, row.add), TRUE);
        EXPECT_EQ(asked(), kResolve + Lines{row.call}) << row.add;
        EXPECT_EQ(trace(), scope_of("VlCm_ChangeMsgFiter"));
    }
}

TEST_F(ChangeMsgFiter, HandsTheSystemsAnswerOn) {
    for (const BOOL answer : {0, 1, 2, -1}) {
        g_answer = answer;
        EXPECT_EQ(VlCm_ChangeMsgFiter(0xFFFFFFFF, 1), answer);
        EXPECT_EQ(asked().back(), "filter 4294967295 1");
    }
}

TEST_F(ChangeMsgFiter, WritesALineAndAnswersZeroWhenTheFunctionIsMissing) {
    missing_ = true;
    EXPECT_EQ(VlCm_ChangeMsgFiter(1, 1), 0);
    EXPECT_EQ(asked(), kResolve);
    const std::string line = "=512 Error GetProcAddress ChangeWindowMessageFilter";
    EXPECT_EQ(trace(), nested("VlCm_ChangeMsgFiter", {line}));
}

TEST_F(ChangeMsgFiter, AsksForTheFunctionAlsoWhenUser32DoesNotLoad) {
    loading_.fail_from(1, HMODULE{});
    EXPECT_EQ(VlCm_ChangeMsgFiter(1, 1), 1);
    EXPECT_EQ(asked(), (Lines{kResolve[1], kResolve[2], "filter 1 1"}));
}

TEST_F(ChangeMsgFiter, DoesNothingBeforeVista) {
    for (const DWORD major : {5U, 4U, 0U}) {
        major_ = major;
        EXPECT_EQ(VlCm_ChangeMsgFiter(1, 1), 1);
        EXPECT_EQ(asked(), Lines{}) << major;
        EXPECT_EQ(trace(), scope_of("VlCm_ChangeMsgFiter"));
    }
}

TEST_F(ChangeMsgFiter, ActsOnLaterSystemsThanVista) {
    for (const DWORD major : {7U, 10U}) {
        major_ = major;
        VlCm_ChangeMsgFiter(1, 0);
        EXPECT_EQ(asked().back(), "filter 1 2") << major;
    }
}

}  // namespace
