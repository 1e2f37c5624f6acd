#include "shared_file.h"

#include <cwctype>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vlsim {
namespace {

// FNV-1a of the folder without regard to case: kernel objects cannot carry a path in their names.
std::wstring object_name(const std::wstring& path, const wchar_t* kind) {
    uint64_t hash = 0xCBF29CE484222325;
    for (const wchar_t letter : path) hash = (hash ^ std::towlower(letter)) * 0x100000001B3;
    wchar_t name[64];
    swprintf(name, std::size(name), L"Local\\vlsim-%016llx-%ls", static_cast<unsigned long long>(hash), kind);
    return name;
}

bool write_whole(const std::wstring& path, const std::string& content) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool whole =
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) &&
        written == content.size();
    CloseHandle(file);
    return whole;
}

}  // namespace

SharedFile::SharedFile(const std::wstring& folder, const wchar_t* name)
    : path_(folder + L"\\" + name),
      mutex_(CreateMutexW(nullptr, FALSE, object_name(path_, L"mutex").c_str())) {
    section_ = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(LONG),
                                  object_name(path_, L"generation").c_str());
    void* const view =
        section_ ? MapViewOfFile(section_, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, sizeof(LONG)) : nullptr;
    generation_ = view ? static_cast<volatile LONG*>(view) : &own_generation_;
}

LONG SharedFile::generation() const { return __atomic_load_n(generation_, __ATOMIC_ACQUIRE); }

SharedFile::Lock::Lock(SharedFile& file) : file_(file) {
    WaitForSingleObject(file_.mutex_, INFINITE);  // WAIT_ABANDONED is ownership too: the file is whole
}

SharedFile::Lock::~Lock() { ReleaseMutex(file_.mutex_); }

std::optional<std::string> SharedFile::Lock::read() const {
    std::ifstream stream(std::filesystem::path(file_.path_), std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

bool SharedFile::Lock::replace(const std::string& content) const {
    const std::wstring fresh = file_.path_ + L".new";
    InterlockedIncrement(file_.generation_);
    return write_whole(fresh, content) && MoveFileExW(fresh.c_str(), file_.path_.c_str(),
                                                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

void SharedFile::Lock::set_aside() const {
    MoveFileExW(file_.path_.c_str(), (file_.path_ + L".broken").c_str(), MOVEFILE_REPLACE_EXISTING);
}

}  // namespace vlsim
