// Which encoder of the system handles a MIME type.
#include "image_test.h"
#include "support/guarded_buffer.h"
#include "support/trace_log.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class EncoderClass : public ImageTest {
protected:
    // Makes the system have these encoders, with class identifiers that tell their position.
    void offer(std::vector<std::wstring> types) {
        types_ = std::move(types);
        const UINT bytes = static_cast<UINT>(types_.size() * sizeof(Gdiplus::ImageCodecInfo));
        gdiplus().encoders_size.answer([this, bytes](UINT* count, UINT* size) {
            *count = static_cast<UINT>(types_.size());
            *size = bytes;
            return Gdiplus::Ok;
        });
        gdiplus().encoders.answer([this, bytes](UINT count, UINT size, Gdiplus::ImageCodecInfo* list) {
            EXPECT_EQ(count, types_.size());
            EXPECT_EQ(size, bytes);
            for (UINT i = 0; i < count; ++i) list[i] = described(i);
            return Gdiplus::Ok;
        });
    }
    // The place of an encoder as GDI+ itself lists it.
    [[nodiscard]] static int listed(const wchar_t* type, CLSID* encoder) {
        const vl::GdiPlusSession session;
        UINT count = 0, bytes = 0;
        Gdiplus::DllExports::GdipGetImageEncodersSize(&count, &bytes);
        const auto block = std::make_unique<char[]>(bytes);
        const auto list = reinterpret_cast<Gdiplus::ImageCodecInfo*>(block.get());
        Gdiplus::DllExports::GdipGetImageEncoders(count, bytes, list);
        for (UINT i = 0; i < count; ++i) {
            if (std::wstring(list[i].MimeType) != type) continue;
            *encoder = list[i].Clsid;
            return static_cast<int>(i);
        }
        return -1;
    }

private:
    Gdiplus::ImageCodecInfo described(UINT position) {
        Gdiplus::ImageCodecInfo info = {};
        info.MimeType = types_[position].data();
        info.Clsid.Data1 = position;
        return info;
    }

    std::vector<std::wstring> types_;
};

constexpr CLSID kUntouched = {0xCDCDCDCD, 0xCDCD, 0xCDCD, {0xCD, 0xCD, 0xCD, 0xCD, 0xCD, 0xCD, 0xCD, 0xCD}};

}  // namespace

