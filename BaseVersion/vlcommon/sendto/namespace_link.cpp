// The Send-To link to the suite's shell namespace.
#include "frame/unique_com.h"
#include "link_writer.h"
#include "menu.h"
#include "shell/items.h"
#include "shell/namespace_root.h"
#include "vlcm/send_to.h"

namespace vl::sendto {
namespace {

WidePath link_path() {
    const LanguageLibrary texts;
    if (!texts) return {};
    return namespace_link(wide(menu_folder().text()), FolderName(texts));
}

HRESULT create_namespace_link() {
    const WidePath path = link_path();
    if (!path) return E_FAIL;
    const ComApartment apartment;
    const shell::UniqueItemList root = shell::GetMyBtPlaceRootPidl();
    const shell::UniqueItemList target = shell::combine(root.get(), shell::send_to_item());
    if (!target) return E_FAIL;
    const LinkFile link;
    if (!link) return link.result();
    link.get()->SetIDList(target.get());
    set_namespace_icon(link);
    return link.save(path.text());
}

}  // namespace
}  // namespace vl::sendto

extern "C" HRESULT VlCm_CreateVistaSend2btShc() { return vl::sendto::create_namespace_link(); }
