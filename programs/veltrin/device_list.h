// The list of devices.
#pragma once

#include "list_view.h"
#include "rows.h"

namespace veltrin {

class DeviceList {
public:
    explicit DeviceList(HWND parent);
    [[nodiscard]] ListView& view() { return view_; }
    [[nodiscard]] const ListView& view() const { return view_; }

    // Asks for the devices and shows them.
    void refresh();
    [[nodiscard]] size_t size() const { return rows_.size(); }
    // The chosen one; null when there is none.
    [[nodiscard]] const DeviceRow* chosen() const { return find(view_.chosen_key()); }
    [[nodiscard]] const DeviceRow* find(BtHandle device) const;

private:
    ListView view_;
    std::vector<DeviceRow> rows_;
};

}  // namespace veltrin
