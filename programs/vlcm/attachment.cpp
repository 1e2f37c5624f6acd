#include "VlCommon.h"
#include "image.h"
#include "image_facts.h"
#include "send_list.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

Json or_null(const char* text) { return *text == 0 ? Json(nullptr) : Json(text); }

}  // namespace

Answer ask_attachment(const std::string& file) {
    const std::wstring path = existing_file(file);
    const std::string name = utf8(file_name(path));
    VlAttachmentProperty property = {};
    if (name.size() >= sizeof property.name) throw NotFound("the name is longer than 255 bytes");
    VlCm_GetAttachmentProp(ansi_path(path).c_str(), name.c_str(), &property);
    if (*property.time == 0) throw NotFound("cannot read " + file);
    return {{{"file", utf8(path)},
             {"name", property.name},
             {"type", or_null(property.mimeType)},
             {"size", property.size},
             {"time", property.time}},
            kYes};
}

// The time stamp's own mark promises another zone than it is in.
void print_attachment(const Json& facts) {
    printf("%s: %s, %s bytes, made %s (local time)\n", shown(facts, "name").c_str(),
           shown(facts, "type").c_str(), shown(facts, "size").c_str(), shown(facts, "time").c_str());
}

}  // namespace programs
