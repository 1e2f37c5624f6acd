// What the library asks of GDI+, and whether it gives everything back: each session shut down once, each
// image disposed of once, while its session runs.
#pragma once

#include "support/call_patch.h"

#include "frame/unique_gdiplus.h"

#include <string>
#include <vector>

class GdiPlusWatch {
public:
    GdiPlusWatch();
    ~GdiPlusWatch();  // fails the test when something is left
    GdiPlusWatch(const GdiPlusWatch&) = delete;
    GdiPlusWatch& operator=(const GdiPlusWatch&) = delete;

    // The calls that did not fail, in order.
    [[nodiscard]] const std::vector<std::string>& log() const { return log_; }
    void note(const std::string& call) { log_.push_back(call); }
    // What is held now, as the library asked for it.
    [[nodiscard]] size_t held() const { return tokens_.size() + images_.size(); }

    // Each may be made to fail.
    support::CallPatch<decltype(Gdiplus::GdiplusStartup)> startup{"GdiplusStartup", Gdiplus::GdiplusStartup};
    support::CallPatch<decltype(Gdiplus::GdiplusShutdown)> shutdown{"GdiplusShutdown",
                                                                    Gdiplus::GdiplusShutdown};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipLoadImageFromFile)> load{
        "GdipLoadImageFromFile", Gdiplus::DllExports::GdipLoadImageFromFile};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipGetImageThumbnail)> thumbnail{
        "GdipGetImageThumbnail", Gdiplus::DllExports::GdipGetImageThumbnail};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipDisposeImage)> dispose{
        "GdipDisposeImage", Gdiplus::DllExports::GdipDisposeImage};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipGetImageRawFormat)> raw_format{
        "GdipGetImageRawFormat", Gdiplus::DllExports::GdipGetImageRawFormat};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipGetImageWidth)> width{
        "GdipGetImageWidth", Gdiplus::DllExports::GdipGetImageWidth};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipGetImageHeight)> height{
        "GdipGetImageHeight", Gdiplus::DllExports::GdipGetImageHeight};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipGetImageEncodersSize)> encoders_size{
        "GdipGetImageEncodersSize", Gdiplus::DllExports::GdipGetImageEncodersSize};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipGetImageEncoders)> encoders{
        "GdipGetImageEncoders", Gdiplus::DllExports::GdipGetImageEncoders};
    support::CallPatch<decltype(Gdiplus::DllExports::GdipSaveImageToFile)> save{
        "GdipSaveImageToFile", Gdiplus::DllExports::GdipSaveImageToFile};

private:
    void watch_sessions();
    void watch_images();
    void watch_queries();
    // Whether the session's calls may come now.
    void expect_session(const char* call) const;

    std::vector<std::string> log_;
    std::vector<ULONG_PTR> tokens_;
    std::vector<Gdiplus::GpImage*> images_;
};
