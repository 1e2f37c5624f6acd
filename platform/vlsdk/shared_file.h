// One file that several processes read and replace: under a named mutex, as a whole, and with a
// counter that tells a reader without any system call whether the file changed.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace vlsim {

class SharedFile {
public:
    // The mutex and the counter are named after the folder: who uses the same folder shares them.
    SharedFile(const std::wstring& folder, const wchar_t* name);
    SharedFile(const SharedFile&) = delete;
    SharedFile& operator=(const SharedFile&) = delete;

    // Grows before the file is replaced. A reader that sees another number than at its last reading
    // takes the lock, which waits for the replacement, and reads again; so it misses nothing, even
    // when who replaced the file was killed at it.
    [[nodiscard]] LONG generation() const;

    // The right to read or replace the file; a killed owner loses it.
    class Lock {
    public:
        explicit Lock(SharedFile& file);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

        [[nodiscard]] std::optional<std::string> read() const;
        // All of it or nothing; false when the disk refuses.
        [[nodiscard]] bool replace(const std::string& content) const;
        // Puts a file that is no good out of the way, beside it under the name "<name>.broken".
        void set_aside() const;

    private:
        SharedFile& file_;
    };

private:
    std::wstring path_;
    HANDLE mutex_ = nullptr;
    HANDLE section_ = nullptr;
    volatile LONG* generation_ = nullptr;
    LONG own_generation_ = 0;  // stands in when there is no section
};

}  // namespace vlsim