TEST_F(EncoderClass, IsTheOneThatTheSystemListsAtThatPlace) {
    const struct {
        const char* label;
        const wchar_t* type;
    } rows[] = {{"JPEG", L"image/jpeg"},
                {"PNG", L"image/png"},
                {"GIF", L"image/gif"},
                {"BMP", L"image/bmp"},
                {"TIFF", L"image/tiff"}};
    support::for_each_row(rows, [](const auto& row) {
        CLSID expected = kUntouched;
        const int position = listed(row.type, &expected);
        ASSERT_GE(position, 0);
        const support::GuardedBuffer encoder(sizeof(CLSID));
        EXPECT_EQ(VlCm_GetEncoderClsid(row.type, encoder.as<CLSID>()), position);
        EXPECT_EQ(*encoder.as<CLSID>(), expected);
    });
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(std::size(rows), "8 GetEncoderClsid"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(EncoderClass, NeedsTheTypeExactly) {
    const struct {
        const char* label;
        const wchar_t* type;
    } rows[] = {
        {"another case", L"image/JPEG"}, {"unknown", L"image/nothing"}, {"empty", L""},
        {"longer", L"image/jpegs"},      {"shorter", L"image/jpe"},     {"blank behind", L"image/jpeg "}};
    support::for_each_row(rows, [](const auto& row) {
        CLSID encoder = kUntouched;
        EXPECT_EQ(VlCm_GetEncoderClsid(row.type, &encoder), -1);
        EXPECT_EQ(encoder, kUntouched);
    });
}

TEST_F(EncoderClass, FirstEqualOneWins) {
    offer({L"image/a", L"image/B", L"image/b", L"image/c", L"image/b"});
    CLSID encoder = kUntouched;
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/b", &encoder), 2);
    EXPECT_EQ(encoder.Data1, 2u);
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/a", &encoder), 0);
    EXPECT_EQ(encoder.Data1, 0u);
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/c", &encoder), 3);
    EXPECT_EQ(encoder.Data1, 3u);
}

TEST_F(EncoderClass, AsksForNoListOfSizeZero) {
    gdiplus().encoders_size.answer([](UINT* count, UINT* bytes) {
        *count = 3;
        *bytes = 0;
        return Gdiplus::Ok;
    });
    CLSID encoder = kUntouched;
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/jpeg", &encoder), -1);
    EXPECT_EQ(encoder, kUntouched);
    EXPECT_EQ(gdiplus().encoders.count(), 0u);
    EXPECT_EQ(blocks().allocations(), 0u);
}

TEST_F(EncoderClass, TakesOneBlockOfTheSizeThatIsAskedFor) {
    CLSID encoder;
    EXPECT_GE(VlCm_GetEncoderClsid(L"image/jpeg", &encoder), 0);
    EXPECT_EQ(blocks().allocations(), 1u);
}

TEST_F(EncoderClass, IsNotToldWithoutMemory) {
    blocks().fail_nth(1);
    CLSID encoder = kUntouched;
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/jpeg", &encoder), -1);
    EXPECT_EQ(encoder, kUntouched);
    EXPECT_EQ(gdiplus().encoders.count(), 0u);
}

TEST_F(EncoderClass, IsNotToldWhenACallFails) {
    const struct {
        const char* label;
        std::function<void(GdiPlusWatch&)> fail;
    } rows[] = {
        {"start", [](GdiPlusWatch& watch) { watch.startup.fail_from(1, Gdiplus::GenericError); }},
        {"size", [](GdiPlusWatch& watch) { watch.encoders_size.fail_from(1, Gdiplus::GenericError); }},
        {"list", [](GdiPlusWatch& watch) { watch.encoders.fail_from(1, Gdiplus::GenericError); }},
    };
    support::for_each_row(rows, [](const auto& row) {
        GdiPlusWatch watch;
        row.fail(watch);
        CLSID encoder = kUntouched;
        EXPECT_EQ(VlCm_GetEncoderClsid(L"image/jpeg", &encoder), -1);
        EXPECT_EQ(encoder, kUntouched);
        EXPECT_EQ(watch.shutdown.count(), watch.log().empty() ? 0u : 1u);
    });
}

TEST_F(EncoderClass, IsNotTakenFromACallThatFailedAfterAll) {
    offer({L"image/a"});
    CLSID encoder = kUntouched;
    {
        support::CallPatch size("GdipGetImageEncodersSize", Gdiplus::DllExports::GdipGetImageEncodersSize);
        size.answer([&](UINT* count, UINT* bytes) { return size.real(count, bytes), Gdiplus::Win32Error; });
        EXPECT_EQ(VlCm_GetEncoderClsid(L"image/a", &encoder), -1);
        EXPECT_EQ(gdiplus().encoders.count(), 0u);
    }
    support::CallPatch list("GdipGetImageEncoders", Gdiplus::DllExports::GdipGetImageEncoders);
    list.answer([&](UINT count, UINT bytes, Gdiplus::ImageCodecInfo* encoders) {
        return list.real(count, bytes, encoders), Gdiplus::Win32Error;
    });
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/a", &encoder), -1);
    EXPECT_EQ(encoder, kUntouched);
}

TEST_F(EncoderClass, NeedsTypeAndOutput) {
    CLSID encoder = kUntouched;
    EXPECT_EQ(VlCm_GetEncoderClsid(nullptr, &encoder), -1);
    EXPECT_EQ(VlCm_GetEncoderClsid(L"image/jpeg", nullptr), -1);
    EXPECT_EQ(encoder, kUntouched);
    EXPECT_TRUE(gdiplus().log().empty());
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(2, "8 GetEncoderClsid"));
}
