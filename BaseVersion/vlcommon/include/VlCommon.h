/**
 * @file
 * The suite's common library: everything that VlCommon.dll exports, by topic.
 *
 * Every function is a synchronous call on the caller's thread; the library keeps no state between
 * calls, reads settings anew each time and takes no locks. Usable from C and C++. Plain names take and
 * give text in the ANSI code page (names from the stack: UTF-8), names ending in W take and give UTF-16.
 */
#pragma once

#include "vlcm/audio_network.h"
#include "vlcm/base.h"
#include "vlcm/catalogue.h"
#include "vlcm/companions.h"
#include "vlcm/contacts.h"
#include "vlcm/display_names.h"
#include "vlcm/handoff.h"
#include "vlcm/images.h"
#include "vlcm/localctl.h"
#include "vlcm/mobile.h"
#include "vlcm/phone_models.h"
#include "vlcm/ports.h"
#include "vlcm/printers.h"
#include "vlcm/remote_files.h"
#include "vlcm/send_to.h"
#include "vlcm/settings.h"
#include "vlcm/shell_items.h"
#include "vlcm/shortcuts.h"
#include "vlcm/states.h"
#include "vlcm/switches.h"
#include "vlcm/text.h"
#include "vlcm/visibility.h"
