#include "image.h"

#include "image_facts.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

Json or_null(const char* text) { return text == nullptr ? Json(nullptr) : Json(text); }

Json told(const std::wstring& path, const ImageFacts& image) {
    return {{"file", utf8(path)},
            {"format", or_null(image.format)},
            {"width", image.width},
            {"height", image.height},
            {"size", image.file_size}};
}

}  // namespace

std::wstring existing_file(const std::string& file) {
    std::wstring path = full_path(wide(file));
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw NotFound("no file " + file);
    }
    return path;
}

Answer ask_image(const ImageRequest& request) {
    const std::wstring path = existing_file(request.file);
    const auto image = image_facts(path);
    if (!image) throw NotFound(request.file + " is no picture that Windows can read");
    return {told(path, *image), kYes};
}

void print_image(const Json& facts) {
    printf("%s: %s, %s x %s pixels, %s bytes\n", shown(facts, "file").c_str(), shown(facts, "format").c_str(),
           shown(facts, "width").c_str(), shown(facts, "height").c_str(), shown(facts, "size").c_str());
}

Answer ask_thumbnail(const ImageRequest& request) {
    const std::wstring path = existing_file(request.file);
    const std::wstring thumbnail = full_path(wide(request.thumbnail));
    if (!make_thumbnail(path, thumbnail)) {
        throw NotFound("cannot make a thumbnail of " + request.file + " as " + request.thumbnail);
    }
    Json facts = told(thumbnail, image_facts(thumbnail).value_or(ImageFacts()));
    facts["source"] = utf8(path);
    return {std::move(facts), kYes};
}

void print_thumbnail(const Json& facts) {
    printf("%s -> ", shown(facts, "source").c_str());
    print_image(facts);
}

}  // namespace programs
