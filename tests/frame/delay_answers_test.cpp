// What late-bound functions answer when their DLL or they themselves are missing.
#include "frame/delay_answers.h"

#include "library_copy.h"
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "vlcm/companions.h"
#include "vlcm/images.h"
#include "vlcm/mobile.h"
#include "vlcm/settings.h"

#include <delayimp.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// What says "failed" in a function's result.
enum class Failure {
    kZero,      // FALSE, null, no handle, no count
    kHresult,   // a negative number: 0 is success
    kCode,      // an error code: 0 is success
    kNoResult,  // void
};

struct Function {
    const char *dll, *name;
    Failure failure;
};
// Every late-bound function of the library. A function that is missing here fails the test: look up
// what 0 means in its result, add its row, and one in frame/delay_answers.h when 0 is success.
// clang-format off
constexpr Function kFunctions[] = {
    {"advapi32.dll", "AllocateAndInitializeSid", Failure::kZero},
    {"advapi32.dll", "CheckTokenMembership", Failure::kZero},
    {"advapi32.dll", "FreeSid",              Failure::kNoResult},
    {"advapi32.dll", "RegCloseKey",          Failure::kCode},
    {"advapi32.dll", "RegEnumKeyExA",        Failure::kCode},
    {"advapi32.dll", "RegOpenKeyExA",        Failure::kCode},
    {"advapi32.dll", "RegQueryValueExA",     Failure::kCode},
    {"gdiplus.dll",  "GdipDisposeImage",        Failure::kCode},
    {"gdiplus.dll",  "GdipGetImageEncoders",    Failure::kCode},
    {"gdiplus.dll",  "GdipGetImageEncodersSize", Failure::kCode},
    {"gdiplus.dll",  "GdipGetImageHeight",      Failure::kCode},
    {"gdiplus.dll",  "GdipGetImageRawFormat",   Failure::kCode},
    {"gdiplus.dll",  "GdipGetImageThumbnail",   Failure::kCode},
    {"gdiplus.dll",  "GdipGetImageWidth",       Failure::kCode},
    {"gdiplus.dll",  "GdipLoadImageFromFile",   Failure::kCode},
    {"gdiplus.dll",  "GdipSaveImageToFile",     Failure::kCode},
    {"gdiplus.dll",  "GdiplusShutdown",         Failure::kNoResult},
    {"gdiplus.dll",  "GdiplusStartup",          Failure::kCode},
    {"ole32.dll",    "CLSIDFromString",      Failure::kHresult},
    {"ole32.dll",    "CoCreateInstance",     Failure::kHresult},
    {"ole32.dll",    "CoInitialize",         Failure::kHresult},
    {"ole32.dll",    "CoTaskMemAlloc",       Failure::kZero},
    {"ole32.dll",    "CoTaskMemFree",        Failure::kNoResult},
    {"ole32.dll",    "CoUninitialize",       Failure::kNoResult},
    {"shell32.dll",  "ILCombine",            Failure::kZero},
    {"shell32.dll",  "ILGetSize",            Failure::kZero},
    {"shell32.dll",  "SHGetFileInfoW",       Failure::kZero},
    {"shell32.dll",  "SHGetFolderPathA",     Failure::kHresult},
    {"shell32.dll",  "ShellExecuteA",        Failure::kZero},
    {"shlwapi.dll",  "StrToIntA",            Failure::kZero},
    {"user32.dll",   "CharLowerA",           Failure::kZero},
    {"user32.dll",   "FindWindowA",          Failure::kZero},
    {"user32.dll",   "GetDesktopWindow",     Failure::kZero},
    {"user32.dll",   "GetWindowLongPtrA",    Failure::kZero},
    {"user32.dll",   "IsWindow",             Failure::kZero},
    {"user32.dll",   "LoadStringA",          Failure::kZero},
    {"user32.dll",   "LoadStringW",          Failure::kZero},
    {"user32.dll",   "MessageBoxA",          Failure::kZero},
    {"user32.dll",   "MessageBoxW",          Failure::kZero},
    {"user32.dll",   "PostMessageA",         Failure::kZero},
    {"user32.dll",   "SetForegroundWindow",  Failure::kZero},
    {"user32.dll",   "SetWindowLongPtrA",    Failure::kZero},
    {"user32.dll",   "SetWindowPos",         Failure::kZero},
    {"winspool.drv", "ClosePrinter",         Failure::kZero},
    {"winspool.drv", "DeletePrinter",        Failure::kZero},
    {"winspool.drv", "EnumJobsA",            Failure::kZero},
    {"winspool.drv", "EnumPortsA",           Failure::kZero},
    {"winspool.drv", "EnumPrintersA",        Failure::kZero},
    {"winspool.drv", "GetPrinterA",          Failure::kZero},
    {"winspool.drv", "OpenPrinterA",         Failure::kZero},
    {"winspool.drv", "SetPrinterA",          Failure::kZero},
};
// clang-format on

