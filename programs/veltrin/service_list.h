// The list of one device's services.
#pragma once

#include "list_view.h"
#include "rows.h"

namespace veltrin {

class ServiceList {
public:
    explicit ServiceList(HWND parent);
    [[nodiscard]] ListView& view() { return view_; }
    [[nodiscard]] const ListView& view() const { return view_; }

    // Asks for the services of a device and shows them; 0 has none.
    void refresh(BtHandle device);
    [[nodiscard]] const std::vector<ServiceRow>& rows() const { return rows_; }
    // The chosen one; null when there is none.
    [[nodiscard]] const ServiceRow* chosen() const;

private:
    ListView view_;
    std::vector<ServiceRow> rows_;
};

}  // namespace veltrin
