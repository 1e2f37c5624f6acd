#include "image_facts.h"

#include "VlCommon.h"
#include "text.h"

#include <windows.h>

namespace programs {
namespace {

const char* format_of(unsigned char encoding) {
    switch (encoding) {
        case VLCM_IMAGE_JPEG:
            return "JPEG";
        case VLCM_IMAGE_GIF:
            return "GIF";
        case VLCM_IMAGE_PNG:
            return "PNG";
        case VLCM_IMAGE_BMP:
            return "BMP";
        default:
            return nullptr;
    }
}

// An empty file with a plain name, for the library to write.
std::wstring scratch_file() {
    wchar_t folder[MAX_PATH], path[MAX_PATH];
    if (GetTempPathW(MAX_PATH, folder) == 0) return {};
    return GetTempFileNameW(folder, L"thm", 0, path) == 0 ? std::wstring() : path;
}

}  // namespace

std::optional<ImageFacts> image_facts(const std::wstring& path) {
    VlImageProperty property = {};
    VlCm_GetImgProp(utf8(path).c_str(), &property);
    if (property.dimensions == 0) return std::nullopt;
    return ImageFacts{property.dimensions >> 16, property.dimensions & 0xFFFF, property.fileSize,
                      format_of(property.encoding)};
}

std::string described(const ImageFacts& image) {
    return std::string(image.format == nullptr ? "another format" : image.format) + ", " +
           std::to_string(image.width) + " x " + std::to_string(image.height) + " pixels, " +
           std::to_string(image.file_size) + " bytes";
}

// The library reports no failure: what it wrote is looked at before it takes the place of another file.
bool make_thumbnail(const std::wstring& picture, const std::wstring& thumbnail) {
    const std::string source = ansi_path(picture);
    const std::wstring scratch = scratch_file();
    if (source.empty() || scratch.empty()) return false;
    VlCm_CreateThumbFile(source.c_str(), ansi_path(scratch).c_str());
    const bool made = image_facts(scratch) && MoveFileExW(scratch.c_str(), thumbnail.c_str(),
                                                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED);
    if (!made) DeleteFileW(scratch.c_str());
    return made;
}

std::string ansi_path(const std::wstring& path) {
    std::string whole = ansi(path);
    if (!whole.empty()) return whole;
    wchar_t shorter[MAX_PATH];
    const DWORD length = GetShortPathNameW(path.c_str(), shorter, MAX_PATH);
    return length == 0 || length >= MAX_PATH ? std::string() : ansi(shorter);
}

}  // namespace programs
