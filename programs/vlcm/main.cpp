// vlcm.exe: the Bluetooth neighbourhood on the command line, as VlCommon.dll tells it.
#include "arguments.h"
#include "commands.h"
#include "image.h"
#include "model.h"
#include "printers.h"
#include "sendto.h"
#include "sms.h"

#include <windows.h>

#include <stdio.h>

#include <CLI/CLI.hpp>

#include <functional>

using namespace programs;

namespace {

constexpr char kFooter[] = R"(
Examples:
  vlcm show
  vlcm show --all --json
  vlcm device A4:C1:38:2D:5E:01
  vlcm connectable "Lena's phone"
  vlcm item show "Bluetooth Devices.lnk"
  vlcm item show --of "Lena's phone" --place messages --json
  vlcm send "Lena's phone" letter.txt photo.jpg --via ftp
  vlcm sms "Lena's phone" --to "+49 30 1234567" "See you at eight"
  vlcm model set "Lena's phone" --manufacturer Norvik --model N740
  vlcm model match "Lena's phone"
  vlcm contact export contact.json fang.vcf
  vlcm printers list
  vlcm printers purge --yes
  vlcm sendto sync "Lena's phone"
  vlcm sendto list
  vlcm file describe photo.jpg --size 123456 --time 2011-03-14T15:09:26
  vlcm image info photo.jpg
  vlcm image thumb photo.jpg thumbnail.jpg
  vlcm attachment letter.txt

Exit codes:
  0  the answer is yes, or everything was found and done
  1  the answer is no: no such device or file, no free port, nothing to connect,
     not all files handed over
  2  wrong usage

Output is UTF-8. ADDRESS is an address as "vlcm show" tells it, or a device's name.)";

struct Options {
    bool json = false;
    bool all = false;
    std::string address;
    Sending sending;
    ModelRequest model;
    MessageRequest message;
    ContactExport contact;
    ItemSource item;
    bool confirmed = false;
    SendToRequest send_to;
    FileDescription file;
    ImageRequest image;
};

using Ask = std::function<Answer(const Options&)>;
using Print = void (*)(const Json&);

ExitCode answer(const Options& options, const Ask& ask, Print print) {
    const Answer given = ask(options);
    if (options.json) {
        printf("%s\n", given.facts.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
    } else {
        print(given.facts);
    }
    return given.exit_code;
}

class CommandLine {
public:
    CommandLine() {
        app_.require_subcommand(1);
        app_.footer(kFooter);
        add_neighbourhood();
        add_device_queries();
        add_send();
        add_models();
        add_sms();
        add_contact();
        add_items();
        add_printers();
        add_send_to();
        add_file();
        add_images();
    }

    int run() {
        try {
            app_.parse(arguments_last_first());
        } catch (const CLI::ParseError& error) {
            return app_.exit(error) == 0 ? kYes : kUsage;
        }
        return result_;
    }

private:
    CLI::App* add(const char* name, const char* text, const Ask& ask, Print print) {
        return add_to(app_, name, text, ask, print);
    }
    CLI::App* add_to(CLI::App& parent, const char* name, const char* text, const Ask& ask, Print print) {
        CLI::App* command = parent.add_subcommand(name, text);
        command->add_flag("--json", options_.json, "Answer as JSON");
        command->callback([this, ask, print] { result_ = answer(options_, ask, print); });
        return command;
    }
    void add_neighbourhood() {
        add(
            "show", "Adapter, services, devices and shortcuts, as the user interface shows them",
            [](const Options& given) { return ask_show(given.all); }, print_show)
            ->add_flag("--all", options_.all, "Hidden ones too");
        add(
            "ports", "COM ports: which are taken, by whom, and the next free one",
            [](const Options&) { return ask_ports(); }, print_ports);
        add(
            "catalogue", "Service and device classes that the library knows",
            [](const Options&) { return ask_catalogue(); }, print_catalogue);
        add(
            "settings", "Every path and every switch, with the key that it comes from",
            [](const Options&) { return ask_settings(); }, print_settings);
    }
    void add_device_queries() {
        add_address(add(
            "device", "Everything about one device",
            [](const Options& given) { return ask_device(given.address); }, print_device));
        add_address(add(
            "connectable",
            "Which shortcut a device's audio and network use, and whether A2DP is forbidden. A "
            "device that asks for it gets shortcuts for its services",
            [](const Options& given) { return ask_connectable(given.address); }, print_connectable));
    }
    void add_address(CLI::App* command) {
        command->add_option("ADDRESS", options_.address, "Address or name of the device")->required();
    }
    void add_send() {
        Sending& sending = options_.sending;
        sending.way = "push";
        CLI::App* command = add(
            "send", "Hand files to the tray agent, which sends them",
            [](const Options& given) { return ask_send(given.sending); }, print_send);
        command->add_option("ADDRESS", sending.device, "Address or name of the device")->required();
        command->add_option("FILE", sending.files, "Files to send")->required();
        command->add_option("--via", sending.way, "How")
            ->check(CLI::IsMember({"push", "ftp", "print"}))
            ->capture_default_str();
    }
    void add_models() {
        CLI::App* models = app_.add_subcommand("model", "Which model a phone is");
        models->require_subcommand(1);
        const auto ask = [](Answer (*rule)(const ModelRequest&)) -> Ask {
            return [rule](const Options& given) { return rule(given.model); };
        };
        const char* address = "Address of the phone, or name of a known one";
        std::string& phone = options_.model.address;
        add_to(*models, "get", "The model that is kept for a phone", ask(ask_model), print_model)
            ->add_option("ADDRESS", phone, address)
            ->required();
        CLI::App* set = add_to(*models, "set", "Keep a phone's model", ask(set_model), print_model);
        set->add_option("ADDRESS", phone, address)->required();
        add_model_names(set, true);
        add_to(*models, "delete", "Forget a phone's model", ask(delete_model), print_model)
            ->add_option("ADDRESS", phone, address)
            ->required();
        CLI::App* match =
            add_to(*models, "match", "Whether the mobile SDK knows a phone's model, or the one that is named",
                   ask(match_model), print_match);
        match->add_option("ADDRESS", phone, address);
        add_model_names(match, false);
    }
    void add_model_names(CLI::App* command, bool modules) {
        ModelRequest& model = options_.model;
        command->add_option("--manufacturer", model.manufacturer, "Manufacturer")->required(modules);
        command->add_option("--model", model.model, "Model name");
        command->add_option("--alternative", model.alternative, "Another name of the model");
        if (!modules) return;
        command->add_option("--base", model.base, "Base module; its file name is kept");
        command->add_option("--plug", model.plug, "Plug-in module; its file name is kept");
    }
    void add_sms() {
        MessageRequest& message = options_.message;
        CLI::App* command = add(
            "sms", "Hand a text message to the message editor",
            [](const Options& given) { return ask_sms(given.message); }, print_sms);
        command->add_option("ADDRESS", message.device, "Address or name of the phone")->required();
        command->add_option("TEXT", message.text, "The message")->required();
        command->add_option("--to", message.number, "Number to send it to")->required();
    }
    void add_printers() {
        CLI::App* printers = app_.add_subcommand("printers", "Printers on Bluetooth ports, and their jobs");
        printers->require_subcommand(1);
        add_to(
            *printers, "list", "The spooler's printers, and which device each belongs to",
            [](const Options&) { return ask_printers(); }, print_printers);
        add_to(
            *printers, "record", "The record that is kept for a device's printer",
            [](const Options& given) { return ask_printer_record(given.address); }, print_printer_record)
            ->add_option("ADDRESS", options_.address, "Address of the printer, or name of a known one")
            ->required();
        add_to(
            *printers, "busy", "Whether a printer on a Bluetooth port has jobs",
            [](const Options&) { return ask_printers_busy(); }, print_printers_busy);
        add_to(
            *printers, "purge", "Cancel all jobs on Bluetooth ports, and wait until they are gone",
            [](const Options& given) { return purge_printers(given.confirmed); }, print_purge)
            ->add_flag("--yes", options_.confirmed, "Do not ask");
    }

    void add_contact() {
        CLI::App* contacts = app_.add_subcommand("contact", "Contacts of a phone");
        contacts->require_subcommand(1);
        CLI::App* command = add_to(
            *contacts, "export", "Write a vCard of a contact",
            [](const Options& given) { return ask_contact_export(given.contact); }, print_contact_export);
        command->add_option("DETAILS", options_.contact.details, "File with the contact's details")
            ->required();
        command->add_option("CARD", options_.contact.card, "vCard file to write")->required();
    }
    void add_items() {
        ItemSource& item = options_.item;
        item.place = "files";
        CLI::App* items = app_.add_subcommand("item", "Item lists of the shell namespace");
        items->require_subcommand(1);
        CLI::App* command = add_to(
            *items, "show", "What an item list holds, item by item",
            [](const Options& given) { return ask_item_show(given.item); }, print_item_show);
        CLI::App* what = command->add_option_group("what")->require_option(1);
        what->add_option("LIST", item.list, "File of the list's bytes, shell link, or hexadecimal digits");
        what->add_option("--of", item.device, "Address or name of the device whose place it is");
        command->add_option("--place", item.place, "Which place of the device")
            ->check(CLI::IsMember({"files", "phonebook", "messages"}))
            ->capture_default_str();
    }
    void add_file() {
        CLI::App* file = app_.add_subcommand("file", "Files of a remote device, known by name alone");
        file->require_subcommand(1);
        add_file_options(add_to(
            *file, "describe", "What the library says of a file: kind, size, time, icon",
            [](const Options& given) { return ask_file_describe(given.file); }, print_file_describe));
        add_file_options(add_to(
            *file, "show", "Have the tray agent show a file's property sheet",
            [](const Options& given) { return ask_file_show(given.file); }, print_file_show));
    }
    void add_file_options(CLI::App* command) {
        FileDescription& file = options_.file;
        command->add_option("NAME", file.name, "Name of the file")->required();
        command->add_option("--size", file.size, "Its size in bytes")->capture_default_str();
        command->add_option("--time", file.time, "Its time, as 2011-03-14T15:09:26")
            ->check([](const std::string& text) {
                return file_time_of(text) ? std::string() : "no time: " + text;
            });
        command->add_flag("--folder", file.folder, "It is a folder");
    }

    void add_send_to() {
        CLI::App* menu = app_.add_subcommand("sendto", "The devices in the Send-To menu");
        menu->require_subcommand(1);
        add_to(
            *menu, "list", "The links of the menu and their devices",
            [](const Options&) { return ask_send_to_links(); }, print_send_to_links);
        CLI::App* sync = add_to(
            *menu, "sync", "Compare all links with the known devices, or add or remove the link of one",
            [](const Options& given) { return sync_send_to_links(given.send_to); }, print_send_to_links);
        CLI::Option* address = sync->add_option("ADDRESS", options_.send_to.device,
                                                "Address of the device, or a known one's name");
        sync->add_flag("--remove", options_.send_to.remove, "Remove its link")->needs(address);
    }
    void add_images() {
        ImageRequest& image = options_.image;
        CLI::App* images = app_.add_subcommand("image", "Pictures");
        images->require_subcommand(1);
        CLI::App* info = add_to(
            *images, "info", "Format, dimensions and size",
            [](const Options& given) { return ask_image(given.image); }, print_image);
        info->add_option("FILE", image.file, "Picture")->required();
        CLI::App* thumb = add_to(
            *images, "thumb", "Make a JPEG file of 160 x 120 pixels",
            [](const Options& given) { return ask_thumbnail(given.image); }, print_thumbnail);
        thumb->add_option("FILE", image.file, "Picture")->required();
        thumb->add_option("THUMBNAIL", image.thumbnail, "File to write")->required();
        add(
            "attachment", "Type, size and time stamp of a file as a message tells them",
            [](const Options& given) { return ask_attachment(given.image.file); }, print_attachment)
            ->add_option("FILE", image.file, "File")
            ->required();
    }

    CLI::App app_{"The Bluetooth neighbourhood, as VlCommon.dll tells it", "vlcm"};
    Options options_;
    int result_ = kYes;
};

}  // namespace

int main() {
    SetConsoleOutputCP(CP_UTF8);
    try {
        return CommandLine().run();
    } catch (const std::exception& error) {
        fprintf(stderr, "vlcm: %s\n", error.what());
        return kNo;
    }
}
