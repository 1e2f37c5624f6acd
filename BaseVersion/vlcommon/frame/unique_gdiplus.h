// Owners for GDI+: the session of one call, and what is loaded in it.
#pragma once

#include "unique.h"

#include <objbase.h>

#include <gdiplus.h>

namespace vl {

// GDI+ runs from here to the end of the scope. It counts its users, so that a session inside the
// caller's own leaves that one running. Everything made in a session ends before it.
class GdiPlusSession {
public:
    GdiPlusSession() {
        const Gdiplus::GdiplusStartupInput input(nullptr, FALSE, FALSE);
        started_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiPlusSession() {
        if (started_) Gdiplus::GdiplusShutdown(token_);
    }
    GdiPlusSession(const GdiPlusSession&) = delete;
    GdiPlusSession& operator=(const GdiPlusSession&) = delete;

    explicit operator bool() const { return started_; }

private:
    ULONG_PTR token_ = 0;
    bool started_ = false;
};

struct ImageTraits : NullIsNone<Gdiplus::GpImage*> {
    static void close(Gdiplus::GpImage* image) { Gdiplus::DllExports::GdipDisposeImage(image); }
};
using UniqueImage = Unique<ImageTraits>;

}  // namespace vl
