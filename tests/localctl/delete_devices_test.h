// Both forms of the deletion of remote devices.
#pragma once

#include "localctl_test.h"

namespace localctl_test {

struct Form {
    const char* label;
    bool wide;

    BOOL run(HWND owner, const unsigned* devices, unsigned count) const {
        return (wide ? VlCm_DeleteDevicesW : VlCm_DeleteDevices)(owner, devices, count);
    }
    [[nodiscard]] Lines traced(const Lines& inside) const { return nested(label, inside); }
};
inline constexpr Form kPlain{"VlCm_DeleteDevices", false};
inline constexpr Form kWide{"VlCm_DeleteDevicesW", true};
inline constexpr Form kForms[] = {kPlain, kWide};

// What is asked about each device; about the first one already before the question.
inline const Lines kLooks = {"Btsdk_GetRemoteDeviceType", "Btsdk_IsDeviceConnected"};
inline const Lines kPost = {"Btsdk_PostMessageToCtrlCenter"};
inline const Lines kNaming = {"Btsdk_GetRemoteDeviceAddress", "Btsdk_GetRemoteDeviceHandle",
                              "Btsdk_GetRemoteDeviceName"};

class DeleteDevices : public LocalControlTest {
protected:
    // Runs a test with each form, from empty logs.
    template <typename Body>
    void both_forms(Body body) {
        support::for_each_row(kForms, [&](const Form& form) {
            boxes.forget();
            library.forget();
            support::clear_sdk_log();
            support::clear_trace_log();
            body(form);
        });
    }
    static BOOL remove(const Form& form, const std::vector<unsigned>& devices) {
        return form.run(nullptr, devices.data(), static_cast<unsigned>(devices.size()));
    }
    static std::string deletion(unsigned device) { return relayed(0x49040203, device); }
    static Lines posted(const std::string& device) {
        return Lines{line("Delete device: " + device + "\r\n")} + nested("VlCm_PostMsg2Vltray");
    }
    static Box question(const Form& form, HWND owner = nullptr) {
        return {form.wide, owner, text_of(1214), text_of(1213), 36, text_of(1214), text_of(1213)};
    }

    MessageBoxes boxes;
    LanguageLibraryLoads library;
};

}  // namespace localctl_test