using Names = std::vector<std::pair<std::string, std::string>>;

template <typename T>
const T* at(HMODULE module, DWORD rva) {
    return reinterpret_cast<const T*>(reinterpret_cast<const char*>(module) + rva);
}

// The rows (DLL, function) of a module's delay-import table.
Names late_bound(HMODULE module) {
    const auto header =
        at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const auto& where = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT];
    Names names;
    for (auto d = at<ImgDelayDescr>(module, where.VirtualAddress); d->rvaDLLName != 0; ++d) {
        for (auto name = at<IMAGE_THUNK_DATA>(module, d->rvaINT); name->u1.AddressOfData != 0; ++name) {
            const auto entry = at<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
            names.emplace_back(at<char>(module, d->rvaDLLName), reinterpret_cast<const char*>(entry->Name));
        }
    }
    return names;
}

const Function* row_of(const std::string& dll, const std::string& name) {
    const auto row = std::find_if(std::begin(kFunctions), std::end(kFunctions),
                                  [&](const Function& f) { return f.dll == dll && f.name == name; });
    return row == std::end(kFunctions) ? nullptr : row;
}

LRESULT answer_of(const std::string& dll, const std::string& name) {
    const FARPROC answer = vl::delay_answer_for(dll.c_str(), name.c_str());
    return reinterpret_cast<LRESULT(WINAPI*)()>(reinterpret_cast<void*>(answer))();
}

bool says_failed(LRESULT answer, Failure failure) {
    switch (failure) {
        case Failure::kHresult:
            return static_cast<HRESULT>(answer) < 0;
        case Failure::kCode:
            return static_cast<int>(answer) > 0;
        case Failure::kNoResult:
            return true;
        default:
            return answer == 0;
    }
}

class DelayAnswer : public support::SuiteTest {};

// The copy of the library cannot load any of the system's DLLs.
class WithoutSystemDlls : public support::SuiteTest {
protected:
    WithoutSystemDlls() { loading_.fail_from(1, HMODULE{nullptr}, ERROR_MOD_NOT_FOUND); }

    LibraryCopy library_;
    support::CallPatch<decltype(LoadLibraryExA)> loading_{"LoadLibraryExA", LoadLibraryExA,
                                                          library_.module()};
};

}  // namespace

TEST_F(DelayAnswer, OfEveryLateBoundFunctionSaysFailed) {
    const Names names = late_bound(GetModuleHandleA("VlCommon.dll"));
    ASSERT_FALSE(names.empty());
    for (const auto& [dll, name] : names) {
        const Function* row = row_of(dll, name);
        ASSERT_NE(row, nullptr) << dll << " " << name << " has no row in this test";
        EXPECT_TRUE(says_failed(answer_of(dll, name), row->failure)) << dll << " " << name;
    }
}

TEST_F(DelayAnswer, RowsStandForFunctionsThatTheLibraryBindsLate) {
    const Names names = late_bound(GetModuleHandleA("VlCommon.dll"));
    for (const Function& f : kFunctions) {
        EXPECT_NE(std::find(names.begin(), names.end(), Names::value_type(f.dll, f.name)), names.end())
            << f.dll << " " << f.name << " is not bound late any more: take its row out";
    }
}

