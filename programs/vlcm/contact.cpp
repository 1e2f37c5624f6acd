// A phone's contact as a vCard file.
#include "commands.h"

#include "VlCommon.h"
#include "VlSDK.h"
#include "text.h"

#include <stdio.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace programs {
namespace {

struct FreeContact {
    void operator()(VlPbapContact* contact) const { VlCm_FreePBAPContactItemEx(contact); }
};
using Contact = std::unique_ptr<VlPbapContact, FreeContact>;

std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string read_details(const std::string& file) {
    const std::filesystem::path path(wide(file));
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) throw NotFound("no file \"" + file + "\"");
    return content_of(path);
}

// The name, asked of the stack and the library before anything is written: the export does not tell
// whether the details were understood.
std::string name_of(const std::string& details) {
    const Contact contact(VlCm_AllocPBAPContactItemEx());
    if (!contact) throw NotFound("no memory");
    if (Btsdk_PIMParseContactDetails2(details.c_str(), contact.get()) != 0) {
        throw NotFound("the stack does not understand these contact details");
    }
    char name[sizeof(VlContactName)] = "";
    VlCm_GetContactName(contact->name, name, sizeof name);
    return name;
}

// A file with an ANSI path, for a library that takes no other; gone at the end.
class WorkFile {
public:
    WorkFile() {
        char folder[MAX_PATH] = "";
        if (GetTempPathA(MAX_PATH, folder) == 0 || GetTempFileNameA(folder, "vcf", 0, path_) == 0) {
            throw NotFound("no file can be made in the folder for temporary files");
        }
    }
    ~WorkFile() { DeleteFileA(path_); }
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;
    [[nodiscard]] const char* path() const { return path_; }

private:
    char path_[MAX_PATH] = "";
};

bool is_whole(const std::string& card) {
    constexpr char kEnd[] = "END:VCARD\r\n";
    constexpr size_t kLength = sizeof kEnd - 1;
    return card.size() >= kLength && card.compare(card.size() - kLength, kLength, kEnd) == 0;
}

// Written under another name first: the library does not tell whether it could write, and a card that
// was there stays until the new one is whole. Returns the card's size.
size_t write_card(const std::string& details, const std::wstring& path) {
    const WorkFile work;
    const bool exported = VlCm_ConvertMBContactToVcfFile(details.c_str(), work.path()) != 0;
    const std::string card = content_of(work.path());
    if (!exported || !is_whole(card) ||
        !CopyFileW(wide_from_ansi(work.path()).c_str(), path.c_str(), FALSE)) {
        throw NotFound("cannot write \"" + utf8(path) + "\"");
    }
    return card.size();
}

}  // namespace

Answer ask_contact_export(const ContactExport& given) {
    const std::string details = read_details(given.details);
    const std::string name = name_of(details);
    const std::wstring path = full_path(wide(given.card));
    const size_t size = write_card(details, path);
    return {{{"name", name}, {"file", utf8(path)}, {"bytes", size}, {"named", !name.empty()}}};
}

void print_contact_export(const Json& facts) {
    const bool named = facts.at("named").get<bool>();
    printf("%s: %s (%s bytes)\n", named ? shown(facts, "name").c_str() : "without a name",
           shown(facts, "file").c_str(), shown(facts, "bytes").c_str());
    if (!named) printf("many programs refuse a card without a name\n");
}

}  // namespace programs
