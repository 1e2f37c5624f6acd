// Owners for every kind of resource that the library takes: what a scope opened, its end closes.
#pragma once

#include "VlSDK.h"

#include <windows.h>

namespace vl {

// Traits: `value` (the resource's type), `none()` (what stands for no resource), `close(value)`.
template <typename Traits>
class Unique {
public:
    using value = typename Traits::value;

    Unique() = default;
    explicit Unique(value held) : held_(held) {}
    Unique(Unique&& other) noexcept : held_(other.release()) {}
    Unique& operator=(Unique&& other) noexcept {
        reset(other.release());  // onto itself: it is empty by then and takes it back
        return *this;
    }
    Unique(const Unique&) = delete;
    Unique& operator=(const Unique&) = delete;
    ~Unique() { reset(); }

    [[nodiscard]] value get() const { return held_; }
    explicit operator bool() const { return held_ != Traits::none(); }

    // Gives the resource away: the caller closes it, or leaves it open and says why.
    [[nodiscard]] value release() {
        const value held = held_;
        held_ = Traits::none();
        return held;
    }

    // Closes what is held and takes `held` instead. The thread's last error is kept: callers read
    // it after a scope has ended.
    void reset(value held = Traits::none()) {
        const value old = held_;
        held_ = held;
        if (old == Traits::none()) return;
        const DWORD last_error = GetLastError();
        Traits::close(old);
        SetLastError(last_error);
    }

    // For calls that store a new resource through a pointer; what was held is closed first.
    [[nodiscard]] value* receive() {
        reset();
        return &held_;
    }

private:
    value held_ = Traits::none();
};

template <typename T>
struct NullIsNone {
    using value = T;
    static constexpr T none() { return T{}; }
};

struct HandleTraits : NullIsNone<HANDLE> {
    static void close(HANDLE handle) { CloseHandle(handle); }
};
struct FileTraits {
    using value = HANDLE;
    static HANDLE none() { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE file) { CloseHandle(file); }
};
struct FindTraits {
    using value = HANDLE;
    static HANDLE none() { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE listing) { FindClose(listing); }
};
struct ViewTraits : NullIsNone<void*> {
    static void close(void* view) { UnmapViewOfFile(view); }
};
struct ModuleTraits : NullIsNone<HMODULE> {
    static void close(HMODULE module) { FreeLibrary(module); }
};
struct RegistryKeyTraits : NullIsNone<HKEY> {
    static void close(HKEY key) { RegCloseKey(key); }
};
struct SdkRegistryKeyTraits : NullIsNone<HKEY> {
    static void close(HKEY key) { Btsdk_RegCloseKey(key); }
};
struct SdkRegistryKey64Traits : NullIsNone<HKEY> {
    static void close(HKEY key) { Btsdk_RegCloseKeyForX64Reg(key); }
};
struct SdkFileTraits {
    using value = HANDLE;
    static HANDLE none() { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE file) { Btsdk_CloseHandle(file); }
};
struct SdkMemoryTraits : NullIsNone<void*> {
    static void close(void* block) { Btsdk_FreeMemory(block); }
};
struct LocalServerEnumTraits : NullIsNone<BtHandle> {
    static void close(BtHandle enumeration) { Btsdk_EndEnumLocalServer(enumeration); }
};
struct ConnectionEnumTraits : NullIsNone<BtHandle> {
    static void close(BtHandle enumeration) { Btsdk_EndEnumConnection(enumeration); }
};
struct RemoteServiceEnumTraits : NullIsNone<BtHandle> {
    static void close(BtHandle enumeration) { Btsdk_EndEnumRemoteService(enumeration); }
};
struct RemoteDeviceEnumTraits : NullIsNone<BtHandle> {
    static void close(BtHandle enumeration) { Btsdk_EndEnumRemoteDevice(enumeration); }
};

using UniqueHandle = Unique<HandleTraits>;
using UniqueFile = Unique<FileTraits>;
using UniqueFind = Unique<FindTraits>;  // a folder listing
using UniqueView = Unique<ViewTraits>;
using UniqueModule = Unique<ModuleTraits>;
using UniqueRegistryKey = Unique<RegistryKeyTraits>;
using UniqueSdkRegistryKey = Unique<SdkRegistryKeyTraits>;
using UniqueSdkRegistryKey64 = Unique<SdkRegistryKey64Traits>;
using UniqueSdkFile = Unique<SdkFileTraits>;
using UniqueSdkMemory = Unique<SdkMemoryTraits>;
using LocalServerEnum = Unique<LocalServerEnumTraits>;
using ConnectionEnum = Unique<ConnectionEnumTraits>;
using RemoteServiceEnum = Unique<RemoteServiceEnumTraits>;
using RemoteDeviceEnum = Unique<RemoteDeviceEnumTraits>;

}  // namespace vl
