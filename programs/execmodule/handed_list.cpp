#include "handed_list.h"

#include "frame/unique.h"

#include <algorithm>

namespace programs {
namespace {

constexpr char kSection[] = "SHARE_MEM_FTPPIDL";
constexpr DWORD kReadWrite = FILE_MAP_READ | FILE_MAP_WRITE;
constexpr uint32_t kTaken = 2;

// The bytes that may be read from the view's start on.
size_t readable(const void* view) {
    MEMORY_BASIC_INFORMATION region = {};
    if (VirtualQuery(view, &region, sizeof region) == 0 || region.State != MEM_COMMIT) return 0;
    return region.Protect == PAGE_READWRITE ? region.RegionSize : 0;
}

}  // namespace

std::optional<Bytes> take_item_list() {
    const vl::UniqueHandle section(OpenFileMappingA(kReadWrite, FALSE, kSection));
    if (!section) return std::nullopt;
    const vl::UniqueView view(MapViewOfFile(section.get(), kReadWrite, 0, 0, 0));
    const size_t room = view ? readable(view.get()) : 0;
    if (room < sizeof(VlItemListHandOff)) return std::nullopt;
    const auto head = static_cast<volatile VlItemListHandOff*>(view.get());
    const size_t size = std::min<size_t>(head->listSize, room - sizeof(VlItemListHandOff));
    const uint8_t* const list = static_cast<const uint8_t*>(view.get()) + sizeof(VlItemListHandOff);
    Bytes bytes(list, list + size);
    head->state = kTaken;  // last: now the sender may go
    return bytes;
}

}  // namespace programs
