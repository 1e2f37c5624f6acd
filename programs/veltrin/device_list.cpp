#include "device_list.h"

#include "resources.h"

namespace veltrin {
namespace {

constexpr int kIconSize = 32;

std::vector<ListColumn> columns() {
    return {{IDS_COLUMN_DEVICE, 260},
            {IDS_COLUMN_KIND, 170},
            {IDS_COLUMN_STATUS, 170},
            {IDS_COLUMN_ADDRESS, 130}};
}

}  // namespace

DeviceList::DeviceList(HWND parent) : view_(parent, IDW_DEVICES, columns(), kIconSize) {}

void DeviceList::refresh() {
    rows_ = device_rows();
    std::vector<ListRow> shown;
    for (const DeviceRow& row : rows_) {
        shown.push_back({row.handle, row.icon, {row.name, row.kind, row.status, row.address}});
    }
    view_.show(shown);
}

const DeviceRow* DeviceList::find(BtHandle device) const {
    for (const DeviceRow& row : rows_) {
        if (row.handle == device) return &row;
    }
    return nullptr;
}

}  // namespace veltrin
