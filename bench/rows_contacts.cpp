#include "floor/floor.h"
#include "patched_imports.h"
#include "rows.h"
#include "vlcm/contacts.h"

#include <stdio.h>
#include <string.h>

#include <fstream>
#include <iterator>
#include <memory>

namespace bench {
namespace {

constexpr double kTarget = 1.05;

// What stands for a phone's details: the parser of the measured stack is left out, see read_card().
struct Details {
    char family[32];
    char number[32];
};

uint32_t read_card(const void* details, void* record) {
    const auto& given = *static_cast<const Details*>(details);
    const auto& contact = *static_cast<const VlContact*>(record);
    memcpy(contact.name->family, given.family, sizeof given.family);
    strcpy(contact.name->given, "Fang");
    strcpy(contact.organisation->company, "Acme");
    strcpy(contact.organisation->title, "Engineer");
    contact.phones[0].type = VLCM_PHONE_CELL;
    memcpy(contact.phones[0].number, given.number, sizeof given.number);
    strcpy(contact.addresses[VLCM_ADDRESS_WORK].street, "Main St 1");
    strcpy(contact.addresses[VLCM_ADDRESS_WORK].country, "USA");
    strcpy(contact.emails[0].address, "fang@example.org");
    return 0;
}

std::string content_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A contact, its file, and the lines that its card has.
class Card {
public:
    explicit Card(const std::string& path, uint32_t index) : path_(path) {
        const std::string family = "Wang" + std::to_string(index);
        const std::string number = "+86 138 " + std::to_string(index);
        family.copy(details_.family, sizeof details_.family - 1);
        number.copy(details_.number, sizeof details_.number - 1);
        lines_ = {"BEGIN:VCARD\r\nVERSION:2.1\r\n",
                  "N;CHARSET=utf-8:" + family + ";Fang\r\n",
                  "FN;CHARSET=utf-8:" + family + "Fang\r\n",
                  "ORG;CHARSET=utf-8:Acme\r\n",
                  "TITLE;CHARSET=utf-8:Engineer\r\n",
                  "TEL;CELL;VOICE:" + number + "\r\n",
                  "ADR;WORK;PREF;CHARSET=utf-8:;;Main St 1;;;;USA\r\n",
                  "EMAIL;PREF;INTERNET;CHARSET=utf-8:fang@example.org\r\n",
                  "END:VCARD\r\n"};
    }
    [[nodiscard]] const char* path() const { return path_.c_str(); }
    [[nodiscard]] const Details* details() const { return &details_; }
    [[nodiscard]] std::vector<CardLine> lines() const {
        std::vector<CardLine> lines;
        for (const std::string& line : lines_) {
            lines.push_back({line.data(), static_cast<uint32_t>(line.size())});
        }
        return lines;
    }
    [[nodiscard]] std::string file() const { return content_of(path_); }

private:
    std::string path_;
    Details details_{};
    std::vector<std::string> lines_;
};

// The floor's record: one for all, with the parts that read_card() fills.
class Record {
public:
    Record() {
        head_.name = &name_;
        head_.organisation = &organisation_;
        head_.phones = phones_;
        head_.addresses = addresses_;
        head_.emails = emails_;
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    [[nodiscard]] VlContact* head() { return &head_; }

private:
    VlContact head_{};
    VlContactName name_{};
    VlContactOrganisation organisation_{};
    VlContactPhone phones_[VLCM_CONTACT_PHONES]{};
    VlContactAddress addresses_[VLCM_CONTACT_ADDRESSES]{};
    VlContactEmail emails_[VLCM_CONTACT_EMAILS]{};
};

// Cards in a folder of their own, which is gone at the end.
class Cards {
public:
    explicit Cards(uint32_t count) {
        char temporary[MAX_PATH] = "";
        GetTempPathA(MAX_PATH, temporary);
        folder_ = std::string(temporary) + "vlcm_bench_cards_" + std::to_string(count);
        CreateDirectoryA(folder_.c_str(), nullptr);
        for (uint32_t i = 0; i < count; ++i) {
            cards_.emplace_back(folder_ + "\\" + std::to_string(i) + ".vcf", i);
        }
        for (const Card& card : cards_) lines_.push_back(card.lines());
    }
    ~Cards() {
        for (const Card& card : cards_) DeleteFileA(card.path());
        RemoveDirectoryA(folder_.c_str());
    }
    Cards(const Cards&) = delete;
    Cards& operator=(const Cards&) = delete;

    template <typename Export>
    void write_by_floor(Export export_card) {
        for (size_t i = 0; i < cards_.size(); ++i) {
            const std::vector<CardLine>& lines = lines_[i];
            export_card(cards_[i].details(), record_.head(), cards_[i].path(), lines.data(),
                        static_cast<uint32_t>(lines.size()));
        }
    }
    template <typename Export>
    void write_by_library(Export export_card) const {
        for (const Card& card : cards_) keep(export_card(card.details(), card.path()));
    }
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> contents;
        for (const Card& card : cards_) contents.push_back(card.file());
        return contents;
    }

private:
    std::string folder_;
    std::vector<Card> cards_;
    std::vector<std::vector<CardLine>> lines_;
    Record record_;
};

// A module with the stack's parser replaced.
class ReadAtOnce : public PatchedImports {
public:
    explicit ReadAtOnce(HMODULE module) : PatchedImports(module) {
        replace("Btsdk_PIMParseContactDetails2", read_card);
    }
};

Side reading_at_once(HMODULE module, const Body& body) {
    return {[=](size_t calls) {
                const ReadAtOnce reading(module);
                return body(calls);
            },
            [=] {
                const ReadAtOnce reading(module);
                return calling(module, body).count();
            }};
}

Row export_row(const Suite& suite, const char* name, uint32_t count) {
    const auto cards = std::make_shared<Cards>(count);
    const auto by_floor = [=, export_card = BENCH_FUNCTION(suite.floor, Floor_ExportCard)] {
        cards->write_by_floor(export_card);
    };
    const auto by_library = [=, export_card = BENCH_FUNCTION(suite.library, VlCm_ConvertMBContactToVcfFile)] {
        cards->write_by_library(export_card);
    };
    const Side floor = reading_at_once(suite.floor.handle(), timed(by_floor));
    const Side library = reading_at_once(suite.library.handle(), timed(by_library));
    return {.name = name,
            .floor_text = "file made, details read, the same nine lines written, file closed",
            .target = kTarget,
            .floor = floor,
            .library = library,
            .allowance = {.platform_calls = uint64_t{76} * count,
                          .allocations = uint64_t{28} * count,
                          .bytes_copied = uint64_t{12'000} * count},
            .agree =
                [=] {
                    floor.body(1);
                    const auto expected = cards->files();
                    library.body(1);
                    return cards->files() == expected && expected[0].size() > 100;
                },
            .series = "export",
            .records = count};
}

}  // namespace

std::vector<Row> contact_rows(const Suite& suite) {
    return {export_row(suite, "export 1 contact", 1), export_row(suite, "export 1,000 contacts", 1'000)};
}

}  // namespace bench
