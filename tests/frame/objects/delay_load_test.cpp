// Late binding: where a DLL is taken from, what its first call keeps, and what a missing one answers.
// The library's own binder, on probe DLLs that stand beside this program.
#include "../probe/probe.h"

#include "support/call_patch.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <delayimp.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

// Undoes what binding wrote into this program, so that each test makes the first call.
class UnboundImports {
public:
    UnboundImports() {
        const auto header = at<IMAGE_NT_HEADERS>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
        const auto& where = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT];
        for (auto d = at<ImgDelayDescr>(where.VirtualAddress); d->rvaDLLName != 0; ++d) remember(*d);
    }
    ~UnboundImports() {
        for (const auto& [slot, value] : slots_) *slot = value;
    }
    UnboundImports(const UnboundImports&) = delete;
    UnboundImports& operator=(const UnboundImports&) = delete;

private:
    template <typename T>
    static T* at(DWORD rva) {
        return reinterpret_cast<T*>(reinterpret_cast<char*>(GetModuleHandleA(nullptr)) + rva);
    }
    void remember(const ImgDelayDescr& descriptor) {
        keep(at<void*>(descriptor.rvaHmod));
        auto name = at<const IMAGE_THUNK_DATA>(descriptor.rvaINT);
        for (auto slot = at<void*>(descriptor.rvaIAT); name->u1.AddressOfData != 0; ++slot, ++name)
            keep(slot);
    }
    void keep(void** slot) { slots_.emplace_back(slot, *slot); }

    std::vector<std::pair<void**, void*>> slots_;
};

bool ends_with(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

class DelayLoad : public testing::Test {
protected:
    DelayLoad() {
        loading_.answer([this](const char* path, HANDLE, DWORD) { return load(path); });
    }

    // The system folder holds no probe: the one beside the program stands in for it.
    HMODULE load(const std::string& path) {
        paths_.push_back(path);
        // A load may use every register that a callee need not keep.
        asm volatile(
            "xorps %%xmm0, %%xmm0\n xorps %%xmm1, %%xmm1\n xorps %%xmm2, %%xmm2\n xorps %%xmm3, %%xmm3" ::
                : "xmm0", "xmm1", "xmm2", "xmm3");
        if (!ends_with(path, "\\delay_probe.dll") && !ends_with(path, "\\race_probe.dll")) return nullptr;
        return loading_.real("frame_probe.dll", nullptr, 0);
    }
    static std::string system_path(const std::string& name) {
        char folder[MAX_PATH];
        GetSystemDirectoryA(folder, MAX_PATH);
        return std::string(folder) + "\\" + name;
    }

    std::vector<std::string> paths_;
    support::CallPatch<decltype(LoadLibraryExA)> loading_{"LoadLibraryExA", LoadLibraryExA};
    support::CallPatch<decltype(GetProcAddress)> looking_up_{"GetProcAddress", GetProcAddress};

private:
    UnboundImports unbound_;
};
using Paths = std::vector<std::string>;

}  // namespace

TEST_F(DelayLoad, TakesTheDllFromTheSystemFolderByItsFullPath) {
    EXPECT_EQ(probe_add(2, 3), 5);
    EXPECT_EQ(paths_, Paths{system_path("delay_probe.dll")});
    const auto [path, file, flags] = loading_.calls().at(0);
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(flags, static_cast<DWORD>(LOAD_WITH_ALTERED_SEARCH_PATH));
}

TEST_F(DelayLoad, TheFirstCallKeepsIntegerAndFloatArguments) {
    EXPECT_EQ(probe_mix(0.5, 2, 0.25F, 4, 0.125), 0.5 + 20 + 25 + 4000 + 1250);
    EXPECT_EQ(probe_mix(1.5, 3, 0.5F, 5, 0.25), 1.5 + 30 + 50 + 5000 + 2500);
    EXPECT_EQ(looking_up_.count(), 1u);
}

TEST_F(DelayLoad, TheFirstCallKeepsFloatsInTheOtherPlacesToo) {
    EXPECT_EQ(probe_turned(1, 0.5, 3, 0.25F), 1 + 5 + 300 + 250);
}

