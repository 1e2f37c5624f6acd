#include "service_list.h"

#include "resources.h"

namespace veltrin {
namespace {

constexpr int kIconSize = 20;

std::vector<ListColumn> columns() {
    return {{IDS_COLUMN_SERVICE, 260}, {IDS_COLUMN_STATUS, 170}, {IDS_COLUMN_DESCRIPTION, 300}};
}

}  // namespace

ServiceList::ServiceList(HWND parent) : view_(parent, IDW_SERVICES, columns(), kIconSize) {}

void ServiceList::refresh(BtHandle device) {
    rows_ = service_rows(device);
    std::vector<ListRow> shown;
    for (const ServiceRow& row : rows_) {
        shown.push_back({row.handle, row.icon, {row.name, row.status, row.description}});
    }
    view_.show(shown);
}

const ServiceRow* ServiceList::chosen() const {
    const uint32_t key = view_.chosen_key();
    for (const ServiceRow& row : rows_) {
        if (row.handle == key) return &row;
    }
    return nullptr;
}

}  // namespace veltrin
