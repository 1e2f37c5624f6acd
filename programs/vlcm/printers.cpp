#include "printers.h"

#include "VlCommon.h"
#include "address.h"
#include "devices.h"
#include "spooler_lists.h"
#include "text.h"

#include <winspool.h>

#include <stdio.h>

#include <map>

namespace programs {
namespace {

std::string told(const std::string& local) { return utf8(wide_from_ansi(local)); }

// Of the devices that the stack knows: printer name -> device name.
std::map<std::string, std::string> devices_by_printer() {
    std::map<std::string, std::string> devices;
    for (const Device& device : all_devices()) {
        VlPrinterRecord printer{};
        if (!VlCm_IsPrinterInfoInSystem(device.property.address, &printer)) continue;
        devices.emplace(printer.printerName, display_name(device.property.address));
    }
    return devices;
}

Json busy_state(std::string name) {
    HANDLE printer = nullptr;
    if (!OpenPrinterA(name.data(), &printer, nullptr)) return nullptr;
    const bool busy = VlCm_IsPrinterBusy(printer) != FALSE;
    ClosePrinter(printer);
    return busy;
}

// Yes, when the answer at the keyboard begins with y.
bool confirmed_at_keyboard() {
    fprintf(stderr, "Cancel all print jobs on Bluetooth ports? [y/N] ");
    fflush(stderr);
    char answer[16] = "";
    return fgets(answer, sizeof answer, stdin) != nullptr && (answer[0] == 'y' || answer[0] == 'Y');
}

}  // namespace

Answer ask_printers() {
    const std::map<std::string, std::string> devices = devices_by_printer();
    Json printers = Json::array();
    for (const SpoolerPrinter& each : spooler_printers()) {
        const auto device = devices.find(each.name);
        printers.push_back({{"name", told(each.name)},
                            {"driver", told(each.driver)},
                            {"port", told(each.port)},
                            {"bluetooth", VlCm_IsBTPort(each.port.c_str()) != FALSE},
                            {"device", device != devices.end() ? Json(device->second) : Json(nullptr)},
                            {"jobs", each.jobs},
                            {"busy", busy_state(each.name)}});
    }
    return {{{"printers", std::move(printers)}}};
}

void print_printers(const Json& facts) {
    if (facts.at("printers").empty()) printf("the spooler has no printers\n");
    for (const Json& printer : facts.at("printers")) {
        printf("%s\n  port      %s%s\n", shown(printer, "name").c_str(), shown(printer, "port").c_str(),
               printer.at("bluetooth").get<bool>() ? " (Bluetooth)" : "");
        if (!printer.at("device").is_null()) printf("  device    %s\n", shown(printer, "device").c_str());
        printf("  driver    %s\n", shown(printer, "driver").c_str());
        printf("  jobs      %s\n", shown(printer, "jobs").c_str());
    }
}

Answer ask_printer_record(const std::string& address_or_name) {
    const Address address = address_of(address_or_name);
    VlPrinterRecord record{};
    if (!VlCm_GetMyPrinterInfo(address.data(), &record)) {
        throw NotFound("no printer is recorded for " + address_text(address.data()));
    }
    return {{{"address", address_text(address.data())},
             {"printer", told(record.printerName)},
             {"driver", told(record.driverName)},
             {"port", told(record.portName)},
             {"processor", told(record.printProcessor)}}};
}

void print_printer_record(const Json& facts) {
    for (const auto& [member, value] : facts.items()) {
        printf("%-10s %s\n", member.c_str(), shown(facts, member.c_str()).c_str());
    }
}

Answer ask_printers_busy() {
    const bool busy = VlCm_IsBtPortBusy() != FALSE;
    return {{{"busy", busy}}, busy ? kYes : kNo};
}

void print_printers_busy(const Json& facts) {
    printf("%s\n", facts.at("busy").get<bool>() ? "a printer on a Bluetooth port has jobs"
                                                : "no printer on a Bluetooth port has jobs");
}

Answer purge_printers(bool confirmed) {
    if (!confirmed && !confirmed_at_keyboard()) return {{{"confirmed", false}}, kNo};
    const bool lost = VlCm_DoCancelAllPrintJob() != FALSE;
    return {{{"confirmed", true}, {"cancelled", !lost}}, lost ? kNo : kYes};
}

void print_purge(const Json& facts) {
    if (!facts.at("confirmed").get<bool>()) {
        printf("nothing was cancelled\n");
    } else if (facts.at("cancelled").get<bool>()) {
        printf("all jobs on Bluetooth ports are gone\n");
    } else {
        printf("a printer cannot be read any more; those behind it were not handled\n");
    }
}

}  // namespace programs
