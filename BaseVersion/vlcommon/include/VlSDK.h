/**
 * @file
 * The stack SDK: devices, services, shortcuts, connections, settings files, registry and memory.
 *
 * Only what the suite's common library calls is declared. All operations use the platform's one 64-bit
 * calling convention and undecorated names. Where nothing else is said, 0 means success and another
 * value is the stack's own code for the failure; an operation that fails has written nothing. Any
 * thread may call any operation.
 *
 * Walks: a Start operation returns an enumeration handle, 0 when there is nothing to walk. The Enum
 * operation fills one record and returns the item's handle; 0 ends the walk. The End operation is
 * called exactly once for each enumeration handle, also after a walk that was left early, and never
 * for 0. Walks may be nested and interleaved, also of one kind.
 *
 * Counted lists: with a null array the result is the number of handles there are; with an array it is
 * the number written, never more than the array's length.
 */
#pragma once

#include "btsdk/base.h"
#include "btsdk/connections.h"
#include "btsdk/devices.h"
#include "btsdk/files.h"
#include "btsdk/profile.h"
#include "btsdk/records.h"
#include "btsdk/registry.h"
#include "btsdk/services.h"
#include "btsdk/shortcuts.h"
#include "btsdk/tray.h"
