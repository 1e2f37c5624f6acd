#include "link_writer.h"

#include "menu.h"
#include "vlcm/settings.h"

namespace vl::sendto {
namespace {

void set_icon(const LinkFile& link, const char* file, uint32_t index) {
    const PathBuffer path = system_file(file);
    if (path.text()[0] != 0) link.get()->SetIconLocation(path.text(), static_cast<int>(index));
}

}  // namespace

void set_namespace_icon(const LinkFile& link) { set_icon(link, "\\vlshell.dll", 0); }

HRESULT write_link(const WidePath& path, const LinkContent& content) {
    const LinkFile link;
    if (!link) return link.result();
    link.get()->SetPath(content.target);
    link.get()->SetDescription(content.description);
    link.get()->SetArguments(content.arguments != nullptr ? content.arguments : "");
    if (content.arguments == nullptr && VlCm_IsWindowsVistaAbove()) {
        set_namespace_icon(link);
    } else {
        set_icon(link, "\\VlLangInDepRes.dll", content.icon_index);
    }
    return link.save(path.text());
}

}  // namespace vl::sendto
