// The models of the phones that the user has: a section for each phone.
#include "field_text.h"
#include "frame/frame.h"
#include "frame/settings.h"
#include "text/path_name.h"
#include "vlcm/phone_models.h"

namespace vl::mobile {
namespace {

// A bare name, as the suite's other modules give it: such a file is in the Windows folder.
constexpr char kFile[] = "VlMobileModel.ini";

class Section {
public:
    // Named by the address, most significant byte first; the stack holds it the other way round.
    explicit Section(const uint8_t* address) {
        format_bounded(name_, sizeof name_, "%02X%02X%02X%02X%02X%02X", address[5], address[4], address[3],
                       address[2], address[1], address[0]);
    }
    template <size_t size>
    bool read(const char* key, char (&text)[size]) const {
        return settings::read_text(name_, key, "", text, size, kFile) != 0;
    }
    BOOL write(const char* key, const char* text) const {
        return Btsdk_WritePrivateProfileString(name_, key, text, kFile);
    }
    BOOL remove() const { return write(nullptr, nullptr); }

private:
    char name_[13];  // 12 digits
};

// Modules are kept by file name and live in one folder; an empty name yields the folder itself.
void put_in_folder(const PathBuffer& folder, char (&module)[kPathSize]) {
    PathBuffer path = folder;
    path.append(module);
    copy_bounded(module, kPathSize, path.text());
}

bool read_model(const Section& section, VlDeviceModel& model) {
    if (!section.read("manu", model.manu)) return false;
    section.read("model1", model.model1);
    section.read("model2", model.model2);
    section.read("base", model.base);
    section.read("plug", model.plug);
    const PathBuffer folder = settings::install_path("\\Mobile\\msmplugs\\");
    put_in_folder(folder, model.base);
    put_in_folder(folder, model.plug);
    return true;
}

// The manufacturer decides: a phone without one has no model. Later keys may fail.
BOOL write_model(const Section& section, const VlDeviceModel& model) {
    const BOOL written = section.write("manu", FieldText(model.manu).text());
    if (!written) return written;
    section.write("model1", FieldText(model.model1).text());
    section.write("model2", FieldText(model.model2).text());
    section.write("base", text::file_name(FieldText(model.base).text()));
    section.write("plug", text::file_name(FieldText(model.plug).text()));
    return written;
}

// What stands for any phone that offers its phone book.
constexpr char kPhoneBookManufacturer[] = "QVN_PBAP_Manufacturer";
constexpr char kPhoneBookModel[] = "QVN_PBAP_Model";

template <size_t size>
bool is_exactly(const char (&field)[size], const char* text) {
    return strncmp(field, text, size) == 0;
}

bool is_phone_book_model(const VlDeviceModel& model) {
    return is_exactly(model.manu, kPhoneBookManufacturer) &&
           (is_exactly(model.model1, kPhoneBookModel) || is_exactly(model.model2, kPhoneBookModel));
}

}  // namespace
}  // namespace vl::mobile

using namespace vl;

extern "C" BOOL VlCm_GetDeviceModel(const uint8_t* address, VlDeviceModel* model) {
    if (address == nullptr || model == nullptr) return FALSE;
    return mobile::read_model(mobile::Section(address), *model);
}

extern "C" BOOL VlCm_SetDeviceModel(const uint8_t* address, const VlDeviceModel* model) {
    if (address == nullptr || model == nullptr) return FALSE;
    return mobile::write_model(mobile::Section(address), *model);
}

extern "C" BOOL VlCm_DeleteDeviceModel(const uint8_t* address) {
    return address != nullptr ? mobile::Section(address).remove() : FALSE;
}

extern "C" BOOL VlCm_IsPBAPModel(const VlDeviceModel* model) {
    return model != nullptr && mobile::is_phone_book_model(*model);
}
