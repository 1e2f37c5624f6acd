// The floor of loading: a library that does nothing but import what the measured one imports. These are
// the modules; the build adds each of the measured one's functions.
#include "VlMobileSDK.h"
#include "VlSDK.h"
#include "VlTrace.h"

extern "C" __declspec(dllexport) void Empty_UseImports() {
    Btsdk_IsBluetoothReady();
    VlTrace_UserDef(0, "");
    MB_EndEnumSymbianModels(nullptr);
}
