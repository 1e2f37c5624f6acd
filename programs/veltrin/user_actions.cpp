#include "user_actions.h"

#include "connecting.h"
#include "file_choice.h"
#include "file_sending.h"
#include "protocol.h"
#include "resources.h"
#include "text.h"
#include "texts.h"

#include <optional>
#include <utility>

namespace veltrin {
namespace {

// The row as it is now: while a dialog is open the lists may change.
std::optional<DeviceRow> copy_of(const DeviceRow* row) { return row ? std::optional(*row) : std::nullopt; }

}  // namespace

bool UserActions::can(int command) const {
    const DeviceRow* device = panes_.devices().chosen();
    switch (command) {
        case IDC_CONNECT:
            return device && !job_.busy();
        case IDC_SEND:
        case IDC_SEND_TRANSFER:
        case IDC_SEND_PRINT:
            return device && !job_.busy() && way_of(command, panes_.services().rows());
        default:
            return true;
    }
}

// By which service files go: the chosen one while its list has the keyboard, else the best one.
const programs::SendWay* UserActions::way_of(int command, const std::vector<ServiceRow>& services) const {
    if (command == IDC_SEND_TRANSFER) return offered_way(services, programs::kFileTransfer);
    if (command == IDC_SEND_PRINT) return offered_way(services, programs::kDirectPrinting);
    const ServiceRow* chosen = panes_.services_have_focus() ? panes_.services().chosen() : nullptr;
    const programs::SendWay* way = chosen ? offered_way(services, chosen->service_class) : nullptr;
    return way ? way : best_way(services);
}

void UserActions::connect() {
    if (panes_.services_have_focus()) {
        connect_chosen_service();
    } else {
        connect_chosen_device();
    }
}

void UserActions::connect_chosen_service() {
    const ServiceRow* service = panes_.services().chosen();
    if (!service) return report({text(IDS_NO_SERVICE_CHOSEN), true});
    start(text(IDS_CONNECTING, service->name), [row = *service] { return connect_service(row); });
}

void UserActions::connect_chosen_device() {
    const DeviceRow* device = panes_.devices().chosen();
    if (!device) return report({text(IDS_NO_DEVICE_CHOSEN), true});
    start(text(IDS_CONNECTING, device->name), [row = *device] { return connect_device(row); });
}

void UserActions::choose_and_send(int command) {
    const std::optional<DeviceRow> device = copy_of(panes_.devices().chosen());
    if (!device) return report({text(IDS_NO_DEVICE_CHOSEN), true});
    const programs::SendWay* way = way_of(command, panes_.services().rows());
    if (!way) return report({text(IDS_TAKES_NO_FILES, device->name), true});
    const std::vector<std::wstring> files = choose_files(window_, text(IDS_CHOOSE_FILES, device->name));
    if (!files.empty()) send(*device, way, files);
}

const DeviceRow* UserActions::device_at(POINT point) const {
    ClientToScreen(window_, &point);
    const DeviceList& devices = panes_.devices();
    const DeviceRow* under = devices.find(devices.view().key_at_point(point));
    return under ? under : devices.chosen();
}

void UserActions::send_dropped(HDROP drop) {
    const DroppedFiles dropped = take_drop(drop);
    const DeviceRow* device = device_at(dropped.point);
    if (!device) return report({text(IDS_NO_DEVICE_CHOSEN), true});
    send(*device, best_way(service_rows(device->handle)), dropped.files);
}

void UserActions::send(const DeviceRow& device, const programs::SendWay* way,
                       const std::vector<std::wstring>& files) {
    if (!way) return report({text(IDS_TAKES_NO_FILES, device.name), true});
    start(text(IDS_SENDING, device.name), [device, way, files] { return send_files(device, *way, files); });
}

void UserActions::start(const std::wstring& what, BackgroundJob::Work work) {
    if (job_.busy()) return report({text(IDS_STILL_BUSY), true});
    panes_.say(what);
    log_.line(programs::utf8(what));
    if (!job_.start(std::move(work), window_, done_)) report({text(IDS_STILL_BUSY), true});
}

void UserActions::finish() { report(job_.take_outcome()); }

void UserActions::report(const Outcome& outcome) {
    panes_.say(outcome.text);
    log_.line((outcome.failed ? "failed: " : "done: ") + programs::utf8(outcome.text));
    if (outcome.failed) MessageBeep(MB_ICONWARNING);
}

}  // namespace veltrin
