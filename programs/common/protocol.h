// Names and numbers by which the suite's programs find and wake each other.
#pragma once

#include "VlCommon.h"

#include <string>

namespace programs {

inline constexpr char kTrayTitle[] = "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}";
inline constexpr char kTrayMutex[] = "Veltrin2_VLTray";
inline constexpr char kDialerTitle[] = "Veltrin Dialer";
inline constexpr char kVoiceTitle[] = "{95DFDC9E-F427-4FBC-A090-E420DC98CDE4}";
inline constexpr char kQuillTitle[] = "{3B1A61DA-6444-4c4a-B01F-2E2EEE6374C2}";
// Titles that no other program asks for.
inline constexpr char kManagerTitle[] = "Veltrin Connection Manager";
inline constexpr char kEditorTitle[] = "Veltrin Message Editor";

inline constexpr LONG_PTR kMainWindowMark = 0x396;

enum WindowMessage : UINT {
    kDialNow = 0x584,
    kShowYourself = 0x586,
    kRegisterWindow = 0x4902,
    kUnregisterWindow = 0x4903,
};

// Relayed to the tray agent: high word << 16 | low word. The parameter is the device, for Outlook 0.
enum RelayedMessage : uint32_t {
    kPrintFiles = 0x42070205,
    kSendImages = 0x42020205,
    kContactsToOutlook = 0x42080205,
    kPushFiles = 0x43020205,
    kTransferFiles = 0x43050205,
    kShowFileProperty = 0x43060205,  // the parameter is the sender's
    kContactsToPhone = 0x60390206,
    kUsePhoneConnection = 0x60350206,  // the parameter is the connection
    kEndPhoneConnection = 0x60360206,
};

enum ServiceClass : uint32_t {
    kObjectPush = 0x1105,
    kFileTransfer = 0x1106,
    kDirectPrinting = 0x1118,
    kImagingResponder = 0x111B,
};

// A text of the common or the personal settings file, at most 1023 bytes.
[[nodiscard]] std::string common_setting(const char* section, const char* key, const char* fallback);
[[nodiscard]] std::string personal_setting(const char* section, const char* key);

}  // namespace programs
