// The classic file-transfer window, which this build no longer shows.
#include "vlcm/companions.h"
#include "window_message.h"

extern "C" BOOL VlCm_IsFtpClassicUIVer() { return FALSE; }

extern "C" void VlCm_CloseFtpClassicUI() {
    if (VlCm_IsFtpClassicUIVer()) vl::process::post_to_window("FTP Parent Wnd", "FTP UI", WM_CLOSE);
}
