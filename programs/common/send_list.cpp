#include "send_list.h"

#include "frame/bounded_text.h"
#include "text.h"

namespace programs {
namespace {

bool exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool is_absolute(const std::wstring& path) {
    const bool drive = path.size() >= 3 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
    return drive || path.rfind(L"\\\\", 0) == 0;
}

std::wstring short_form(const std::wstring& path) {
    wchar_t text[VLCM_PATH_SIZE];
    const DWORD length = GetShortPathNameW((L"\\\\?\\" + path).c_str(), text, VLCM_PATH_SIZE);
    constexpr DWORD kPrefix = 4;
    return length > kPrefix && length < VLCM_PATH_SIZE ? std::wstring(text + kPrefix, length - kPrefix)
                                                       : std::wstring();
}

}  // namespace

std::string record_path(const std::wstring& full_path) {
    std::string whole = utf8(full_path);
    if (whole.size() < VLCM_PATH_SIZE) return whole;
    std::string shorter = utf8(short_form(full_path));
    return shorter.size() < VLCM_PATH_SIZE ? shorter : std::string();
}

std::wstring path_in_record(const VlSendRecord& record) {
    const std::string text(record.path, vl::bounded_length(record.path, sizeof record.path));
    std::wstring path = wide(text);
    if (!is_utf8(text) || !exists(path)) {
        const std::wstring other = wide_from_ansi(text);
        if (!is_utf8(text) || exists(other)) path = other;
    }
    return is_absolute(path) ? path : std::wstring();
}

std::wstring file_name(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }

SendList::SendList(uint32_t service_class, const std::vector<std::string>& paths) : records_(paths.size()) {
    for (size_t i = 0; i < paths.size(); ++i) {
        records_[i].serviceClass = service_class;
        vl::copy_bounded(records_[i].path, sizeof records_[i].path, paths[i].c_str());
        records_[i].next = i + 1 < paths.size() ? &records_[i + 1] : nullptr;
    }
}

const std::vector<SendWay>& send_ways() {
    static const std::vector<SendWay> ways = {
        {"push", kObjectPush, "object push"},
        {"ftp", kFileTransfer, "file transfer"},
        {"print", kDirectPrinting, "direct printing"},
    };
    return ways;
}

const SendWay* find_send_way(const std::string& name) {
    for (const SendWay& way : send_ways()) {
        if (name == way.name) return &way;
    }
    return nullptr;
}

}  // namespace programs
