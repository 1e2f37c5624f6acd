// The system's printer installer.
#pragma once

#include "frame/unique.h"

namespace vl::printers {

// What runs or signals the installer; it stays open until the new printer is recorded.
struct Installer {
    UniqueHandle done;    // the event of the execution module
    UniqueModule newdev;  // NewDev.dll
};

// Runs the installer until the user is done with it. False: it could not be run, or failed (traced).
bool run_installer(Installer& installer);
// The two ways: by the execution module, or in this process on systems that have the entry for it.
bool run_execution_module(Installer& installer);
bool run_device_installer(Installer& installer);

}  // namespace vl::printers
