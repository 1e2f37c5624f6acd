// Scopes of a slim lock.
#pragma once

#include <windows.h>

namespace locks {

class Exclusive {
public:
    explicit Exclusive(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    ~Exclusive() { ReleaseSRWLockExclusive(&lock_); }
    Exclusive(const Exclusive&) = delete;
    Exclusive& operator=(const Exclusive&) = delete;

private:
    SRWLOCK& lock_;
};

class Shared {
public:
    explicit Shared(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockShared(&lock_); }
    ~Shared() { ReleaseSRWLockShared(&lock_); }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

private:
    SRWLOCK& lock_;
};

}  // namespace locks
