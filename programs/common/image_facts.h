// Pictures as the library tells them, by any path: names beyond the ANSI code page go by their short form.
#pragma once

#include <stdint.h>

#include <optional>
#include <string>

namespace programs {

struct ImageFacts {
    uint32_t width = 0, height = 0;
    uint32_t file_size = 0;
    const char* format = nullptr;  // "JPEG"; null: another one that Windows can read
};

// None when the file is no picture that Windows can read.
[[nodiscard]] std::optional<ImageFacts> image_facts(const std::wstring& path);
// "JPEG, 1024 x 768 pixels, 40874 bytes"
[[nodiscard]] std::string described(const ImageFacts& image);

// Makes a thumbnail of the picture; an existing file is replaced only when that worked.
[[nodiscard]] bool make_thumbnail(const std::wstring& picture, const std::wstring& thumbnail);

// A file's path for calls in the ANSI code page; empty when it has none.
[[nodiscard]] std::string ansi_path(const std::wstring& path);

}  // namespace programs
