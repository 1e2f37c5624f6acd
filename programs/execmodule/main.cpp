// VlExecuteModule.exe WORD: does one thing for the library in a process of its own, and ends.
#include "arguments.h"
#include "event_log.h"
#include "handed_list.h"
#include "install_printer.h"
#include "text.h"

#include <windows.h>

using namespace programs;

namespace {

void browse_folder(const EventLog& log) {
    const std::optional<Bytes> bytes = take_item_list();
    if (!bytes) {
        log.line("no item list waiting");
        return;
    }
    const ItemList list = decode_item_list(*bytes);
    log.line("item list of " + std::to_string(bytes->size()) + " bytes" +
             (list.terminated ? "" : ", broken") + ": " + hex_digits(*bytes));
    for (const ListItem& item : list.items) log.line("item " + item_text(item));
    // The shell extension that would show the folder is another module of the suite.
    log.line("folder window opened");
}

void create_namespace_link(const EventLog& log) {
    log.line("namespace link " + hex(static_cast<uint32_t>(VlCm_CreateVistaSend2btShc())));
}

struct Command {
    const char* word;
    void (*run)(const EventLog& log);
};
constexpr Command kCommands[] = {
    {"QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER", browse_folder},
    {"QVN_VLEXECUTEMODULE_CREATESEND2BTLINK", create_namespace_link},
    {"QVN_VLEXECUTEMODULE_INSTALLPRINTER", [](const EventLog& log) { log.line(install_printer()); }},
};

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    const EventLog log;
    log.line("command " + utf8_from_narrow(arguments));
    const std::vector<std::string> words = arguments_last_first();
    for (const Command& command : kCommands) {
        if (!words.empty() && words.back() == command.word) command.run(log);
    }
    return 0;
}
