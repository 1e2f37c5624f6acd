#include "support/suite_checks.h"

#include "support/allowed_leaks.h"
#include "support/sdk_log.h"

#include "VlSim.h"
#include "VlTraceLog.h"

#include <string.h>

namespace support {
namespace {

using Reader = uint32_t (*)(uint32_t, char*, uint32_t);

std::vector<std::string> read_all(uint32_t count, Reader reader) {
    std::vector<std::string> lines;
    for (uint32_t i = 0; i < count; ++i) {
        char text[512] = "";
        reader(i, text, sizeof text);
        lines.emplace_back(text);
    }
    return lines;
}

std::string told(const std::string& headline, const std::vector<std::string>& lines) {
    if (lines.empty()) return "";
    std::string text = headline;
    for (const std::string& line : lines) text += "\n  " + line;
    return text;
}

std::vector<std::string> live_in_stack(VlSimResource resource) {
    return std::vector<std::string>(VlSim_LiveCount(resource), "(the stack's call log tells which)");
}

// Starts what the checks compare with; answers the module whose memory is watched.
HMODULE start_clean(HMODULE module) {
    warm_up_process();
    VlSim_Reset();
    VlTraceLog_Enable(1);
    return module == GetModuleHandleA(nullptr) ? nullptr : module;
}

}  // namespace

SuiteChecks::SuiteChecks(HMODULE module) : blocks_(start_clean(module)) {}

SuiteChecks::~SuiteChecks() { VlTraceLog_Enable(0); }

bool SuiteChecks::allow(const char* name, size_t times) {
    bool known = false;
    for (const AllowedLeak& row : kAllowedLeaks) {
        if (strcmp(row.name, name) != 0) continue;
        allowed_[static_cast<size_t>(row.kind)] += row.count * times;
        known = true;
    }
    return known;
}

std::vector<std::string> SuiteChecks::found(LeakKind kind) const {
    switch (kind) {
        case LeakKind::kHandle:
            return handles_.describe();
        case LeakKind::kWindow:
            return windows_.describe();
        case LeakKind::kTraceScope:
            return read_all(VlTraceLog_OpenScopes(), VlTraceLog_GetOpenScope);
        case LeakKind::kSdkEnumeration:
            return live_in_stack(VLSIM_ENUMERATIONS);
        case LeakKind::kSdkBlock:
            return live_in_stack(VLSIM_BLOCKS);
        case LeakKind::kSdkKey:
            return live_in_stack(VLSIM_KEYS);
        case LeakKind::kSdkFile:
            return live_in_stack(VLSIM_FILES);
        default:
            return blocks_.describe(kind);
    }
}

std::string SuiteChecks::leaks(LeakKind kind) const {
    const std::vector<std::string> lines = found(kind);
    const size_t allowed = allowed_[static_cast<size_t>(kind)];
    if (lines.size() == allowed) return "";
    return "leaked " + std::to_string(lines.size()) + " x " + leak_kind_name(kind) + ", " +
           std::to_string(allowed) + " allowed" + told("", lines);
}

std::string SuiteChecks::wrong_frees() const {
    const size_t count = blocks_.wrong_frees();
    return count == 0 ? "" : "freed " + std::to_string(count) + " x a heap block that was not live";
}

std::string SuiteChecks::unbalanced_scopes() const {
    return told("unbalanced trace scopes:", read_all(VlTraceLog_Unbalanced(), VlTraceLog_GetReport));
}

std::string SuiteChecks::sdk_misuse() const { return told("misuse of the stack:", support::sdk_misuse()); }

std::vector<std::string> SuiteChecks::failures() const {
    std::vector<std::string> texts = {sdk_misuse(), unbalanced_scopes(), wrong_frees()};
    for (size_t kind = 0; kind < static_cast<size_t>(LeakKind::kCount); ++kind) {
        texts.push_back(leaks(static_cast<LeakKind>(kind)));
    }
    std::erase(texts, "");
    return texts;
}

void SuiteChecks::clean_up() {
    for (size_t kind = 0; kind < static_cast<size_t>(LeakKind::kCount); ++kind) {
        blocks_.release_all(static_cast<LeakKind>(kind));
    }
    for (HANDLE handle : handles_.opened()) CloseHandle(handle);
    VlSim_Reset();
}

}  // namespace support
