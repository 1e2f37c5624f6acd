#include "gdiplus_watch.h"

#include <gtest/gtest.h>

#include <algorithm>

using Gdiplus::GpImage;
using Gdiplus::GpStatus;

namespace {

// Notes a call that hands something over, and passes it on.
template <typename Held>
void take(std::vector<Held>& held, GpStatus status, const Held* made) {
    if (status == Gdiplus::Ok) held.push_back(*made);
}

template <typename Held>
void give_back(std::vector<Held>& held, Held given, const char* call) {
    const auto found = std::find(held.begin(), held.end(), given);
    EXPECT_NE(found, held.end()) << call << " of what is not held";
    if (found != held.end()) held.erase(found);
}

}  // namespace

GdiPlusWatch::GdiPlusWatch() {
    watch_sessions();
    watch_images();
    watch_queries();
}

GdiPlusWatch::~GdiPlusWatch() {
    EXPECT_EQ(tokens_.size(), 0u) << "GDI+ was not shut down";
    EXPECT_EQ(images_.size(), 0u) << "images were not disposed of";
}

void GdiPlusWatch::expect_session(const char* call) const {
    EXPECT_FALSE(tokens_.empty()) << call << " outside a session";
}

void GdiPlusWatch::watch_sessions() {
    startup.answer([this](ULONG_PTR* token, const Gdiplus::GdiplusStartupInput* input,
                          Gdiplus::GdiplusStartupOutput* output) {
        EXPECT_EQ(input->GdiplusVersion, 1u);
        EXPECT_EQ(input->DebugEventCallback, nullptr);
        EXPECT_FALSE(input->SuppressBackgroundThread);  // it would need hooks that nobody calls
        EXPECT_FALSE(input->SuppressExternalCodecs);
        EXPECT_EQ(output, nullptr);
        note("GdiplusStartup");
        const GpStatus status = startup.real(token, input, output);
        take(tokens_, status, token);
        return status;
    });
    shutdown.answer([this](ULONG_PTR token) {
        note("GdiplusShutdown");
        EXPECT_TRUE(images_.empty()) << "shut down before its images are disposed of";
        give_back(tokens_, token, "GdiplusShutdown");
        shutdown.real(token);
    });
}

void GdiPlusWatch::watch_images() {
    load.answer([this](const WCHAR* path, GpImage** image) {
        expect_session("GdipLoadImageFromFile");
        note("GdipLoadImageFromFile");
        const GpStatus status = load.real(path, image);
        take(images_, status, image);
        return status;
    });
    thumbnail.answer([this](GpImage* image, UINT wide, UINT high, GpImage** made,
                            Gdiplus::GetThumbnailImageAbort abort, VOID* data) {
        expect_session("GdipGetImageThumbnail");
        note("GdipGetImageThumbnail " + std::to_string(wide) + " x " + std::to_string(high));
        EXPECT_EQ(abort, nullptr);
        EXPECT_EQ(data, nullptr);
        const GpStatus status = thumbnail.real(image, wide, high, made, abort, data);
        take(images_, status, made);
        return status;
    });
    dispose.answer([this](GpImage* image) {
        note("GdipDisposeImage");
        give_back(images_, image, "GdipDisposeImage");
        return dispose.real(image);
    });
}

void GdiPlusWatch::watch_queries() {
    raw_format.answer([this](GpImage* image, GUID* format) {
        expect_session("GdipGetImageRawFormat");
        note("GdipGetImageRawFormat");
        return raw_format.real(image, format);
    });
    width.answer([this](GpImage* image, UINT* pixels) {
        note("GdipGetImageWidth");
        return width.real(image, pixels);
    });
    height.answer([this](GpImage* image, UINT* pixels) {
        note("GdipGetImageHeight");
        return height.real(image, pixels);
    });
    encoders_size.answer([this](UINT* count, UINT* bytes) {
        expect_session("GdipGetImageEncodersSize");
        note("GdipGetImageEncodersSize");
        return encoders_size.real(count, bytes);
    });
    encoders.answer([this](UINT count, UINT bytes, Gdiplus::ImageCodecInfo* list) {
        note("GdipGetImageEncoders");
        return encoders.real(count, bytes, list);
    });
    save.answer([this](GpImage* image, const WCHAR* path, const CLSID* encoder,
                       const Gdiplus::EncoderParameters* parameters) {
        expect_session("GdipSaveImageToFile");
        note("GdipSaveImageToFile");
        EXPECT_EQ(parameters, nullptr);
        return save.real(image, path, encoder, parameters);
    });
}
