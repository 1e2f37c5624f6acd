// What the tests of the simulated print spooler share.
#pragma once

#include "VlSpool.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <winspool.h>

#include <string>
#include <vector>

namespace spooler_test {

using Lines = std::vector<std::string>;

inline constexpr char kScenario[] = R"({
  "printers": [
    { "name": "Gr\u00fcn", "driver": "D", "port": "BT1:", "jobs": [
        { "id": 7, "document": "a.txt", "user": "me" }, { "id": 8, "reads": 2 } ] },
    { "name": "Second", "driver": "D", "port": "LPT1:", "processor": "P", "comment": "here" } ],
  "ports": [ { "name": "BT1:", "monitor": "M", "description": "B" }, { "name": "LPT1:" } ],
  "drivers": [ { "name": "D" }, { "name": "E" } ] })";

inline char* text(const char* constant) { return const_cast<char*>(constant); }

// A list, asked for in the usual two steps; the entries point into the block.
struct Block {
    std::vector<BYTE> bytes;
    DWORD count = 0;

    template <typename Info>
    [[nodiscard]] const Info* as() const {
        return reinterpret_cast<const Info*>(bytes.data());
    }
};

template <typename Ask>
Block list(Ask ask) {
    Block block;
    DWORD needed = 0;
    SetLastError(0);
    const BOOL sized = ask(nullptr, 0, &needed, &block.count);
    EXPECT_EQ(sized, needed == 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(sized ? ERROR_SUCCESS : ERROR_INSUFFICIENT_BUFFER));
    block.bytes.resize(needed + 1);
    if (needed != 0) {
        EXPECT_FALSE(ask(block.bytes.data(), needed - 1, &needed, &block.count)) << "one byte short";
    }
    EXPECT_TRUE(ask(block.bytes.data(), needed, &needed, &block.count));
    return block;
}

inline Block printers() {
    return list([](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
        return EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, block, size, needed, count);
    });
}

class Spooler : public ::testing::Test {
protected:
    Spooler() {
        EXPECT_EQ(VlSpool_Reset(), 0u);
        EXPECT_EQ(VlSpool_LoadScenario(kScenario), 0u);
        VlSpool_ClearLog();
    }
    ~Spooler() override {
        EXPECT_EQ(VlSpool_OpenHandles(), 0u);
        EXPECT_EQ(misuse(), Lines{});
        VlSpool_LoadScenario("{}");  // and with it the registry keys of its printers
        VlSpool_Reset();
    }
    static HANDLE open(const char* name, ACCESS_MASK access = PRINTER_ALL_ACCESS) {
        PRINTER_DEFAULTSA defaults{nullptr, nullptr, access};
        HANDLE opened = nullptr;
        EXPECT_TRUE(OpenPrinterA(text(name), &opened, &defaults)) << name;
        return opened;
    }
    static Block jobs(HANDLE printer) {
        return list([printer](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumJobsA(printer, 0, 0xFFFFFFFF, 1, block, size, needed, count);
        });
    }
    // The number of jobs as a reading of the printer tells it.
    static DWORD job_count(HANDLE printer) {
        alignas(PRINTER_INFO_2A) BYTE block[1000];
        DWORD needed = 0;
        EXPECT_TRUE(GetPrinterA(printer, 2, block, sizeof block, &needed));
        return reinterpret_cast<PRINTER_INFO_2A*>(block)->cJobs;
    }
    static Lines names() {
        const Block list = printers();
        Lines names;
        for (DWORD i = 0; i < list.count; ++i) names.emplace_back(list.as<PRINTER_INFO_2A>()[i].pPrinterName);
        return names;
    }
    static Lines misuse() {
        Lines reports;
        for (uint32_t i = 0; i < VlSpool_MisuseCount(); ++i) {
            char report[200];
            VlSpool_GetMisuse(i, report, sizeof report);
            reports.emplace_back(report);
        }
        return reports;
    }
    static Lines calls() {
        Lines made;
        for (uint32_t i = 0; i < VlSpool_CallCount(nullptr); ++i) {
            char call[200];
            VlSpool_GetCall(i, call, sizeof call);
            made.emplace_back(call);
        }
        return made;
    }
};

}  // namespace spooler_test