TEST_F(DelayAnswer, SetsTheLastError) {
    SetLastError(0);
    answer_of("shell32.dll", "SHGetFolderPathA");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));
}

TEST_F(DelayAnswer, HeedsNoLetterCaseInTheDllsName) {
    EXPECT_LT(static_cast<HRESULT>(answer_of("SHELL32.DLL", "SHGetFolderPathA")), 0);
    EXPECT_EQ(answer_of("other.dll", "SHGetFolderPathA"), 0);
}

TEST_F(WithoutSystemDlls, TheLibraryStillLoadsAndAnswers) {
    char path[260] = "left";
    library_.get("VlCm_GetCommonSettingFilePath", VlCm_GetCommonSettingFilePath)(path, sizeof path);
    EXPECT_STREQ(path, "left\\SysWOW64\\vlcs.ini");
    EXPECT_EQ(library_.get("Vlcm_SHAlloc", Vlcm_SHAlloc)(16), nullptr);
    EXPECT_EQ(library_.get("VlCm_CreateMobileSMSInfo", VlCm_CreateMobileSMSInfo)(), nullptr);
    EXPECT_EQ(support::trace_lines(),
              std::vector<std::string>{"error!!! CreateMobileProcInfo: can not alloc memory.\r\n"});
}

TEST_F(WithoutSystemDlls, EachIsSoughtInTheSystemFolderByItsFullPath) {
    char folder[MAX_PATH];
    GetSystemDirectoryA(folder, MAX_PATH);
    std::vector<std::string> paths;
    loading_.fail_from(SIZE_MAX, HMODULE{nullptr});
    loading_.answer([&](const char* path, HANDLE file, DWORD flags) {
        paths.emplace_back(path);
        EXPECT_EQ(file, nullptr);
        EXPECT_EQ(flags, static_cast<DWORD>(LOAD_WITH_ALTERED_SEARCH_PATH));
        return HMODULE{nullptr};
    });
    char path[260] = {};
    library_.get("VlCm_GetShortCutPath", VlCm_GetShortCutPath)(path, sizeof path);
    library_.get("Vlcm_SHFree", Vlcm_SHFree)(path);
    EXPECT_EQ(paths, (std::vector<std::string>{std::string(folder) + "\\shell32.dll",
                                               std::string(folder) + "\\ole32.dll"}));
}

// It may be a side-by-side assembly, which the system folder does not have.
TEST_F(WithoutSystemDlls, GdiPlusIsSoughtByItsBareNameToo) {
    unsigned char encoding = 0xCD;
    library_.get("VlCm_GetImgEncodeEx", VlCm_GetImgEncodeEx)("picture.jpg", &encoding);
    EXPECT_EQ(encoding, 0xCD);
    const auto calls = loading_.calls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(std::get<2>(calls[0]), static_cast<DWORD>(LOAD_WITH_ALTERED_SEARCH_PATH));
    EXPECT_STREQ(std::get<0>(calls[1]), "gdiplus.dll");
    EXPECT_EQ(std::get<1>(calls[1]), nullptr);
    EXPECT_EQ(std::get<2>(calls[1]), 0u);
}

TEST(WithoutSystemFunctions, TheLibraryStillAnswers) {
    const LibraryCopy library;
    support::CallPatch<decltype(GetProcAddress)> looking_up("GetProcAddress", GetProcAddress,
                                                            library.module());
    looking_up.fail_from(1, FARPROC{nullptr}, ERROR_PROC_NOT_FOUND);
    char path[260] = "left";
    library.get("VlCm_GetShortCutPath", VlCm_GetShortCutPath)(path, sizeof path);
    EXPECT_STREQ(path, "left\\SysWOW64\\SHORTCUT.ini");
    EXPECT_EQ(library.get("Vlcm_SHAlloc", Vlcm_SHAlloc)(16), nullptr);
    EXPECT_EQ(looking_up.count(), 2u);
}
