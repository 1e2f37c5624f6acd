#include "send.h"

#include "file_hash.h"
#include "file_watch.h"
#include "inbox.h"
#include "steps.h"
#include "text.h"

#include <stdio.h>

#include <algorithm>
#include <set>

namespace programs {
namespace {

using Names = std::set<std::wstring>;

struct FindTraits {
    using value = HANDLE;
    static HANDLE none() { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE find) { FindClose(find); }
};

Names files_in(const std::wstring& folder) {
    Names names;
    WIN32_FIND_DATAW entry;
    const vl::Unique<FindTraits> find(FindFirstFileW((folder + L"\\*").c_str(), &entry));
    if (!find) return names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.insert(entry.cFileName);
    } while (FindNextFileW(find.get(), &entry));
    return names;
}

// `name` itself, or with the number that a taken name gets: "a (2).txt" for "a.txt".
bool is_name_of(const std::wstring& candidate, const std::wstring& name) {
    if (candidate == name) return true;
    const std::wstring stem = name.substr(0, name.find_last_of(L'.')) + L" (";
    return candidate.compare(0, stem.size(), stem) == 0;
}

// The file that came to the inbox under `name` since `before`; empty when there is none.
std::wstring newcomer(const std::wstring& inbox, const Names& before, const std::wstring& name) {
    for (const std::wstring& candidate : files_in(inbox)) {
        if (before.count(candidate) != 0 || !is_name_of(candidate, name)) continue;
        return std::wstring(inbox).append(L"\\").append(candidate);
    }
    return {};
}

// Whether the library returned success and the agent took the list.
bool hand_over(const SendOrder& order, const std::string& path, Steps* steps) {
    const SendList list(order.way->service_class, {path});
    steps->tell("list prepared: 1 record, class " + hex(order.way->service_class, 4) + " (" +
                order.way->title + "), " + path);
    HandoffWatch watch(steps);
    const uint32_t status = VlCm_SendFilestoBtDevice(list.from(0), order.device, 0, 0);
    const bool taken = watch.taken();
    steps->tell("returned " + std::to_string(status));
    return status == VLCM_OK && taken;
}

bool same_content(const std::wstring& source, const std::wstring& arrived, Steps* steps) {
    const std::string sent = sha256_of_file(source);
    const std::string received = sha256_of_file(arrived);
    steps->tell("sha256 sent     " + sent);
    steps->tell("sha256 received " + received);
    return !sent.empty() && sent == received;
}

bool send_file(const SendOrder& order, const std::wstring& source) {
    printf("%s by %s\n", utf8(source).c_str(), order.way->title);
    Steps steps;
    const std::string path = record_path(source);
    if (path.empty()) return steps.tell("path too long"), false;
    const std::wstring inbox = inbox_folder(order.device);
    const Names before = files_in(inbox);
    if (!hand_over(order, path, &steps)) return false;
    // The agent sees the path of the record, which is the short form of a long one.
    const std::wstring name = file_name(wide(path));
    std::wstring arrived;
    const bool came = wait_in_folder(inbox, order.timeout_ms, [&] {
        arrived = newcomer(inbox, before, name);
        return !arrived.empty();
    });
    if (!came) return steps.tell("did not arrive"), false;
    steps.tell("arrived: " + utf8(arrived));
    return same_content(source, arrived, &steps);
}

}  // namespace

int send_files(const SendOrder& order, const std::vector<std::wstring>& files) {
    int failed = 0;
    for (const std::wstring& file : files) {
        const bool good = send_file(order, full_path(file));
        printf("  %s\n", good ? "same" : "FAILED");
        failed += good ? 0 : 1;
    }
    return failed;
}

}  // namespace programs
