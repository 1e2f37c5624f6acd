// The fixture of the image tests: GDI+ is watched; pictures that another program made; a folder of its own.
#pragma once

#include "gdiplus_watch.h"
#include "support/suite_test.h"

#include <optional>

class ImageTest : public support::SuiteTest {
public:
    ~ImageTest() override;

protected:
    ImageTest();

    GdiPlusWatch& gdiplus() { return *gdiplus_; }

    // A picture by its file name (make_pictures.py); the path is plain ASCII.
    [[nodiscard]] static std::string picture(const std::string& name) { return PICTURES + name; }
    // A copy of a picture in the test's folder, under any name.
    [[nodiscard]] std::wstring copy_of(const std::string& name, const std::wstring& file) const;
    // The folder, with a closing backslash; relative to the current one. Removed at the end.
    [[nodiscard]] static std::wstring folder() { return L"image_test\\"; }

private:
    std::optional<GdiPlusWatch> gdiplus_;
};

[[nodiscard]] std::string utf8(const std::wstring& text);
[[nodiscard]] std::string ansi(const std::wstring& text);

// A file name that the code page of this run can spell; its narrow form is no UTF-8.
[[nodiscard]] std::wstring national_name(const std::wstring& extension);

// The length of a file; fails the test when there is none.
[[nodiscard]] uint64_t length_of(const std::string& path);