TEST_F(DelayLoad, ADllIsLoadedOnceAndAFunctionLookedUpOnce) {
    for (int round = 0; round < 3; ++round) EXPECT_EQ(probe_add(round, 1), round + 1);
    EXPECT_EQ(paths_.size(), 1u);
    EXPECT_EQ(looking_up_.count(), 1u);
    probe_last_error();
    EXPECT_EQ(paths_.size(), 1u);
    EXPECT_EQ(looking_up_.count(), 2u);
}

TEST_F(DelayLoad, BindingKeepsTheLastError) {
    loading_.answer([this](const char* path, HANDLE, DWORD) {
        const HMODULE module = load(path);
        SetLastError(5);
        return module;
    });
    SetLastError(77);
    EXPECT_EQ(probe_last_error(), 77u);
}

TEST_F(DelayLoad, AMissingDllGivesTheFailureAnswer) {
    SetLastError(0);
    EXPECT_EQ(absent_probe(1), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));
    EXPECT_EQ(paths_, Paths{system_path("absent_probe.dll")});
    EXPECT_EQ(looking_up_.count(), 0u);
}

TEST_F(DelayLoad, AMissingFunctionGivesTheFailureAnswer) {
    SetLastError(0);
    EXPECT_EQ(probe_missing(1), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));
    EXPECT_STREQ(std::get<1>(looking_up_.calls().at(0)), "probe_missing");
}

TEST_F(DelayLoad, AFailureIsNotRemembered) {
    loading_.fail_nth(1, HMODULE{nullptr});
    EXPECT_EQ(probe_add(2, 3), 0);
    EXPECT_EQ(probe_add(2, 3), 5);
    EXPECT_EQ(loading_.count(), 2u);
    EXPECT_EQ(probe_missing(1), 0);
    EXPECT_EQ(probe_missing(1), 0);
    EXPECT_EQ(looking_up_.count(), 3u);
}

TEST_F(DelayLoad, WithoutASystemFolderNothingIsLoaded) {
    const struct {
        const char* label;
        std::string folder;
    } rows[] = {{"not told", ""}, {"too long for the name", "C:\\" + std::string(243, 'w')}};
    support::CallPatch<decltype(GetSystemDirectoryA)> folder("GetSystemDirectoryA", GetSystemDirectoryA);
    for (const auto& row : rows) {
        folder.answer([&](char* buffer, UINT) {
            memcpy(buffer, row.folder.c_str(), row.folder.size() + 1);
            return static_cast<UINT>(row.folder.size());
        });
        EXPECT_EQ(probe_add(2, 3), 0) << row.label;
        EXPECT_EQ(loading_.count(), 0u) << row.label;
    }
}

TEST_F(DelayLoad, ThePathMayTake259Bytes) {
    const std::string folder = "C:\\" + std::string(259 - strlen("C:\\\\delay_probe.dll"), 'w');
    support::CallPatch<decltype(GetSystemDirectoryA)> query("GetSystemDirectoryA", GetSystemDirectoryA);
    query.answer([&](char* buffer, UINT) {
        memcpy(buffer, folder.c_str(), folder.size() + 1);
        return static_cast<UINT>(folder.size());
    });
    EXPECT_EQ(probe_add(2, 3), 5);
    EXPECT_EQ(paths_, Paths{folder + "\\delay_probe.dll"});
    EXPECT_EQ(paths_.at(0).size(), 259u);
}

// Two threads that make the first call at once: here the second one's whole call runs inside the
// first one's load.
TEST_F(DelayLoad, ALoserOfTheRaceGivesItsReferenceBack) {
    support::CallPatch<decltype(FreeLibrary)> freeing("FreeLibrary", FreeLibrary);
    bool nested = false;
    loading_.answer([&](const char* path, HANDLE, DWORD) {
        if (!nested) {
            nested = true;
            EXPECT_EQ(race_probe_add(2, 3), 5);
        }
        return load(path);
    });
    EXPECT_EQ(race_probe_add(4, 5), 9);
    EXPECT_EQ(loading_.count(), 2u);
    EXPECT_EQ(freeing.count(), 1u);
    EXPECT_EQ(std::get<0>(freeing.calls().at(0)), GetModuleHandleA("frame_probe.dll"));
}
