#include "namespace_root.h"

#include "frame/frame.h"
#include "frame/link_file.h"
#include "frame/settings.h"
#include "text/wide_text.h"

namespace vl::shell {

UniqueItemList GetMyBtPlaceRootPidl() {
    TraceScope scope("GetMyBtPlaceRootPidl");
    wchar_t path[kPathSize] = {};
    text::local_to_wide(path, kPathSize, settings::install_path("\\Bluetooth Devices.lnk").text());
    const ComApartment apartment;
    const LinkFile link;
    if (!link || FAILED(link.load(path))) return {};
    LPITEMIDLIST target = nullptr;
    return SUCCEEDED(link.get()->GetIDList(&target)) ? UniqueItemList(target) : UniqueItemList();
}

}  // namespace vl::shell
