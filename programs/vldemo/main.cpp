// vldemo.exe: the library's main job on the command line. Exit code 0: everything went well; 1: something
// differs or failed; 2: unknown device; another: wrong arguments.
#include "VlSim.h"
#include "agent.h"
#include "arguments.h"
#include "devices.h"
#include "neighbourhood.h"
#include "send.h"
#include "text.h"

#include <stdio.h>
#include <CLI/CLI.hpp>

using namespace programs;

namespace {

struct SendOptions {
    std::string address;
    std::vector<std::string> files;
    std::string way = "push";
    unsigned timeout_s = 60;
};

int send(const SendOptions& options) {
    const BtHandle device = find_device(options.address);
    if (device == 0) {
        fprintf(stderr, "no device %s\n", options.address.c_str());
        return 2;
    }
    constexpr DWORD kMilliseconds = 1000;
    const SendOrder order = {device, find_send_way(options.way), options.timeout_s * kMilliseconds};
    std::vector<std::wstring> files;
    for (const std::string& file : options.files) files.push_back(wide(file));
    if (start_agent() != 0) return 1;
    return send_files(order, files) == 0 ? 0 : 1;
}

int reset() {
    const uint32_t status = VlSim_Reset();
    if (status != 0) fprintf(stderr, "cannot reset the simulated stack: %u\n", static_cast<unsigned>(status));
    return status == 0 ? 0 : 1;
}

void add_send(CLI::App* app, SendOptions* options, int* result) {
    CLI::App* sending =
        app->add_subcommand("send", "Send files, one hand-off each, and compare what arrives");
    sending->add_option("ADDRESS", options->address, "Address (00:11:22:33:44:55) or name of the device")
        ->required();
    sending->add_option("FILE", options->files, "Files to send")->required();
    sending->add_option("--via", options->way, "push, ftp or print")
        ->check(CLI::IsMember({"push", "ftp", "print"}))
        ->capture_default_str();
    sending->add_option("--timeout", options->timeout_s, "Seconds that a file may take")
        ->capture_default_str();
    sending->callback([options, result] { *result = send(*options); });
}

struct Command {
    const char* name;
    const char* text;
    int (*action)();
};
constexpr Command kCommands[] = {
    {"install", "Enter this program's folder as the suite's installation folder", install_here},
    {"reset", "Give the simulated stack its default neighbourhood", reset},
    {"neighbourhood", "Show the devices around and their services", show_neighbourhood},
    {"start", "Start the tray agent", start_agent},
    {"stop", "Close the tray agent", stop_agent},
};

int run() {
    CLI::App app("Sends files to a simulated Bluetooth device through VlCommon.dll");
    app.require_subcommand(1);
    int result = 0;
    for (const Command& command : kCommands) {
        app.add_subcommand(command.name, command.text)->callback([&result, &command] {
            result = command.action();
        });
    }
    SendOptions options;
    add_send(&app, &options, &result);
    try {
        app.parse(arguments_last_first());
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    }
    return result;
}

}  // namespace

int main() {
    try {
        return run();
    } catch (const std::exception& error) {
        fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
